# SPDX-License-Identifier: MIT
"""An occurrence comes due and is performed, and a call of the daemon or the agent is refused on the way, or one of them is
killed at it."""

import contextlib
import datetime

import controlled

BATCH = 240  # occurrences that are in the store at once
APART = datetime.timedelta(seconds=5)
ON_DISK = ("open", "write", "pwrite", "writev", "fsync", "fdatasync", "rename")
DEADLY = (controlled.DIE_BEFORE, controlled.DIE_AFTER)


class OccurrenceCourse:
    """One occurrence's course, gone through again and again on one system."""

    def __init__(self, hosts, place, counted):
        self.hosts = hosts
        self.place = place
        self.counted = counted
        self.page = hosts.daemon_page if counted == "daemon" else hosts.agent_page
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

    def process(self):
        return self.hosts.daemon if self.counted == "daemon" else self.hosts.agent

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
            self.counted == "daemon" or "ended with status" in self.hosts.log_since(self.log_begin))

    def wait_for_fault_or_end(self, first, way):
        """Whether the fault came before the outcome."""
        controlled.until(f"the outcome of {first.identifier}",
                         lambda: self.page.fired() or self.process().poll() is not None or self.is_at_end(first))
        if way in DEADLY and self.page.fired():
            self.process().wait(controlled.LIMIT)
        elif way == controlled.DISK_FULL and self.page.fired():
            controlled.until(f"the action of {first.identifier}",
                             lambda: self.hosts.performed()[first.identifier] or self.hosts.is_over(first))
        return self.page.fired()

    def go(self, number, way, with_restart):
        """Goes through it once. Whether it had so many calls, and the sentences about what does not hold."""
        first, second = self.next(2)
        controlled.until(f"the daemon to wait for {first.identifier}", lambda: self.hosts.waits_for(first.date))
        self.log_begin = self.hosts.log_size()
        self.page.arm(self.process().pid, number, way)
        self.hosts.move_clock(first.date)
        had_fault = self.wait_for_fault_or_end(first, way)
        self.page.disarm()
        may_be_lost = had_fault and self.may_be_lost(first, number, way)
        self.bring_back()
        self.wait_for_outcomes(first)
        self.hosts.move_clock(second.date)
        self.wait_for_outcomes(second, first)
        if with_restart:
            controlled.Hosts.kill(self.hosts.daemon)
            self.bring_back()
        return had_fault, self.judge(first, second, may_be_lost)

    def wait_for_outcomes(self, *occurrences):
        for occurrence in occurrences:
            controlled.until(f"the outcome of {occurrence.identifier}", lambda: self.is_over(occurrence))

    def is_over(self, occurrence):
        return self.hosts.is_over(occurrence)

    def may_be_lost(self, first, number, way):
        """Whether that fault excuses that the action is not performed."""
        if self.counted == "agent":
            return True  # it had it, and nobody else may perform it
        if way in DEADLY:
            return self.hosts.state(first, of_killed=True) is not None  # "begun"
        return self.page.trace()[number - 1].split()[0] not in ON_DISK

    def judge(self, first, second, is_excused):
        return self.judge_each({first: is_excused, second: False})

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
            wrong = controlled.judge(state, self.hosts.performed()[occurrence.identifier], is_excused)
            if wrong:
                broken.append(f"{occurrence.identifier}: {wrong}")
        if self.hosts.store_bytes() != self.store:
            broken.append("the store was changed")
        return broken

    def judge_again(self):
        """At the end: nothing was performed once more, long after it was over, and the record says what it said."""
        performed, states = self.hosts.performed(), self.hosts.states_by_identifier()
        sentences = [(identifier, controlled.judge(states.get(identifier, state), performed[identifier], may_be_lost))
                     for identifier, (state, may_be_lost) in self.verdicts.items()]
        return [f"{identifier}: {wrong}" for identifier, wrong in sentences if wrong]
