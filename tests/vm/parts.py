# SPDX-License-Identifier: MIT
"""How each part of the scenario is judged. A part returns in a sentence what was seen, or raises what was not."""

import re
import time

from emulator import Failure

# Seconds; they only bound a run that fails. Everything is emulated, processor included.
SLEEP_LIMIT = 300.0  # until the machine sleeps
WAKE_LIMIT = 300.0
ACT_LIMIT = 300.0
POWER_OFF_LIMIT = 420.0
PART_LIMIT = 420.0

WAKE_TOLERANCE = 3.0  # how far from the alarm's second the machine may wake
ACT_TOLERANCE = 5  # how late the action may be; its time-out
ALARM_TOLERANCE = 1.0  # the clock's registers count whole seconds
CLOCKS_APART = 2.0  # the machine reads its clock in whole seconds, at boot and at waking
SUSPEND_TOLERANCE = 40.0  # from the end of an action until the machine, free to, sleeps
CLOSED_MEANWHILE = 10  # the lid has to be closed for so much of the action to show something
BELIEF = 60  # a clock that was doubted at the start is believed when it has stood for so long
BELIEF_TOLERANCE = 20
DAY = 86400

# What the daemon may, of all that root may: of files whose they are and who may use them, and its nice value.
DAEMON_POWERS = "80000b"  # CAP_CHOWN, CAP_DAC_OVERRIDE, CAP_FOWNER, CAP_SYS_NICE as the kernel writes them
DAEMON_WRITES = ("/var/lib/dozely,/Library/Preferences,/private/var/tmp,/var/log/dozely.log,"
                 "/sys/class/rtc/rtc0/wakealarm")


def sleep_and_wake(scenario, fact):
    """The machine goes to sleep and its clock wakes it at the alarm; when both happened."""
    alarm = int(scenario.wait_for_fact("the guest to go to sleep", PART_LIMIT, fact))
    asleep, _ = scenario.wait_for_event("the machine to sleep", SLEEP_LIMIT, "SUSPEND")
    woken, _ = scenario.wait_for_event("the machine's clock to wake it", WAKE_LIMIT, "WAKEUP")
    scenario.transcript.write(f"machine: slept for {woken - asleep:.1f} s, woke {woken - alarm:+.1f} s from the alarm")
    if abs(woken - alarm) > WAKE_TOLERANCE:
        raise Failure("something else than the alarm woke the machine")
    return asleep, woken


def unit(scenario):
    scenario.wait_for_fact("a look at the daemon's restrictions", PART_LIMIT, "unit-over")
    for fact, expected in (("powers", DAEMON_POWERS), ("privileges", "1"), ("calls", "2"), ("devices", "closed"),
                           ("network", "none"), ("writes", DAEMON_WRITES)):
        if scenario.facts[f"unit-{fact}"] != expected:
            raise Failure(f"the daemon's {fact} are {scenario.facts[f'unit-{fact}']}, not {expected}")
    return "the daemon is closed in, and answers, arms the alarm, logs and reads its store again"


def restart(scenario):
    scenario.wait_for_fact("the restart of the service", PART_LIMIT, "restart-over")
    scenario.action("restart-long").must_be_done_once("the action that went on")
    if scenario.facts["restart-told"] != "1":
        raise Failure(f"{scenario.facts['restart-told']} lines of the log say that an earlier daemon began it")
    scenario.action("restart-after").must_be_in_time("the next action", ACT_TOLERANCE)
    right, seen = re.fullmatch(r"right=(\d+) seen=(\S+)", scenario.facts["restart-alarms"]).groups()
    strange = set(seen.split(",")) - {right, "none"}  # an alarm is cleared before it is set
    if strange:
        raise Failure(f"meanwhile the alarm was armed for {', '.join(sorted(strange))} instead of {right}")
    return "service restarted, the action went on and is done, the next one ran, the alarm stood"


def actions(scenario):
    scenario.wait_for_fact("the actions", 2 * PART_LIMIT, "actions-left")
    expected = {"actions-limits": "nice=5 memory=99999744 cpu=30 drop-in=77",  # whole pages
                "actions-go-on": "active", "actions-output": "begun,ended",
                "actions-eater": "failed 1", "actions-stopped": "failed 1", "actions-left": "0 0"}
    for fact, value in expected.items():
        if scenario.facts.get(fact) != value:
            raise Failure(f"{fact} is {scenario.facts.get(fact)}, not {value}")
    scenario.action("actions-kept").must_be_in_time("the action that was to go on", ACT_TOLERANCE)
    return "an action with limits went on under a restart and was recorded; one was ended, one took too much memory"


def clock(scenario):
    scenario.wait_for_fact("the clock to be wrong and set right twice", 2 * PART_LIMIT, "clock-over")
    for when, belief in (("start", BELIEF), ("running", 0)):
        right = int(scenario.facts[f"clock-was-right-again-{when}"])
        held, following = scenario.action(f"clock-held-{when}"), scenario.action(f"clock-next-{when}")
        if not held.scheduled < right < following.scheduled:
            raise Failure("the clock was not wrong when it should have been; is the machine too busy?")
        what = "the action of the wrong minute"
        held.must_be_done_once(what)
        wait = held.begun - right
        if not belief - CLOCKS_APART <= wait <= belief + BELIEF_TOLERANCE:
            raise Failure(f"{what} ran {wait} s after the clock was right")
        following.must_be_in_time("the action after that", ACT_TOLERANCE)
    scenario.action("clock-far").must_be_to_come("the action of two hours later")
    return "clock a year ahead, when the daemon started and while it ran: nothing was consumed, all ran when it was right"


def lid(scenario):
    asleep, woken = sleep_and_wake(scenario, "lid-wakes-at")
    again, _ = scenario.wait_for_event("the machine to sleep again", ACT_LIMIT, "SUSPEND")
    scenario.machine.command("system_wakeup")
    scenario.wait_for_event("the machine to be woken", WAKE_LIMIT, "WAKEUP")
    scenario.wait_for_fact("what the guest saw", PART_LIMIT, "lid-over")

    during, closed = scenario.action("lid-during"), int(scenario.facts["lid-closed"])
    before = scenario.action("lid-before")
    for what, action, slept in (("the action during which the lid was closed", during, asleep),
                                ("the action before which the lid was closed", before, again)):
        action.must_be_in_time(what, ACT_TOLERANCE)
        if action.sleeps or slept < action.ended - CLOCKS_APART:
            raise Failure(f"the machine slept before the end of {what}")
        if slept > action.ended + SUSPEND_TOLERANCE:
            raise Failure(f"the machine slept only {slept - action.ended:.0f} s after {what}")
        scenario.transcript.write(f"machine: slept {slept - action.ended:+.1f} s from the end of {what}")
    if not during.begun <= closed <= during.ended - CLOSED_MEANWHILE:
        raise Failure("the lid was not closed during the action; is the machine too busy?")
    if before.scheduled < woken:
        raise Failure("the machine woke after the action was due")
    if scenario.facts["lid-is-locked"] != "1":
        raise Failure("no lock was seen between waking and the action")
    return "lid closed, during an action and before one: awake until its end, then asleep again"


def sleep_wake_act(scenario):
    _, woken = sleep_and_wake(scenario, "wakes-at")
    if "acted" in scenario.facts:
        raise Failure("the action ran before the machine woke")
    scenario.wait_for_fact("the action", ACT_LIMIT, "acted")
    action = scenario.action("acted")
    action.must_be_in_time("the action", ACT_TOLERANCE)
    if action.scheduled < woken:
        raise Failure("the machine woke after the action was due")
    if scenario.facts["keyboards"] == "0":
        raise Failure("the daemon pressed no key at waking")
    scenario.wait_for_fact("the other schedule", ACT_LIMIT, "not-due")
    scenario.action("not-due").must_be_to_come("the other action")
    return "asleep, woken by the RTC, acted"


def power_off(scenario):
    starts = int(scenario.wait_for_fact("the guest to power off", POWER_OFF_LIMIT, "powers-on-at"))
    _, data = scenario.wait_for_event("the machine to power off", POWER_OFF_LIMIT, "SHUTDOWN")
    if data.get("reason") != "guest-shutdown":
        raise Failure(f"the machine did not power itself off: {data.get('reason')}")
    registers = scenario.machine.clock()
    of_day = lambda seconds: time.strftime("%H:%M:%S", time.gmtime(seconds))
    scenario.transcript.write(
        f"machine: off; the clock's register B is {registers['control']:#04x} "
        f"(alarm {'armed' if registers['isArmed'] else 'off'}), "
        f"alarm {of_day(registers['alarm'])}, now {of_day(registers['now'])}")
    if not registers["isArmed"]:
        raise Failure("the machine is off and no alarm is armed")
    distance = (registers["alarm"] - starts + DAY // 2) % DAY - DAY // 2
    if abs(distance) > ALARM_TOLERANCE:
        raise Failure(f"the alarm is {distance} s from where it should be, {of_day(starts)}")
    return "powered off with the alarm armed"


# In the order in which they go; the last one switches the machine off.
PARTS = {"unit": (unit,), "restart": (restart,), "actions": (actions,), "clock": (clock,), "lid": (lid,),
         "sleep": (sleep_wake_act, power_off)}
