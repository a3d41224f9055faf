# SPDX-License-Identifier: MIT
"""An occurrence comes due and is performed, and a call of the daemon, of the agent or of a performer is refused on the way, or
one of them is killed at it."""

import contextlib
import datetime

import controlled

BATCH = 240  # occurrences that are in the store at once
APART = datetime.timedelta(seconds=5)
ON_DISK = ("open", "write", "pwrite", "writev", "fsync", "fdatasync", "rename")
DEADLY = (controlled.DIE_BEFORE, controlled.DIE_AFTER)
COUNTED_PERFORMERS = {"supervisor": controlled.WHOEVER_COMES, "actor": controlled.WHOEVER_IS_FORKED}
BEFORE = datetime.timedelta(seconds=1)  # by then an action that is made ready in time is not due yet


class OccurrenceCourse:
    """One occurrence's course, gone through again and again on one system. The clock jumps over the time in which its
    performer is made ready, or stands in the middle of it until the performer is."""

    def __init__(self, hosts, place, counted, is_made_ready=False):
        self.hosts = hosts
        self.place = place
        self.counted = counted
        self.is_made_ready = is_made_ready
        self.page = {"daemon": hosts.daemon_page, "agent": hosts.agent_page}.get(counted, hosts.performer_page)
        if counted in COUNTED_PERFORMERS:
            hosts.count_performers()
        self.makes_process = place == "daemon" and counted in ("daemon", "supervisor")
        self.left = []
        self.number = 0
        self.verdicts = {}  # by identifier: the state at last, and whether it may be lost
        self.store = None
        self.log_begin = 0

    def supply(self):
        """New schedules; what was is gone from the store."""
        self.left = []
        for i in range(BATCH):
            self.number += 1
            self.left.append(controlled.Occurrence(f"{self.place}-{self.number}", self.hosts.now + (i + 1) * APART,
                                                   self.place))
        self.hosts.store(self.left)
        self.store = self.hosts.store_bytes()

    def next(self, count):
        if len(self.left) < count + 2:  # something is left to wait for, so that one sees when the daemon is up
            self.supply()
        return [self.left.pop(0) for _ in range(count)]

    def arm(self, number, way):
        counted = COUNTED_PERFORMERS.get(self.counted)
        if counted is None:
            counted = (self.hosts.daemon if self.counted == "daemon" else self.hosts.agent).pid
        self.page.arm(counted, number, way)

    def has_died(self):
        """Whether who was counted has ended; a performer ends in any case."""
        hosts = {"daemon": self.hosts.daemon, "agent": self.hosts.agent}
        return self.counted in hosts and hosts[self.counted].poll() is not None

    def wait_for_death(self):
        controlled.until(f"the end of the {self.counted}", lambda: self.has_died() or (
            self.counted in COUNTED_PERFORMERS and not controlled.is_alive(self.page.counted())))

    def bring_back(self):
        """Starts again what was killed."""
        if self.hosts.daemon.poll() is not None:
            self.hosts.start_daemon()
            self.hosts.wait_for_daemon()
        if self.hosts.agent and self.hosts.agent.poll() is not None:
            self.hosts.start_agent()
            self.hosts.wait_for_agent()

    def is_at_end(self, first):
        """An agent goes on when the record has its outcome: until it has logged how the program ended."""
        return self.hosts.is_over(first) and (
            self.counted != "agent" or "ended with status" in self.hosts.log_since(self.log_begin))

    def wait_for_fault_or_end(self, first, way):
        """Whether the fault came before the outcome."""
        controlled.until(f"the outcome of {first.identifier}",
                         lambda: self.page.fired() or self.has_died() or self.is_at_end(first))
        if way in DEADLY and self.page.fired():
            self.wait_for_death()
        elif way == controlled.DISK_FULL and self.page.fired():
            controlled.until(f"the action of {first.identifier}",
                             lambda: self.hosts.performed()[first.identifier] or self.hosts.is_over(first))
        return self.page.fired()

    def make_ready(self, first, way):
        """Has the performer made ready. Whether the fault came meanwhile."""
        self.hosts.move_clock(first.date - BEFORE)
        controlled.until(f"the performer of {first.identifier}",
                         lambda: self.page.fired() or self.has_died() or self.hosts.is_ready(first))
        if way not in DEADLY and self.page.fired():
            # It copes, or it ends, and what was made ready is none by the date.
            controlled.until(f"what became of the performer of {first.identifier}",
                             lambda: self.hosts.is_ready(first) or not self.hosts.performers())
        if way in DEADLY and self.page.fired():
            self.wait_for_death()
            self.bring_back()
        return self.page.fired()

    def go(self, number, way, with_restart):
        """Goes through it once. Whether it had so many calls, and the sentences about what does not hold."""
        first, second = self.next(2)
        controlled.until(f"the daemon to wait for {first.identifier}", lambda: self.hosts.waits_for(first.date))
        self.log_begin = self.hosts.log_size()
        self.arm(number, way)
        was_early = self.is_made_ready and self.make_ready(first, way)
        self.hosts.move_clock(first.date)
        had_fault = (was_early and way in DEADLY) or self.wait_for_fault_or_end(first, way)
        self.page.disarm()
        may_be_lost = had_fault and not was_early and self.may_be_lost(first, number, way)
        self.bring_back()
        self.wait_for_outcomes(first)
        self.hosts.move_clock(second.date)
        self.wait_for_outcomes(second, first)
        if with_restart:
            controlled.Hosts.kill(self.hosts.daemon)
            self.bring_back()
        return had_fault, self.judge(first, second, may_be_lost) + self.hosts.left_of_performances()

    def wait_for_outcomes(self, *occurrences):
        for occurrence in occurrences:
            controlled.until(f"the outcome of {occurrence.identifier}", lambda: self.is_over(occurrence))

    def is_over(self, occurrence):
        return self.hosts.is_over(occurrence)

    def may_be_lost(self, first, number, way):
        """Whether that fault excuses that the action is not performed."""
        if self.counted != "daemon":
            return True  # it had it, and nobody else may perform it
        if way in DEADLY:
            return self.hosts.state(first, of_killed=True) is not None  # "begun"
        call, what = f"{self.page.trace()[number - 1]} ".split(" ", 1)
        return call not in ON_DISK or what.startswith("/memfd:")

    def judge(self, first, second, is_excused):
        return self.judge_each({first: is_excused, second: False})

    def is_known(self, _identifier):
        """Whether the record knows what became of an action that was performed."""
        return self.place == "daemon"

    def judge_each(self, excused):
        """What does not hold of occurrences, each of which may be lost or not."""
        broken = []
        for occurrence, is_excused in excused.items():
            state = self.hosts.state(occurrence)
            self.verdicts[occurrence.identifier] = state, is_excused
            if state == "done" and self.place == "session" and not is_excused:
                # An agent that has it is about to perform it.
                with contextlib.suppress(controlled.Failure):
                    controlled.until("the mark", lambda: self.hosts.performed()[occurrence.identifier])
            wrong = controlled.judge(state, self.hosts.performed()[occurrence.identifier], is_excused,
                                     self.is_known(occurrence.identifier), self.counted != "supervisor")
            if wrong:
                broken.append(f"{occurrence.identifier}: {wrong}")
        if self.hosts.store_bytes() != self.store:
            broken.append("the store was changed")
        return broken

    def judge_again(self):
        """At the end: nothing was performed once more, long after it was over, and the record says what it said."""
        performed, states = self.hosts.performed(), self.hosts.states_by_identifier()
        sentences = [(identifier, controlled.judge(states.get(identifier, state), performed[identifier], may_be_lost,
                                                self.is_known(identifier), self.counted != "supervisor"))
                     for identifier, (state, may_be_lost) in self.verdicts.items()]
        return [f"{identifier}: {wrong}" for identifier, wrong in sentences if wrong]
