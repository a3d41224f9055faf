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


def first_failed(said):
    """The first test that failed, by what ctest says at its end; None where it tells of none. A name may have blanks."""
    found = re.search(r"^\s*\d+ - (.+) \([^()]+\)$", said, re.MULTILINE)
    return found.group(1) if found else None


def folder_of_tests(path):
    """Where the tests of a room lie."""
    parts = pathlib.PurePath(path).parts[:-1]
    if parts[0] == "kit":
        return "tests/unit/" + "/".join(parts[1:3])
    if parts[:2] == ("hosts", "performer"):
        return "tests/integration/performer"
    return "tests/unit/" + "/".join(parts[:2])


class Tests:
    """All tests of a build."""

    def __init__(self, source, build):
        listed = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"], check=True, capture_output=True,
                                text=True).stdout
        self.names = {}  # program: its tests; those without GoogleTest, which are slow and look at everything, not
        for test in json.loads(listed)["tests"]:
            command = test.get("command", [""])
            if any(argument.startswith("--gtest_filter=") for argument in command):
                self.names.setdefault(pathlib.PurePath(command[0]).name, set()).add(test["name"])
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
        """Those of the file's room, and those that include its header."""
        folder = folder_of_tests(path) + "/"
        stem = pathlib.PurePath(path).stem
        own = {name for name, files in self.sources.items() if any(file.startswith(folder) for file in files)}
        others = {name for name, headers in self.included.items() if {stem, stem + "_p"} & headers} - own
        return own, others

    def of(self, path):
        """The names of both, the first to be asked first."""
        return [set().union(*(self.names[name] for name in programs)) for programs in self.programs(path)]
