# SPDX-License-Identifier: MIT
"""What happens to the machine, followed and written down: the ground on which the parts judge."""

import re
import time

from emulator import Failure

SIGN_OF_LIFE = 30.0  # seconds; how often a person is told that nothing happened


class Transcript:
    """What happens, with the seconds since the start, for a person now and for the file afterwards."""

    def __init__(self, path):
        self.start = time.monotonic()
        self.file = open(path, "w", encoding="utf-8")

    def write(self, text):
        line = f"[{time.monotonic() - self.start:6.1f}] {text}"
        print(line, flush=True)
        print(line, file=self.file, flush=True)


class Action:
    """What became of one schedule, as the machine reported it: by the action itself, and by the daemon's record."""

    def __init__(self, report):
        fields = dict(field.split("=", 1) for field in report.split())
        number = lambda name: int(fields[name]) if fields[name].lstrip("-").isdigit() else None
        self.scheduled, self.begun, self.ended = number("scheduled"), number("begun"), number("ended")
        self.runs, self.sleeps = number("runs"), number("sleeps")
        self.lateness = number("lateness")  # milliseconds
        self.state = fields["state"]

    def must_be_done_once(self, what):
        if self.runs != 1:
            raise Failure(f"{what} ran {self.runs} times")
        if self.ended is None:
            raise Failure(f"{what} did not come to its end")
        if self.state != "done":
            raise Failure(f"{what} is recorded as {self.state}, not as done")

    def must_be_in_time(self, what, tolerance):
        self.must_be_done_once(what)
        late = self.begun - self.scheduled
        if not 0 <= late <= tolerance:
            raise Failure(f"{what} ran {late} s late")

    def must_be_to_come(self, what):
        if self.runs or self.state != "none":
            raise Failure(f"{what}, which was not due, ran {self.runs} times and is recorded as {self.state}")


class Scenario:
    """Follows the machine: facts that it tells, events that the emulator reports."""

    def __init__(self, machine, transcript):
        self.machine = machine
        self.transcript = transcript
        self.facts = {}

    def wait(self, what, limit, is_it):
        """The first happening for which is_it answers something true, and that answer."""
        end = time.monotonic() + limit
        while True:
            left = end - time.monotonic()
            if left <= 0:
                raise Failure(f"waited {limit:.0f} s in vain for {what}")
            happening = self.machine.take(min(left, SIGN_OF_LIFE))
            if happening is None:
                self.transcript.write(f"... waiting for {what}")
                continue
            self.note(*happening)
            answer = is_it(*happening)
            if answer:
                return answer

    def note(self, kind, content):
        if kind == "end":
            raise Failure("the emulator ended")
        if kind == "event":
            if content["event"] in ("SUSPEND", "SUSPEND_DISK", "WAKEUP", "SHUTDOWN", "POWERDOWN", "RESET"):
                self.transcript.write(f"machine: {content['event']}")
            return
        fact = re.fullmatch(r"vm: (\S+) (.*)", content)
        if not fact:
            self.transcript.write(f"guest: {content}")
            return
        self.transcript.write(f"fact: {fact.group(1)} {fact.group(2)}")
        self.facts[fact.group(1)] = fact.group(2)
        if fact.group(1) == "ended":
            raise Failure(f"the scenario in the machine ended with status {fact.group(2)}")

    def wait_for_event(self, what, limit, name):
        """When it happened, in seconds since 1970, and what the emulator says of it."""
        message = self.wait(what, limit,
                            lambda kind, content: kind == "event" and content["event"] == name and content)
        stamp = message["timestamp"]
        return stamp["seconds"] + stamp["microseconds"] / 1e6, message.get("data", {})

    def wait_for_fact(self, what, limit, name):
        if name not in self.facts:
            self.wait(what, limit, lambda kind, content: name in self.facts)
        return self.facts[name]

    def action(self, name):
        """What the machine has reported of an action."""
        if name not in self.facts:
            raise Failure(f"the machine has said nothing of {name}")
        return Action(self.facts[name])
