# SPDX-License-Identifier: MIT
"""The administration tool adds a schedule, and one of its calls is refused, or it is killed at one."""

import os
import plistlib
import subprocess

import controlled


class ToolCourse:
    """One addition, again and again, to a store that is the same each time."""

    place = "daemon"  # there is no agent
    makes_process = False

    def __init__(self, hosts):
        self.hosts = hosts
        self.page = hosts.daemon_page
        self.before = None

    def supply(self):
        """The store as it is before each addition."""
        date = self.hosts.now
        self.hosts.store([controlled.Occurrence(f"kept-{i}", date, "daemon") for i in range(3)])
        self.before = self.hosts.store_bytes()

    def add(self, name):
        """Adds a schedule; whether that was acknowledged."""
        system = self.hosts.system
        done = subprocess.run(
            [system.path("usr/bin/dozely-admin"), "--root", system.root, "add", name, "--in", "3600", "--program",
             "/usr/bin/true"], cwd="/", stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            check=False, timeout=controlled.LIMIT,
            env={**system.environment, **self.hosts.environment(self.page)})
        return done.returncode == 0

    def go(self, number, way, _with_restart):
        """Adds once with that fault. Whether it came, and what does not hold."""
        path = self.hosts.system.path(controlled.STORE)
        with open(path + ".new", "wb") as file:
            file.write(self.before)
        os.rename(path + ".new", path)
        self.page.arm(controlled.WHOEVER_COMES, number, way)
        is_acknowledged = self.add("new")
        had_fault = self.page.fired()
        self.page.disarm()
        broken = self.judge(is_acknowledged)
        if not self.add("next"):
            broken.append("the next addition failed")
        elif not self.names() >= {"kept-0", "kept-1", "kept-2", "next"}:
            broken.append("the next addition lost something")
        return had_fault, broken + self.hosts.leftovers()

    def names(self):
        return {entry["Name"] for entry in plistlib.loads(self.hosts.store_bytes())["Schedule Array"]}

    def judge(self, is_acknowledged):
        """The store is the former one, or the new one whole; the latter when that was acknowledged."""
        if self.hosts.store_bytes() == self.before:
            return ["what was acknowledged is not in the store"] if is_acknowledged else []
        try:
            names = self.names()
        except Exception as failure:  # whatever the parser says
            return [f"the store is damaged: {failure}"]
        return [] if names == {"kept-0", "kept-1", "kept-2", "new"} else [f"the store has {sorted(names)}"]

    def judge_again(self):
        return []
