#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The agent's status icon on a desktop that has a place for such: a real agent under Xvfb, with stand-ins for the place
and for the daemon on private buses.

    status_icon_test.py AGENT_APPLICATION

AGENT_APPLICATION is the folder Dozely.app with the agent in it. Exit status: 0 when all holds.
"""
import contextlib
import os
import plistlib
import shutil
import subprocess
import sys
import tempfile
import time

import dbus
import dbus.bus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

LIMIT = 60.0  # seconds; only bounds a failure
SCHEDULER, ITEM, MENU = "com.dozely.Scheduler1", "org.kde.StatusNotifierItem", "com.canonical.dbusmenu"
PROPERTIES = "org.freedesktop.DBus.Properties"
WATCHER = "org.kde.StatusNotifierWatcher"
NEXT = dbus.Dictionary({"identifier": "a1", "name": "Back & up", "date": "2090-01-01T12:00:00Z",
                        "moment": "2090-01-01T12:00:00Z"}, signature="sv")
NONE = dbus.Dictionary({}, signature="sv")


def wait_until(what, holds):
    end = time.monotonic() + LIMIT
    context = GLib.MainContext.default()
    tick = GLib.timeout_add(20, lambda: True)  # so that looking again never waits for long
    try:
        while not (result := holds()):
            assert time.monotonic() < end, f"no {what}"
            context.iteration(True)
        return result
    finally:
        GLib.source_remove(tick)


class Scheduler(dbus.service.Object):
    """What the daemon tells, and what it was asked for."""
    def __init__(self, bus):
        super().__init__(bus, "/com/dozely/Scheduler1")
        self.next, self.calls, self.refuses = NEXT, [], False

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, _interface):
        self.calls.append("GetAll")
        return {"Version": "1", "NextOccurrence": self.next, "WakeClock": NONE, "AgentOfConsoleUser": NONE}

    def answer(self, *call):
        self.calls.append(call)
        if self.refuses:
            raise dbus.DBusException("You may not.", name="com.dozely.Error.NotAllowed")
        return call[2]

    @dbus.service.method(SCHEDULER, in_signature="ss", out_signature="s")
    def Skip(self, identifier, date):
        return self.answer("Skip", str(identifier), str(date))

    @dbus.service.method(SCHEDULER, in_signature="ssu", out_signature="s")
    def Postpone(self, identifier, date, seconds):
        return self.answer("Postpone", str(identifier), str(date), int(seconds))

    @dbus.service.signal(PROPERTIES, signature="sa{sv}as")
    def PropertiesChanged(self, interface, changed, gone):
        pass

    def change(self, occurrence):
        self.next = occurrence
        self.PropertiesChanged(SCHEDULER, {"NextOccurrence": occurrence}, [])


class Place(dbus.service.Object):
    """Where a desktop shows icons."""
    def __init__(self, bus):
        super().__init__(bus, "/StatusNotifierWatcher")
        self.items, self.is_shown, self.asked = [], False, 0

    @dbus.service.method("org.freedesktop.DBus.Introspectable", out_signature="s")
    def Introspect(self):  # pylint: disable=arguments-differ
        return (f'<node><interface name="{WATCHER}"><method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/>'
                '</method><property name="IsStatusNotifierHostRegistered" type="b" access="read"/></interface></node>')

    @dbus.service.signal(WATCHER, signature="")
    def StatusNotifierHostRegistered(self):
        self.is_shown = True

    @dbus.service.method(WATCHER, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, _service, sender):
        self.items.append(sender)

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, _interface, name):
        assert name == "IsStatusNotifierHostRegistered", name
        self.asked += 1
        return self.is_shown


class Notices(dbus.service.Object):
    def __init__(self, bus):
        super().__init__(bus, "/org/freedesktop/Notifications")
        self.shown = []

    @dbus.service.method("org.freedesktop.Notifications", out_signature="as")
    def GetCapabilities(self):
        return ["actions"]

    @dbus.service.method("org.freedesktop.Notifications", in_signature="susssasa{sv}i", out_signature="u")
    def Notify(self, _name, _replaces, _icon, title, text, _actions, _hints, _time):
        self.shown.append((str(title), str(text)))
        return len(self.shown)


class Icon:
    """The icon as its place sees it."""
    def __init__(self, bus, owner):
        self.bus, self.owner = bus, owner

    def get(self, name):
        return self.bus.call_blocking(self.owner, "/StatusNotifierItem", PROPERTIES, "Get", "ss", (ITEM, name))

    def tool_tip(self):
        return str(self.get("ToolTip")[2])

    def entries(self):
        """Label: (number, whether it can be chosen)."""
        layout = self.bus.call_blocking(self.owner, str(self.get("Menu")), MENU, "GetLayout", "iias",
                                        (0, -1, dbus.Array([], signature="s")))[1]
        found = {}
        for number, properties, _ in layout[2]:
            if properties.get("type") != "separator":
                found[str(properties["label"])] = (int(number), bool(properties.get("enabled", True)))
        return found

    def choose(self, label):
        number, can_be_chosen = self.entries()[label]
        assert can_be_chosen, label
        self.bus.call_blocking(self.owner, str(self.get("Menu")), MENU, "Event", "isvu",
                               (number, "clicked", dbus.String(""), dbus.UInt32(0)))


class Desktop:
    def __init__(self, stack, folder, application):
        self.stack, self.folder = stack, folder
        self.application = folder + "/Dozely.app"
        shutil.copytree(application, self.application, symlinks=True)
        self.mark = folder + "/opened"
        program = self.application + "/Contents/Linux/Dozely"
        with contextlib.suppress(FileNotFoundError):
            os.remove(program)
        os.makedirs(os.path.dirname(program), exist_ok=True)
        with open(program, "w", encoding="ascii") as file:
            file.write(f'#!/bin/sh\necho "$@" > "{self.mark}.new"\nmv "{self.mark}.new" "{self.mark}"\n')
        os.chmod(program, 0o755)
        for name in ("root/var/log", "root/private/var/tmp", "root/Library/Preferences", "state", "run"):
            os.makedirs(f"{folder}/{name}", 0o755)
        os.chmod(folder + "/run", 0o700)
        self.environment = {"PATH": "/usr/bin:/bin", "HOME": folder, "LANG": "C.UTF-8", "XDG_RUNTIME_DIR": folder + "/run",
                            "XDG_STATE_HOME": "/state", "TZ": "UTC", "DISPLAY": self.start_display()}
        for kind in ("SESSION", "SYSTEM"):
            self.environment[f"DBUS_{kind}_BUS_ADDRESS"] = self.start_bus()
        self.session = dbus.bus.BusConnection(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.system = dbus.bus.BusConnection(self.environment["DBUS_SYSTEM_BUS_ADDRESS"])

    def start(self, arguments, **more):
        process = subprocess.Popen(arguments, stdin=subprocess.DEVNULL, **more)  # pylint: disable=consider-using-with
        self.stack.callback(lambda: (process.terminate(), process.wait(30)))
        return process

    def start_display(self):
        read, write = os.pipe()
        self.start(["Xvfb", "-displayfd", str(write), "-screen", "0", "800x600x24", "-nolisten", "tcp", "-noreset"],
                   pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read, encoding="ascii") as pipe:
            return ":" + pipe.readline().strip()

    def start_bus(self):
        process = self.start(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE, text=True)
        return process.stdout.readline().strip()

    def start_agent(self):
        agent = self.application + "/Contents/Helpers/Dozely Agent.app/Contents/Linux/Dozely Agent"
        process = self.start([agent, "--root", self.folder + "/root"], env=self.environment, stdout=subprocess.DEVNULL)
        wait_until("agent", lambda: "Dozely Agent started" in self.log())
        return process

    def log(self):
        with contextlib.suppress(FileNotFoundError), open(self.folder + "/root/var/log/dozely.log", encoding="utf-8") as file:
            return file.read()
        return ""

    def is_there(self, owner):
        return self.session.name_has_owner(owner)

    def preference(self):
        with open(self.folder + "/root/state/dozely/agent.plist", "rb") as file:
            return plistlib.load(file)

    def set_preference(self, is_wanted):
        path = self.folder + "/root/state/dozely/agent.plist"
        with open(path + ".new", "wb") as file:
            plistlib.dump({"Status Icon": is_wanted}, file)
        os.replace(path + ".new", path)


def run(desktop):
    scheduler, place, notices = Scheduler(desktop.system), Place(desktop.session), Notices(desktop.session)
    desktop.system.request_name("com.dozely")
    desktop.session.request_name("org.freedesktop.Notifications")
    agent = desktop.start_agent()
    # Where there is no place for it, nobody asks the daemon for anything.
    desktop.session.request_name(WATCHER)
    wait_until("question for who shows icons", lambda: place.asked)
    assert scheduler.calls == [] and place.items == [], scheduler.calls
    place.StatusNotifierHostRegistered()
    owner = wait_until("icon", lambda: place.items and place.items[-1])
    icon = Icon(desktop.session, owner)
    wait_until("tool tip", lambda: "Back & up" in icon.tool_tip())
    assert "90" in icon.tool_tip(), icon.tool_tip()
    labels = list(icon.entries())
    assert "Back & up" in labels[0].replace("_", ""), labels  # where a key would be marked
    assert labels[1:] == ["Skip this time", "10 minutes later", "An hour later", "Open Dozely", "Hide this icon"], labels
    assert not icon.entries()[labels[0]][1], "what comes next can be chosen"
    # What is chosen is done, about that very occurrence.
    for label, call in (("Skip this time", ("Skip", "a1", "2090-01-01T12:00:00Z")),
                        ("10 minutes later", ("Postpone", "a1", "2090-01-01T12:00:00Z", 600)),
                        ("An hour later", ("Postpone", "a1", "2090-01-01T12:00:00Z", 3600))):
        icon.choose(label)
        wait_until(label, lambda call=call: call in scheduler.calls)
    icon.choose("Open Dozely")
    wait_until("application", lambda: os.path.exists(desktop.mark))
    with open(desktop.mark, encoding="utf-8") as file:
        assert file.read().strip() == f"--root {desktop.folder}/root"
    assert notices.shown == [], notices.shown
    scheduler.refuses = True
    icon.choose("Skip this time")
    title, text = wait_until("notice of the refusal", lambda: notices.shown and notices.shown[-1])
    assert title == "Back & up" and "You may not." in text, (title, text)
    # It follows what the daemon tells.
    scheduler.change(NONE)
    wait_until("news", lambda: icon.tool_tip() == "Nothing to come")
    wait_until("entries that nothing would come of to be off", lambda: not icon.entries()["Skip this time"][1])
    desktop.system.release_name("com.dozely")
    wait_until("absence of the daemon", lambda: icon.tool_tip() == "Service not running")
    desktop.system.request_name("com.dozely")
    scheduler.change(NEXT)
    wait_until("daemon", lambda: icon.entries()["Skip this time"][1])
    # It can be turned off by its own menu, and by whoever changes the preference.
    known = len(place.items)
    icon.choose("Hide this icon")
    wait_until("end of the icon", lambda: not icon_is_there(icon))
    assert desktop.preference() == {"Status Icon": False}, desktop.preference()
    desktop.set_preference(True)
    wait_until("icon again", lambda: len(place.items) > known)
    icon = Icon(desktop.session, place.items[-1])
    wait_until("tool tip again", lambda: "Back & up" in icon.tool_tip())
    desktop.set_preference(False)
    wait_until("end of the icon again", lambda: not icon_is_there(icon))
    assert agent.poll() is None, "the agent has ended"


def icon_is_there(icon):
    try:
        icon.get("Id")
        return True
    except dbus.DBusException:
        return False


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    with contextlib.ExitStack() as stack:
        folder = stack.enter_context(tempfile.TemporaryDirectory(prefix="dz-"))
        run(Desktop(stack, folder, sys.argv[1]))


main()
