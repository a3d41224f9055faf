#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""What tests/vm/run makes of what it sees, without any machine: that it believes nothing but the whole story."""

import os
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import parts
from emulator import Failure
from scenario import Scenario

ALARM = 1000060  # seconds since 1970
ACTS = ALARM + 60


def event(name, at, **data):
    return "event", {"event": name, "timestamp": {"seconds": int(at), "microseconds": 0}, "data": data}


def fact(text):
    return "line", "vm: " + text


def action(fact_name, scheduled, begun=None, ended=None, **changes):
    """A report of one that was performed once, or of one that was not when nothing says when it was."""
    fields = {"scheduled": scheduled, "runs": 0 if begun is None else 1, "begun": begun, "ended": ended, "sleeps": 0,
              "state": "none" if begun is None else "done", "lateness": None if begun is None else 0, **changes}
    return fact(f"{fact_name} " + " ".join(f"{key}={'none' if value is None else value}"
                                           for key, value in fields.items()))


class Machine:
    """Plays what happened; its clock is as given."""

    def __init__(self, happenings, clock=None):
        self.happenings = list(happenings)
        self.registers = clock
        self.commands = []

    def take(self, _limit):
        return self.happenings.pop(0) if self.happenings else ("end", None)

    def clock(self):
        return self.registers

    def command(self, name):
        self.commands.append(name)


class Silent:
    def write(self, text):
        pass


def clock(alarm, armed=True):
    return {"control": 0x22 if armed else 0x02, "isArmed": armed, "alarm": alarm, "now": 0}


class Judging(unittest.TestCase):
    part = None

    def judge(self, happenings, clock=None):
        type(self).part(Scenario(Machine(happenings, clock), Silent()))

    def refuse(self, why, happenings, clock=None):
        with self.assertRaisesRegex(Failure, why):
            self.judge(happenings, clock)


class SleepWakeAct(Judging):
    part = staticmethod(parts.sleep_wake_act)

    def story(self, woken=ALARM, acted=ACTS, other=action("not-due", ACTS + 90), keyboards=1, **changes):
        return [("line", "== Going to sleep"), fact(f"wakes-at {ALARM}"), event("SUSPEND", ALARM - 50),
                event("WAKEUP", woken), fact(f"keyboards {keyboards}"),
                action("acted", ACTS, acted, acted, **changes), other]

    def test_believes_the_whole_story(self):
        self.judge(self.story())
        self.judge(self.story(woken=ALARM + 2, acted=ACTS + 5))

    def test_refuses_a_machine_that_did_not_sleep_or_wake(self):
        story = self.story()
        for missing in (2, 3):
            self.refuse("the emulator ended", story[:missing] + story[missing + 1:])

    def test_refuses_a_machine_that_something_else_woke(self):
        self.refuse("something else", self.story(woken=ALARM - 20))
        self.refuse("something else", self.story(woken=ALARM + 20))

    def test_refuses_an_action_that_came_early_late_twice_or_not_at_all(self):
        self.refuse("late", self.story(acted=ACTS - 1))
        self.refuse("late", self.story(acted=ACTS + 6))
        self.refuse("ran 2 times", self.story(runs=2))
        self.refuse("ran 0 times", self.story(runs=0))
        self.refuse("the emulator ended", self.story()[:-2])

    def test_refuses_what_the_record_does_not_have(self):
        self.refuse("recorded as begun", self.story(state="begun"))

    def test_refuses_an_action_that_ran_before_the_machine_woke(self):
        story = self.story()
        self.refuse("before the machine woke", story[:3] + [story[5], story[3], story[4]])

    def test_refuses_a_waking_without_a_key(self):
        self.refuse("no key", self.story(keyboards=0))

    def test_refuses_an_action_that_was_not_due(self):
        self.refuse("not due", self.story(other=action("not-due", ACTS + 90, ACTS, ACTS)))
        self.refuse("not due", self.story(other=action("not-due", ACTS + 90, state="skipped")))

    def test_refuses_a_scenario_that_ended_by_itself(self):
        self.refuse("ended with status 1", [fact("ended 1")])


class Unit(Judging):
    part = staticmethod(parts.unit)

    def story(self, **changes):
        facts = {"powers": "80000b", "privileges": "1", "calls": "2", "devices": "closed", "network": "none",
                 "writes": "/var/lib/dozely,/Library/Preferences,/private/var/tmp,/var/log/dozely.log,"
                           "/sys/class/rtc/rtc0/wakealarm", **changes}
        return [fact(f"unit-{name} {value}") for name, value in facts.items()] + [fact("unit-over yes")]

    def test_believes_the_whole_story(self):
        self.judge(self.story())

    def test_refuses_a_daemon_that_may_more_or_less(self):
        self.refuse("powers", self.story(powers="1ffffffffff"))
        self.refuse("privileges", self.story(privileges="0"))
        self.refuse("calls", self.story(calls="0"))
        self.refuse("devices", self.story(devices="auto"))
        self.refuse("network", self.story(network="shared"))
        self.refuse("writes", self.story(writes="/var/lib/dozely"))
        self.refuse("the emulator ended", self.story()[:-1])


class PowerOff(Judging):
    part = staticmethod(parts.power_off)
    STARTS = 20 * 86400 + 3600  # an hour past midnight

    def story(self, reason="guest-shutdown"):
        return [fact(f"powers-on-at {self.STARTS}"), event("SHUTDOWN", self.STARTS - 900, reason=reason)]

    def test_believes_an_alarm_that_is_armed_for_that_time_of_day(self):
        self.judge(self.story(), clock(3600))

    def test_refuses_an_alarm_that_is_off_or_for_another_time(self):
        self.refuse("no alarm is armed", self.story(), clock(3600, armed=False))
        self.refuse("-1140 s from where it should be", self.story(), clock(3600 - 1140))

    def test_refuses_a_machine_that_was_switched_off(self):
        self.refuse("did not power itself off", self.story("host-qmp-quit"), clock(3600))


class Lid(Judging):
    part = staticmethod(parts.lid)
    BEGUN = ALARM - 100  # the action during which the lid is closed

    def story(self, asleep=BEGUN + 22, again=ACTS + 12, closed=BEGUN + 3, locked=1, during={}, before={}):
        return [fact(f"lid-wakes-at {ALARM}"), event("SUSPEND", asleep), event("WAKEUP", ALARM + 1),
                fact(f"lid-closed {closed}"),
                action("lid-during", self.BEGUN, **{"begun": self.BEGUN, "ended": self.BEGUN + 20, **during}),
                fact(f"lid-is-locked {locked}"), event("SUSPEND", again), event("WAKEUP", again + 2),
                action("lid-before", ACTS, **{"begun": ACTS, "ended": ACTS + 8, **before}), fact("lid-over yes")]

    def test_believes_the_whole_story(self):
        self.judge(self.story())

    def test_refuses_a_machine_that_slept_before_an_end(self):
        self.refuse("slept before the end", self.story(asleep=self.BEGUN + 10))
        self.refuse("slept before the end", self.story(again=ALARM + 31))
        self.refuse("slept before the end", self.story(during={"sleeps": 1}))
        self.refuse("slept before the end", self.story(before={"sleeps": 1}))

    def test_refuses_a_machine_that_slept_late_or_not_at_all(self):
        self.refuse("slept only 50 s", self.story(again=ACTS + 58))
        story = self.story()
        self.refuse("the emulator ended", story[:6] + story[8:])

    def test_refuses_an_action_that_was_late_or_did_not_end(self):
        self.refuse("6 s late", self.story(before={"begun": ACTS + 6, "ended": ACTS + 14}))
        self.refuse("not come to its end", self.story(during={"ended": None}))
        self.refuse("recorded as interrupted", self.story(during={"state": "interrupted"}))

    def test_refuses_what_shows_nothing(self):
        self.refuse("lid was not closed during", self.story(closed=self.BEGUN + 15))
        self.refuse("lid was not closed during", self.story(closed=self.BEGUN - 1))
        self.refuse("no lock", self.story(locked=0))


class Clock(Judging):
    part = staticmethod(parts.clock)

    def story(self, held_start={}, held_running={}, next_running={}, far={}, running=1200):
        start = 1000  # when the clock is right again, as it is a second time
        return [fact(f"clock-was-right-again-start {start}"), fact(f"clock-was-right-again-running {running}"),
                action("clock-held-start", 990, **{"begun": 1060, "ended": 1060, **held_start}),
                action("clock-next-start", 1030, 1030, 1030),
                action("clock-held-running", 1190, **{"begun": 1200, "ended": 1200, **held_running}),
                action("clock-next-running", 1230, **{"begun": 1231, "ended": 1231, **next_running}),
                action("clock-far", 8000, **far), fact("clock-over yes")]

    def test_believes_the_whole_story(self):
        self.judge(self.story())

    def test_refuses_what_was_given_up(self):
        self.refuse("ran 0 times", self.story(held_start={"runs": 0, "state": "skipped"}))
        self.refuse("ran 0 times", self.story(held_running={"runs": 0, "state": "skipped"}))
        self.refuse("two hours later", self.story(far={"state": "skipped"}))

    def test_refuses_what_came_early_late_or_twice(self):
        self.refuse("10 s after the clock was right", self.story(held_start={"begun": 1010}))
        self.refuse("-5 s after the clock was right", self.story(held_running={"begun": 1195}))
        self.refuse("30 s after the clock was right", self.story(held_running={"begun": 1230}))
        self.refuse("6 s late", self.story(next_running={"begun": 1236}))
        self.refuse("ran 2 times", self.story(held_running={"runs": 2}))
        self.refuse("two hours later", self.story(far={"begun": 900}))

    def test_refuses_what_shows_nothing(self):
        self.refuse("not wrong when it should", self.story(running=1190))
        self.refuse("not wrong when it should", self.story(running=1230))


class Actions(Judging):
    part = staticmethod(parts.actions)

    def story(self, kept={}, **changes):
        facts = {"limits": "nice=5 memory=99999744 cpu=30 drop-in=77", "go-on": "active", "output": "begun,ended",
                 "eater": "failed 1", "stopped": "failed 1", **changes, "left": changes.get("left", "0 0")}
        return [action("actions-kept", 1000, **{"begun": 1000, "ended": 1025, **kept}),
                *(fact(f"actions-{name} {value}") for name, value in facts.items() if value is not None)]

    def test_believes_the_whole_story(self):
        self.judge(self.story())

    def test_refuses_each_fact_that_is_missing_or_another(self):
        for name in ("limits", "go-on", "output", "eater", "stopped"):
            self.refuse(f"actions-{name} is None", self.story(**{name: None}))
            self.refuse(f"actions-{name} is strange", self.story(**{name: "strange"}))
        self.refuse("actions-left is 1 0", self.story(left="1 0"))

    def test_refuses_an_action_that_did_not_go_on_or_was_repeated(self):
        self.refuse("recorded as interrupted", self.story(kept={"state": "interrupted"}))
        self.refuse("ran 2 times", self.story(kept={"runs": 2}))
        self.refuse("not come to its end", self.story(kept={"ended": None}))


class Restart(Judging):
    part = staticmethod(parts.restart)

    def story(self, seen="8000,none", after={}, told=1, **changes):
        return [fact(f"restart-alarms right=8000 seen={seen}"), fact(f"restart-told {told}"),
                action("restart-long", 1000, **{"begun": 1000, "ended": 1020, **changes}),
                action("restart-after", 1035, **{"begun": 1035, "ended": 1035, **after}), fact("restart-over yes")]

    def test_believes_the_whole_story(self):
        self.judge(self.story())
        self.judge(self.story(seen="8000"))

    def test_refuses_an_action_that_the_next_daemon_did_not_find(self):
        self.refuse("0 lines of the log", self.story(told=0))

    def test_refuses_an_action_that_was_cut_short_repeated_or_is_recorded_as_something_else(self):
        self.refuse("did not come to its end", self.story(ended=None))
        self.refuse("ran 2 times", self.story(runs=2))
        self.refuse("recorded as interrupted", self.story(state="interrupted"))

    def test_refuses_a_next_action_that_did_not_run(self):
        self.refuse("ran 0 times", self.story(after={"runs": 0}))

    def test_refuses_another_alarm(self):
        self.refuse("armed for 9000 instead of 8000", self.story(seen="8000,9000,none"))


if __name__ == "__main__":
    unittest.main()
