#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The alert in the window of a real notification server, between real processes.

Usage: alert_window_test.py SCRIPTS_DIR BUILD_DIR CASE PHOTOGRAPH

CASE is the name of one of the functions below; a photograph of the alert is written to the file PHOTOGRAPH. Exit
status: 0 when the case holds, 1 when it does not.
"""

import contextlib
import json
import os
import re
import sqlite3
import subprocess
import sys

scripts, build = sys.argv[1:3]
sys.path.insert(0, scripts)
os.environ["LANG"] = "C.UTF-8"  # the texts below
from scratch_desktop import SERVER, Desktop  # noqa: E402
from scratch_system import Failure, scratch  # noqa: E402

LIMIT = 60.0  # seconds; only bounds a failure
AGENT = "Dozely Agent"
SOON = 45  # seconds until an action is due: enough to look at its alert and press it on a very busy machine
LEAD = 60  # seconds; longer than that, so that the alert comes at once


def expect(holds, sentence):
    if not holds:
        raise Failure(sentence)


class Case:
    """A system with a desktop, whose schedules leave marks."""

    def __init__(self, system):
        self.system = system
        system.lay_out()
        system.start_bus()
        self.desktop = Desktop(system)
        system.start_hosts()

    def log(self):
        with open(self.system.path("var/log/dozely.log"), encoding="utf-8") as log:
            return log.read()

    def wait_for_line(self, part):
        self.system.wait_until(f'the line "{part}"', LIMIT, lambda: part in self.log())

    def mark(self, place, name):
        return self.system.path(f"marks/{place}/{name}")

    def wait_for_mark(self, place, name):
        self.system.wait_until(f'the mark of "{name}"', LIMIT, lambda: os.path.exists(self.mark(place, name)))

    def add(self, name, place, delay, *more):
        """A schedule that leaves a mark; its identifier."""
        status, output = self.system.admin("add", name, "--json", "--in", str(delay), "--in-" + place, "--program",
                                           "/usr/bin/touch", "--argument", self.mark(place, name), *more)
        expect(status == 0, f"the schedule could not be added: {output}")
        return json.loads(output)["schedule"]["identifier"]

    def state(self, identifier):
        """What the record on disk says of the schedule's only occurrence."""
        with contextlib.closing(sqlite3.connect(
                f"file:{self.system.path('var/lib/dozely/occurrences.db')}?mode=ro", uri=True)) as record:
            states = [state for state, in
                      record.execute("SELECT state FROM occurrences WHERE identifier = ?", (identifier,))]
        expect(len(states) == 1, f"the record has {len(states)} occurrences of the schedule")
        return states[0]

    def wait_for_state(self, identifier, state):
        """The end of an action is on disk a moment after it is in the log."""
        self.system.wait_until(f'the state "{state}" in the record', LIMIT, lambda: self.state(identifier) == state)

    def see(self, photograph, application=SERVER):
        alert = self.desktop.see_alert(application)
        expect(alert["title"] == "Command", f"the alert's title is {alert['title']!r}")
        lines = alert["text"].split("\n")
        expect(any(line.startswith("Will run on ") for line in lines), f"the alert says {alert['text']!r}")
        expect(alert["button"] == "Cancel", f"the button says {alert['button']!r}")
        self.desktop.photograph(alert, photograph)
        done = subprocess.run(["identify", "-format", "%w %h %k", photograph], stdout=subprocess.PIPE, text=True,
                              check=True)
        width, height, colours = map(int, done.stdout.split())
        expect(width >= alert["window"][2] and height >= alert["window"][3] and colours > 8,
               f"the photograph shows nothing: {width} x {height}, {colours} colours")
        return alert


def cancel_prevents_the_action(case, photograph):
    cancelled = case.add("cancelled", "session", SOON, "--alert", str(LEAD))
    other = case.add("other", "daemon", SOON + 1)
    alert = case.see(photograph)
    expect(not os.path.exists(case.mark("session", "cancelled")), "the action ran before its time")
    case.desktop.press(alert)
    case.wait_for_line(f'Schedule "cancelled": the occurrence was removed by user {case.system.user.pw_uid}')
    expect(case.state(cancelled) == "removed", "the record does not say that the occurrence was removed")
    case.desktop.see_nothing()
    expect(not os.path.exists(case.mark("daemon", "other")), "it was pressed too late to show anything")
    case.wait_for_mark("daemon", "other")  # its time is behind that of the other one
    case.wait_for_line("/usr/bin/touch ended with status 0")
    expect('"cancelled" was handed' not in case.log(), "the daemon performed what was cancelled")
    expect(not os.path.exists(case.mark("session", "cancelled")), "the action ran all the same")
    expect(case.state(cancelled) == "removed", "the record forgot that the occurrence was removed")
    case.wait_for_state(other, "done")


def the_action_runs_without_cancel(case, photograph):
    """It runs in the daemon: the agent withdraws the alert by its own clock."""
    identifier = case.add("left alone", "daemon", SOON, "--alert", str(LEAD))
    case.see(photograph)
    expect(not os.path.exists(case.mark("daemon", "left alone")), "the action ran before its time")
    case.wait_for_mark("daemon", "left alone")
    case.desktop.see_nothing()
    case.desktop.see_nothing(AGENT)
    case.wait_for_line("The alert of Command.plugin is withdrawn")
    case.wait_for_line("/usr/bin/touch ended with status 0")
    case.wait_for_state(identifier, "done")
    expect("was removed" not in case.log(), "something was removed")


def cancel_in_the_agents_window_counts_as_well(case, photograph):
    """The agent shows a window of its own beside the notification; either one's button takes both away."""
    cancelled = case.add("cancelled", "daemon", SOON, "--alert", str(LEAD))
    case.desktop.see_alert()
    alert = case.see(photograph, AGENT)
    lines = alert["text"].split("\n")
    expect(lines[0] == "cancelled", f"the schedule is not named: {lines}")
    expect(any(re.fullmatch("in (1 second|[0-9]+ seconds)", line) for line in lines),
           f"the time left is not told: {lines}")
    expect(lines[-1] == "The action runs unless you cancel it.", f"what happens otherwise is not told: {lines}")
    expect(alert["role"] == "alert", f"the window is no alert but {alert['role']!r}")
    for line in lines[:2] + lines[-1:]:
        expect(line in alert["description"], f"the description lacks {line!r}")
    case.desktop.press(alert)
    case.wait_for_line(f'Schedule "cancelled": the occurrence was removed by user {case.system.user.pw_uid}')
    case.desktop.see_nothing()
    case.desktop.see_nothing(AGENT)
    expect(case.state(cancelled) == "removed", "the record does not say that the occurrence was removed")
    case.add("next", "daemon", SOON, "--alert", str(LEAD))
    case.desktop.see_alert(AGENT)
    case.desktop.press(case.desktop.see_alert())
    case.wait_for_line('Schedule "next": the occurrence was removed')
    case.desktop.see_nothing(AGENT)
    case.desktop.see_nothing()


def it_is_used_by_the_accessibility_bus_alone(case, photograph):
    """Cancel, Later and its menu, and Hide, after which the desktop's notification is still there."""
    case.add("cancelled", "daemon", SOON, "--alert", str(LEAD))
    case.see(photograph, AGENT)
    case.desktop.do("Cancel", AGENT)
    case.wait_for_line('Schedule "cancelled": the occurrence was removed')
    case.desktop.see_nothing(AGENT)
    case.desktop.see_nothing()
    case.add("postponed", "daemon", SOON, "--alert", str(LEAD))
    case.desktop.do("Later", AGENT)
    case.desktop.do("In an hour", AGENT)
    case.wait_for_line('Schedule "postponed": the occurrence at ')
    case.desktop.see_nothing(AGENT)
    case.add("hidden", "daemon", SOON, "--alert", str(LEAD))
    case.desktop.do("Hide", AGENT)
    case.desktop.see_nothing(AGENT)
    case.desktop.see_alert()
    case.wait_for_mark("daemon", "hidden")


def later_in_the_agents_window_puts_the_action_off(case, photograph):
    """By the arrow keys of its menu: in an hour, and for today."""
    case.add("postponed", "daemon", SOON, "--alert", str(LEAD))
    alert = case.see(photograph, AGENT)
    expect(case.desktop.see_alert()["later"] is None, "the desktop's notification offers more than to cancel")
    case.desktop.press(alert, "later")
    case.desktop.call(["xdotool", "key", "Down", "Down", "Return"])
    case.wait_for_line('Schedule "postponed": the occurrence at ')
    case.wait_for_line(f"at the wish of user {case.system.user.pw_uid}")
    expect(" is postponed to " in case.log(), "the log does not say that it was postponed")
    case.desktop.see_nothing()
    case.desktop.see_nothing(AGENT)
    skipped = case.add("skipped", "daemon", SOON, "--alert", str(LEAD))
    case.desktop.press(case.desktop.see_alert(AGENT), "later")
    case.desktop.call(["xdotool", "key", "Up", "Return"])
    case.wait_for_line(f" is skipped at the wish of user {case.system.user.pw_uid}")
    case.desktop.see_nothing(AGENT)
    expect(case.state(skipped) == "removed", "the record does not say that the occurrence was removed")
    case.add("other", "daemon", SOON + 1)
    case.wait_for_mark("daemon", "other")  # its time is behind that of the other ones
    for name in "postponed", "skipped":
        expect(not os.path.exists(case.mark("daemon", name)), f"{name} ran all the same")


def main(name, photograph):
    os.umask(0o022)
    os.makedirs(os.path.dirname(photograph), exist_ok=True)
    if os.path.exists(photograph):
        os.remove(photograph)
    with scratch(os.path.abspath(build)) as system:
        case = Case(system)
        try:
            {function.__name__: function for function in
             (cancel_prevents_the_action, the_action_runs_without_cancel,
              cancel_in_the_agents_window_counts_as_well, it_is_used_by_the_accessibility_bus_alone,
              later_in_the_agents_window_puts_the_action_off)}[name](case, photograph)
        except (Failure, OSError, subprocess.SubprocessError) as failure:
            print(f"{failure}. The log:\n{case.log()}", file=sys.stderr)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[3:5]))
