# SPDX-License-Identifier: MIT
"""Which tests are to watch a file of code."""

import json
import pathlib
import re
import subprocess

INCLUDE = re.compile(r'^\s*#include "(?:.*/)?([\w]+)\.h"', re.MULTILINE)


def pattern(names):
    """The regular expression of exactly these tests, for ctest."""
    return "^(" + "|".join(re.sub(r"([\\.+*?()\[\]^$|])", r"\\\1", name) for name in sorted(names)) + ")$"


def failed(said):
    """The tests that failed, by what ctest says at its end. A name may have blanks."""
    return re.findall(r"^\s*\d+ - (.+) \([^()]+\)$", said, re.MULTILINE)


# Whose tests lie elsewhere, or who is watched by tests with real processes as well: by the beginning of a path, the longest one.
FOLDERS = {
    "hosts": ("tests/unit/hosts",),
    "hosts/admin": ("tests/unit/hosts/admin", "tests/integration/power-hosts", "tests/integration/update"),
    "hosts/agent": ("tests/unit/hosts/agent", "tests/integration/hosts", "tests/integration/windows"),
    "hosts/application": ("tests/unit/hosts/application",),
    "hosts/common": ("tests/unit/hosts", "tests/integration/hosts"),
    "hosts/common/performing": ("tests/unit/hosts/common", "tests/integration/performer", "tests/unit/hosts/daemon",
                                "tests/integration/hosts"),
    "hosts/daemon": ("tests/unit/hosts/daemon", "tests/integration/hosts", "tests/integration/performer",
                     "tests/integration/power-hosts"),
    "hosts/osascript": ("tests/unit/system/scripting", "tests/integration/apple-events"),
    "hosts/performer": ("tests/integration/performer", "tests/integration/hosts"),
    "hosts/pmset": ("tests/integration/power-kit", "tests/integration/power-hosts"),
    "hosts/session-performer": ("tests/integration/performer", "tests/integration/hosts"),
    "kit/communication/channel": ("tests/unit/communication/channel", "tests/integration/communication"),
    "kit/communication/events": ("tests/unit/communication/events", "tests/integration/apple-events"),
    "kit/communication/remoting": ("tests/unit/communication/remoting", "tests/integration/connection",
                                   "tests/integration/communication"),
    "kit/core/broadcast": ("tests/unit/core/broadcast", "tests/integration/wide-posting"),
    "kit/core/dbus": ("tests/unit/core/dbus", "tests/integration/power-kit", "tests/integration/notifications_kit"),
    "kit/interface/windows": ("tests/unit/interface/windows", "tests/integration/windows"),
    "kit/plugin": ("tests/unit/plugin",),
    "kit/system/alerts": ("tests/unit/system/alerts", "tests/integration/notifications_kit"),
    "kit/system/network": ("tests/unit/system/network", "tests/integration/avahi", "tests/integration/update"),
    "kit/system/power": ("tests/unit/system/power", "tests/integration/power-kit"),
    "kit/update": ("tests/unit/update", "tests/integration/update"),
    "plugins": ("tests/unit/plugins",),
}


# Which of those that are no GoogleTest look at a room from outside, by the first part of their names.
SUITES = {
    "hosts/agent": ("AlertWindow", "AlertOnDesktop", "StatusIcon"),
    "hosts/application": ("Application",),
    "hosts/common/bus": ("SystemBus", "Application"),
    "hosts/daemon/bus": ("SystemBus",),
    "kit/core/dbus": ("SystemBus",),
    "kit/interface/windows": ("WindowFadeSeenByOthers", "AlertOnDesktop", "Application"),
}


def entry_for(table, path):
    """What a table has for the longest beginning of a path; nothing when it has none."""
    parts = pathlib.PurePath(path).parts[:-1]
    return next((table["/".join(parts[:length])] for length in range(len(parts), 0, -1) if "/".join(parts[:length]) in table), ())


def folders_of_tests(path):
    """Where the tests of a file's room lie, those that are to be asked first first."""
    return entry_for(FOLDERS, path) or ("/".join(("tests/unit", *pathlib.PurePath(path).parts[1:-1][:2])),)


class Tests:
    """All tests of a build."""

    def __init__(self, source, build):
        listed = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"], check=True, capture_output=True,
                                text=True).stdout
        self.names = {}  # program: its tests
        self.suites = {}  # of those that are no GoogleTest, the first part of their names: the names
        for test in json.loads(listed)["tests"]:
            command = test.get("command", [""])
            if any(argument.startswith("--gtest_filter=") for argument in command):
                self.names.setdefault(pathlib.PurePath(command[0]).name, set()).add(test["name"])
            else:
                self.suites.setdefault(test["name"].partition(".")[0], set()).add(test["name"])
        self.sources = {}  # program: the files that it is made of
        self.included = {}  # program: the headers' names, without ending, that those include
        for entry in json.loads((build / "compile_commands.json").read_text()):
            program = re.search(r" -o \S*CMakeFiles/(\w+)\.dir/", entry["command"])
            file = pathlib.Path(entry["file"])
            if program and program.group(1) in self.names and source in file.parents:
                name = program.group(1)
                self.sources.setdefault(name, set()).add(str(file.relative_to(source)))
                self.included.setdefault(name, set()).update(INCLUDE.findall(file.read_text()))

    def all(self):
        """The names of all."""
        return set().union(*self.names.values())

    def programs(self, path):
        """Those of each folder of tests in turn, and those that include the file's header: sets of which no two have one."""
        stem = pathlib.PurePath(path).stem
        groups = [{name for name, files in self.sources.items() if any(file.startswith(folder + "/") for file in files)}
                  for folder in folders_of_tests(path)]
        groups.insert(1, {name for name, headers in self.included.items() if {stem, stem + "_p"} & headers})
        for place, group in enumerate(groups):
            group.difference_update(*groups[:place])
        return groups

    def of(self, path):
        """The names of them, the first to be asked first."""
        groups = [set().union(*(self.names[name] for name in programs)) for programs in self.programs(path)]
        return [*groups, set().union(*(self.suites.get(suite, ()) for suite in entry_for(SUITES, path)))]
