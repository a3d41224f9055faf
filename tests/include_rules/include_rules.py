#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Holds the include rules of the source tree (CONTRIBUTING.md, "Rules of the tree").

    include_rules.py ROOT QTCORE_HEADERS

Reads the #include lines below ROOT and prints one line for each that breaks a rule. QTCORE_HEADERS is the folder of
QtCore's headers: what it does not hold is Gui, Widgets or another library. Exit status: 0 when all rules hold, 1 when
not, 2 on bad usage.
"""
import re
import sys
from pathlib import Path

# A room of kit/ may include itself, core/foundation, the Export.h of its floor, and these: exactly the arrows that there are.
ARROWS = {
    "core/foundation": (),
    "core/log": (),
    "core/files": (),
    "core/dbus": (),
    "core/bundles": ("core/files",),
    "core/broadcast": ("core/dbus",),
    "communication/remoting": ("core/dbus", "core/log"),
    "communication/channel": ("communication/remoting", "core/log"),
    "communication/events": ("communication/remoting", "core/bundles", "core/log"),
    "system/machine": ("core/bundles", "core/dbus", "core/files"),
    "system/alerts": ("core/dbus", "core/log"),
    "system/power": ("core/dbus", "core/files", "core/log", "system/machine"),
    "system/network": ("core/dbus", "core/log", "system/machine"),
    "system/scripting": ("core/files", "core/log", "system/machine"),
    "plugin": ("communication/channel", "core/bundles", "core/log", "system/alerts", "system/machine"),
    "update": ("core/bundles", "core/files", "core/log", "system/machine", "system/network"),
    "interface/drawing": ("core/bundles",),
    "interface/views": (),
    "interface/cells": ("interface/drawing", "interface/views"),
    "interface/windows": ("interface/drawing", "interface/views"),
    "interface/controls": ("interface/drawing",),
    "interface/lists": ("core/log",),
    "interface/loading": ("core/bundles", "core/log", "interface/controls", "interface/lists", "interface/windows"),
}
# Headers of a floor rather than of a room: what exports its classes.
FLOOR_HEADERS = {"interface": ("interface/Export.h",)}
# Programs and bundles without widgets: a root process loads no widget library.
WITHOUT_WIDGETS = ("hosts/common", "hosts/daemon", "hosts/performer", "hosts/admin", "hosts/osascript",
                   "hosts/pmset")
# The same for what includes headers of hosts/: a program may include itself and all that the programs share, no other program.
# A new program or room gets a row.
COMMON = "hosts/common/*"
HOST_ARROWS = {
    "hosts/common/bus": ("hosts/common/calendar", "hosts/common/schedules"),
    "hosts/common/calendar": (),
    "hosts/common/events": (),
    "hosts/common/faults": (),
    "hosts/common/log": (),
    "hosts/common/orders": ("hosts/common/faults",),
    "hosts/common/performing": (),
    "hosts/common/plugins": ("hosts/common/faults", "hosts/common/schedules"),
    "hosts/common/program": ("hosts/common/orders",),
    "hosts/common/record": ("hosts/common/calendar", "hosts/common/schedules"),
    "hosts/common/schedules": ("hosts/common/calendar",),
    "hosts/common/words": ("hosts/common/calendar",),
    "hosts/admin": (COMMON,),
    "hosts/agent": (COMMON,),
    "hosts/daemon": (COMMON, "hosts/daemon/bus"),  # main.cpp, which wires both
    "hosts/daemon/bus": (COMMON, "hosts/daemon"),
    "hosts/application": (COMMON, "hosts/application/actions", "hosts/application/program", "hosts/application/window"),
    "hosts/application/actions": (COMMON,),
    "hosts/application/book": (COMMON,),
    "hosts/application/program": (COMMON,),
    "hosts/application/history": (COMMON, "hosts/application/when"),
    "hosts/application/month": (COMMON, "hosts/application/when"),
    "hosts/application/when": (COMMON,),
    "hosts/application/window": (COMMON, "hosts/application/actions", "hosts/application/book", "hosts/application/history",
                                 "hosts/application/month", "hosts/application/program", "hosts/application/when",
                                 "hosts/application/wishes"),
    "hosts/application/wishes": (COMMON,),
    "hosts/osascript": (COMMON,),
    "hosts/performer": (COMMON,),
    "hosts/pmset": (COMMON,),
    "hosts/session-performer": (COMMON, "hosts/agent", "hosts/performer"),  # is to plug-ins what the agent is
    "examples/gallery": ("hosts/agent",),  # shows the alert's window
}
# Folders outside kit/ that see no more of it than a stranger who installed it.
CONSUMERS = ("hosts", "plugins", "examples")
# The doors to the machine: behind them, only the linux/ folder of a room.
MACHINE = re.compile(r"(sys|systemd|dbus|dbus-1\.0|linux|netinet|arpa|net|libevdev|libevdev-1\.0|curl)/"
                     r"|(poll|ifaddrs|mqueue|libudev)\.h$|QtDBus/|QDBus")
GENERATED = re.compile(r"Dozely(Kit|Interface)Export\.h$|moc_\w+\.cpp$|\w+\.moc$|ui_\w+\.h$")
INCLUDE = re.compile(r'^[ \t]*#[ \t]*(?:include|include_next|import)[ \t]*(<([^>\n]*)>|"([^"\n]*)"|([^\s<"].*))', re.MULTILINE)
COMMENT_OR_STRING = re.compile(r'//[^\n]*|/\*.*?\*/|R"([^(\s]*)\(.*?\)\1"', re.DOTALL)


def includes(file):
    """(line number, name, whether it stood in angle brackets) of each include line; name None for a macro."""
    text = file.read_text(encoding="utf-8")
    text = COMMENT_OR_STRING.sub(lambda match: "\n" * match.group().count("\n"), text)
    for match in INCLUDE.finditer(text):
        line = text.count("\n", 0, match.start(1)) + 1
        yield line, match.group(2) or match.group(3), match.group(2) is not None


def room_of(relative):
    """The room in which a file lies, as a path below kit/: FLOOR/ROOM, or the floor where it has no rooms."""
    parts = relative.parts[:-1]
    parts = parts[:-1] if parts[-1:] == ("linux",) else parts
    return "/".join(parts)


def is_public(relative):
    """Whether a file, as a path below kit/, is installed."""
    return relative.suffix == ".h" and not relative.name.endswith("_p.h") and "linux" not in relative.parts


class Rules:
    def __init__(self, root, qt_core):
        self.root = Path(root).resolve()
        self.qt_core = {entry.name for entry in Path(qt_core).iterdir()}
        if "QString" not in self.qt_core:
            raise ValueError(f"{qt_core} does not hold QtCore's headers")
        self.broken = []
        self.arrows = set()  # (room, room) of every include in kit/, and of every one in hosts/ of hosts/

    def check(self):
        files = 0
        for top in ("kit", *CONSUMERS):
            for file in sorted((self.root / top).rglob("*")):
                if file.suffix in (".h", ".cpp") and file.is_file():
                    files += 1
                    self.check_file(file)
        if not files:
            raise ValueError(f"there are no sources below {self.root}")
        return self.broken

    def unused_arrows(self):
        """What the table allows and nothing in the tree makes use of: a rule that has outlived its reason."""
        allowed = {(room, other) for table in (ARROWS, HOST_ARROWS) for room, others in table.items()
                   for other in others if other != COMMON}
        return sorted(allowed - self.arrows)

    def check_file(self, file):
        relative = file.relative_to(self.root)
        if relative.parts[0] == "kit":
            below = relative.relative_to("kit")
            if room_of(below) not in ARROWS and str(below) not in FLOOR_HEADERS.get(below.parts[0], ()):
                self.broken.append(f"{relative}: kit/{room_of(below)} is no room that the rules know")
                return
        if relative.parts[0] == "hosts" and str(relative.parent) not in HOST_ARROWS:
            self.broken.append(f"{relative}: {relative.parent} is no room that the rules know")
            return
        for line, name, angled in includes(file):
            if name is None:
                problem = "an include by macro hides what it includes"
            elif relative.parts[0] == "kit":
                problem = self.problem_in_kit(relative, name, angled)
            else:
                problem = self.problem_in_consumer(relative, name, angled)
            if problem:
                self.broken.append(f"{relative}:{line}: {name or 'macro'}: {problem}")

    def own_header(self, including, name):
        """The included file as a path below kit/, None when it is none of the kit's."""
        elsewhere = self.root / "kit" / name.removeprefix("DozelyKit/") if name.startswith("DozelyKit/") else None
        return self.included_below("kit", including, name, elsewhere)

    def included_below(self, top, including, name, elsewhere):
        """The included file as a path below the folder `top`: looked for beside the including file, then at `elsewhere`."""
        for candidate in filter(None, ((self.root / including).parent / name, elsewhere)):
            resolved = candidate.resolve()
            if resolved.is_file() and resolved.is_relative_to(self.root / top):
                return resolved.relative_to(self.root / top)
        return None

    def problem_in_kit(self, file, name, angled):
        below = file.relative_to("kit")
        room, in_linux, public = room_of(below), "linux" in below.parts, is_public(below)
        own = self.own_header(file, name)
        if own is not None:
            self.arrows.add((room, room_of(own)))
            if not self.may_include(room, own):
                return f"kit/{room} may not include kit/{room_of(own)}"
            if "linux" in own.parts and not in_linux:
                return "only a linux/ folder may include a header of one"
            if public and not is_public(own):
                return "a public header may not include a private one"
            return None
        if not angled:
            return None if GENERATED.match(name) else "neither a header of the kit nor a generated one"
        if is_qt(name) and below.parts[0] != "interface" and not self.is_qt_core(name):
            return "only kit/interface may include more of Qt than QtCore"
        if public and not is_qt(name) and not re.fullmatch(r"[a-z_]+", name):
            return "a public header may include only Qt and the C++ standard library"
        if MACHINE.match(name) and not in_linux:
            return "only a linux/ folder may know this part of the machine"
        return None

    @staticmethod
    def may_include(room, own):
        if room_of(own) in (room, "core/foundation", *ARROWS.get(room, ())):
            return True
        floor = own.parts[0]
        return str(own) in FLOOR_HEADERS.get(floor, ()) and room.startswith(f"{floor}/")

    def problem_in_consumer(self, file, name, angled):
        own = self.own_header(file, name)
        if own is not None and not is_public(own):
            return "not a public header of the kit"
        if angled and is_qt(name) and str(file).startswith(WITHOUT_WIDGETS) and not self.is_qt_core(name):
            return "a host without windows may include only QtCore"
        host = self.included_below("hosts", file, name, self.root / name)
        return None if host is None else self.problem_with_host(str(file.parent), f"hosts/{host.parent}")

    def problem_with_host(self, room, other):
        self.arrows.add((room, other))
        allowed = HOST_ARROWS.get(room, ())
        if other in (room, *allowed) or (COMMON in allowed and other.startswith(COMMON.removesuffix("*"))):
            return None
        return f"{room} may not include {other}"

    def is_qt_core(self, name):
        folder, _, header = name.rpartition("/")
        return folder in ("", "QtCore") and header in self.qt_core


def is_qt(name):
    return re.match(r"Qt?[A-Z]|q[a-z0-9_]+\.h$", name) is not None


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    rules = Rules(*arguments)
    broken = rules.check() + [f"{room} no longer includes {other}: take the arrow out of the table"
                              for room, other in rules.unused_arrows()]
    for line in broken:
        print(line)
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
