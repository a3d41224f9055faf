# SPDX-License-Identifier: MIT
"""The session on the virtual machine, as tests/desktop/run has it: a keyboard, what a person sees, and what root knows."""

import datetime
import json
import os

from emulator import Failure

ANSWER_LIMIT = 1200.0  # seconds for one answer of the machine's; longer than a person there looks for anything
LOOK_LIMIT = 120  # seconds that a person there looks for something; a machine that is emulated is slow
KEYS = {" ": "spc", "-": "minus", "/": "slash", ".": "dot", ":": ["shift", "semicolon"]}


class Session:
    """Asks the machine, and presses its keys. Each order of person.py is a method here: see(ROLE, NAME, app=...)."""

    def __init__(self, scenario, pictures):
        self.scenario = scenario
        self.machine = scenario.machine
        self.pictures = pictures

    def ask(self, order):
        self.machine.say(json.dumps(order))
        answer = json.loads(self.scenario.wait(
            f"an answer to {order}", ANSWER_LIMIT,
            lambda kind, content: kind == "line" and content.startswith("answer ") and content[len("answer "):]))
        if "failure" in answer:
            raise Failure(answer["failure"])
        return answer["done"]

    def __getattr__(self, what):
        def tell(role=None, name=".*", app="Dozely", **more):
            self.scenario.transcript.write(f"person: {what} {role} \"{name}\" of {app} {more or ''}")
            return self.ask({"limit": LOOK_LIMIT, "do": what, "app": app, "role": role, "name": name, **more})
        return tell

    def run(self, *arguments):
        """What a program prints that root runs; it has to succeed."""
        done = self.ask({"run": list(arguments)})
        if done["status"]:
            raise Failure(f"{arguments} ended with status {done['status']}: {done['output']}")
        return done["output"]

    def now(self):
        return datetime.datetime.fromtimestamp(int(self.run("date", "+%s")), datetime.timezone.utc)

    def press_keys(self, *names):
        """Together, as "alt-f1"."""
        for name in names:
            self.scenario.transcript.write(f"keyboard: {name}")
            self.send(name.split("-"))

    def send(self, codes):
        self.machine.command("send-key", keys=[{"type": "qcode", "data": code} for code in codes])

    def type(self, text):
        self.scenario.transcript.write(f"keyboard: \"{text}\"")
        for letter in text:
            code = KEYS.get(letter, letter)
            self.send(code if isinstance(code, list) else [code])

    def photograph(self, name):
        self.machine.command("screendump", filename=os.path.join(self.pictures, name + ".png"), format="png")
