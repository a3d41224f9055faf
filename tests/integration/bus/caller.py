#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Calls the daemon on the system bus as whoever runs it, with python3-dbus.

    caller.py METHOD [JSON ARGUMENT]...     prints the answer as JSON, or {"error": NAME, "text": TEXT}
    caller.py --flood SECONDS               calls List as fast as it can, many at a time
    caller.py --timed                       how many seconds being known and each of three calls takes
    caller.py --listen                      prints a line of JSON for each signal
    caller.py --size BYTES                  adds a schedule with so many bytes of parameters

A dictionary's numbers travel as the types that docs/bus.md names.
"""
import json
import sys
import time

import dbus
import dbus.mainloop.glib
from gi.repository import GLib

INTERFACE = "com.dozely.Scheduler1"
TYPES = {"owner": lambda owner: owner if isinstance(owner, str) else dbus.UInt32(owner), "missedLimit": dbus.UInt64}


def wire(value):
    if isinstance(value, dict):
        return dbus.Dictionary({key: TYPES.get(key, wire)(each) for key, each in value.items()}, signature="sv")
    if isinstance(value, list):
        return dbus.Array([wire(each) for each in value], signature=None if value else "s")
    return dbus.Int64(value) if isinstance(value, int) and not isinstance(value, bool) else value


def plain(value):
    if isinstance(value, dbus.Dictionary):
        return {str(key): plain(each) for key, each in value.items()}
    if isinstance(value, dbus.Boolean):
        return bool(value)
    if isinstance(value, (dbus.Array, tuple)):
        return [plain(each) for each in value]
    return value


def scheduler(bus):
    return dbus.Interface(bus.get_object("com.dozely", "/com/dozely/Scheduler1", introspect=True), INTERFACE)


def call(bus, method, arguments):
    try:
        values = [wire(json.loads(each)) for each in arguments]
        return plain(getattr(scheduler(bus), method)(*values, timeout=60))
    except dbus.DBusException as error:
        return {"error": error.get_dbus_name(), "text": error.get_dbus_message()}


def flood(bus, seconds):
    """Keeps a hundred calls on their way; prints how many were answered with what."""
    counts = {"served": 0, "refused": 0}
    end = time.monotonic() + seconds
    loop = GLib.MainLoop()
    target = scheduler(bus)

    def go_on(which):
        counts[which] += 1
        if time.monotonic() < end:
            target.List(reply_handler=lambda *_: go_on("served"), error_handler=lambda *_: go_on("refused"))
        else:
            loop.quit()
    for _ in range(100):
        target.List(reply_handler=lambda *_: go_on("served"), error_handler=lambda *_: go_on("refused"))
    print("begun", flush=True)
    loop.run()
    return counts


def listen(bus):
    def heard(*arguments, member=None, interface=None):
        print(json.dumps({"signal": member, "of": interface, "arguments": plain(arguments)}), flush=True)
    bus.add_signal_receiver(heard, path="/com/dozely/Scheduler1", member_keyword="member", interface_keyword="interface")
    call(bus, "List", [])
    print(json.dumps({"signal": "listening"}), flush=True)
    GLib.MainLoop().run()


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SystemBus()
    if sys.argv[1] == "--flood":
        print(json.dumps(flood(bus, float(sys.argv[2]))))
    elif sys.argv[1] == "--timed":
        begin = time.monotonic()
        target = scheduler(bus)
        target.Introspect(dbus_interface="org.freedesktop.DBus.Introspectable")
        times = [time.monotonic() - begin]
        for _ in range(3):
            begin = time.monotonic()
            target.Next("", "", "", dbus.UInt32(1))
            times.append(time.monotonic() - begin)
        print(json.dumps(times))
    elif sys.argv[1] == "--listen":
        listen(bus)
    elif sys.argv[1] == "--size":
        wish = {"name": "Large", "bundlePath": "/Library/Application Support/Dozely/PlugIns/Command.plugin", "anyway": True,
                "actsIn": "session", "date": "2090-01-01T00:00:00Z", "parameters": {"Text": "x" * int(sys.argv[2])}}
        print(json.dumps(call(bus, "Add", [json.dumps(wish)])))
    else:
        print(json.dumps(call(bus, sys.argv[1], sys.argv[2:])))


main()
