# SPDX-License-Identifier: MIT
"""A daemon is killed in the middle of an action, another occurrence comes due, and the daemon that is started then is refused
a call, or killed at one. The action goes on, and ends before that daemon is started or when it is up."""

import controlled
from occurrence_course import DEADLY, OccurrenceCourse


class StartCourse(OccurrenceCourse):
    def __init__(self, hosts):
        super().__init__(hosts, "daemon", "daemon")
        self.not_seen = set()

    def die_acting(self, occurrence):
        """Kills the daemon while the action goes on. What ends the action."""
        controlled.until("the daemon", lambda: self.hosts.waits_for(occurrence.date))
        release = self.hosts.hold(occurrence)
        self.hosts.move_clock(occurrence.date)
        controlled.until("an action", lambda: self.hosts.performed()[occurrence.identifier])
        controlled.Hosts.kill(self.hosts.daemon)
        return release

    def is_over(self, occurrence):
        """Starts the daemon again, as its manager does, when it has ended meanwhile."""
        if self.hosts.daemon.poll() is not None:
            self.hosts.start_daemon()
        return self.hosts.is_over(occurrence)

    def go(self, number, way, _with_restart):
        begun, due, later = self.next(3)
        release = self.die_acting(begun)
        ends_before = number % 2 == 0
        if ends_before:
            release()
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
        if not ends_before:
            release()
        self.hosts.move_clock(later.date)
        self.wait_for_outcomes(later, due, begun)
        # One that cannot open the record does not see that the action goes on.
        if had_fault and way not in DEADLY and "occurrences.db" in self.page.trace()[number - 1]:
            self.not_seen.add(begun.identifier)
        return had_fault, (self.judge_each({begun: begun.identifier in self.not_seen, due: may_be_lost, later: False})
                           + self.hosts.left_of_performances())

    def is_known(self, identifier):
        return identifier not in self.not_seen
