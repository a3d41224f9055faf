# SPDX-License-Identifier: MIT
"""A daemon is killed in the middle of an action, another occurrence comes due, and the daemon that is started then is refused
a call, or killed at one."""

import controlled
from occurrence_course import DEADLY, OccurrenceCourse


class StartCourse(OccurrenceCourse):
    def __init__(self, hosts):
        super().__init__(hosts, "daemon", "daemon")

    def die_acting(self, occurrence):
        """Kills the daemon when the action has begun, and the record does not say yet that it is done."""
        controlled.until("the daemon", lambda: self.hosts.waits_for(occurrence.date))
        self.page.arm(self.hosts.daemon.pid, 0, controlled.NONE)
        self.hosts.move_clock(occurrence.date)
        controlled.until("an action", lambda: any(call.startswith("fork") for call in self.page.trace()))
        controlled.Hosts.kill(self.hosts.daemon)

    def is_over(self, occurrence):
        """Starts the daemon again, as its manager does, when it has ended meanwhile."""
        if self.hosts.daemon.poll() is not None:
            self.hosts.start_daemon()
        return self.hosts.is_over(occurrence)

    def go(self, number, way, _with_restart):
        begun, due, later = self.next(3)
        self.die_acting(begun)
        self.page.arm(controlled.WHOEVER_COMES, number, way)
        self.hosts.move_clock(due.date)
        self.hosts.start_daemon()
        controlled.until(f"the outcome of {due.identifier}", lambda: self.page.fired() or self.hosts.is_over(due))
        had_fault = self.page.fired()
        if way in DEADLY and had_fault:
            self.hosts.daemon.wait(controlled.LIMIT)
        self.page.disarm()
        # Without a record the daemon takes what was due for performed.
        may_be_lost = had_fault and (way not in DEADLY or self.hosts.state(due, of_killed=True) is not None)
        self.wait_for_outcomes(due)
        self.hosts.move_clock(later.date)
        self.wait_for_outcomes(later, due, begun)
        return had_fault, self.judge_each({begun: True, due: may_be_lost, later: False})
