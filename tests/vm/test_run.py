#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""What tests/vm/run makes of what it sees, without any machine: that it believes nothing but the whole story."""

import importlib.machinery
import importlib.util
import os
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.dont_write_bytecode = True
sys.path.insert(0, HERE)
loader = importlib.machinery.SourceFileLoader("run", os.path.join(HERE, "run"))
run = importlib.util.module_from_spec(importlib.util.spec_from_loader("run", loader))
loader.exec_module(run)

ALARM = 1000060  # seconds since 1970
ACTS = ALARM + 60


def event(name, at, **data):
    return "event", {"event": name, "timestamp": {"seconds": int(at), "microseconds": 0}, "data": data}


def fact(text):
    return "line", "vm: " + text


class Machine:
    """Plays what happened; its clock is as given."""

    def __init__(self, happenings, clock=None):
        self.happenings = list(happenings)
        self.registers = clock

    def take(self, _limit):
        return self.happenings.pop(0) if self.happenings else ("end", None)

    def clock(self):
        return self.registers


class Silent:
    lines = []

    def write(self, text):
        self.lines.append(text)


def clock(alarm, armed=True):
    return {"control": 0x22 if armed else 0x02, "isArmed": armed, "alarm": alarm, "now": 0}


class SleepWakeAct(unittest.TestCase):
    def judge(self, *happenings):
        run.Scenario(Machine(happenings), Silent()).sleep_wake_act()

    def story(self, woken=ALARM, acted=ACTS):
        return [("line", "== Going to sleep"), fact(f"wakes-at {ALARM}"), event("SUSPEND", ALARM - 50),
                event("WAKEUP", woken), fact(f"acted {acted} scheduled {ACTS}")]

    def refuse(self, why, *happenings):
        with self.assertRaisesRegex(run.Failure, why):
            self.judge(*happenings)

    def test_believes_the_whole_story(self):
        self.judge(*self.story())
        self.judge(*self.story(woken=ALARM + 2, acted=ACTS + 5))

    def test_refuses_a_machine_that_did_not_sleep_or_wake(self):
        story = self.story()
        for missing in (2, 3):
            self.refuse("the emulator ended", *(story[:missing] + story[missing + 1:]))

    def test_refuses_a_machine_that_something_else_woke(self):
        self.refuse("something else", *self.story(woken=ALARM - 20))
        self.refuse("something else", *self.story(woken=ALARM + 20))

    def test_refuses_an_action_that_came_early_late_or_not_at_all(self):
        self.refuse("late", *self.story(acted=ACTS - 1))
        self.refuse("late", *self.story(acted=ACTS + 6))
        self.refuse("the emulator ended", *self.story()[:-1])

    def test_refuses_an_action_that_ran_before_the_machine_woke(self):
        story = self.story()
        self.refuse("before the machine woke", *(story[:3] + [story[4], story[3]]))

    def test_refuses_a_scenario_that_ended_by_itself(self):
        self.refuse("ended with status 1", fact("ended 1"))


class PowerOff(unittest.TestCase):
    STARTS = 20 * 86400 + 3600  # an hour past midnight

    def judge(self, clock, reason="guest-shutdown"):
        happenings = [fact(f"powers-on-at {self.STARTS}"), event("SHUTDOWN", self.STARTS - 900, reason=reason)]
        run.Scenario(Machine(happenings, clock), Silent()).power_off()

    def test_believes_an_alarm_that_is_armed_for_that_time_of_day(self):
        self.judge(clock(3600))

    def test_refuses_an_alarm_that_is_off_or_for_another_time(self):
        with self.assertRaisesRegex(run.Failure, "no alarm is armed"):
            self.judge(clock(3600, armed=False))
        with self.assertRaisesRegex(run.Failure, "-1140 s from where it should be"):
            self.judge(clock(3600 - 1140))

    def test_refuses_a_machine_that_was_switched_off(self):
        with self.assertRaisesRegex(run.Failure, "did not power itself off"):
            self.judge(clock(3600), reason="host-qmp-quit")


if __name__ == "__main__":
    unittest.main()
