# SPDX-License-Identifier: MIT
"""As much of the service manager as the login manager needs: units that are started are noted, and done after a moment.

A template for python3-dbusmock. What was started is told by com.dozely.Test.Started.
"""
import dbus
from gi.repository import GLib

BUS_NAME = "org.freedesktop.systemd1"
MAIN_OBJ = "/org/freedesktop/systemd1"
MAIN_IFACE = "org.freedesktop.systemd1.Manager"
SYSTEM_BUS = True

UNIT_IFACE = "org.freedesktop.systemd1.Unit"
TARGETS = ("suspend", "sleep", "hibernate", "hybrid-sleep", "suspend-then-hibernate", "poweroff", "reboot", "halt")
MILLISECONDS = 50

started = []


def escaped(name):
    return "".join(c if c.isalnum() else f"_{ord(c):02x}" for c in name)


def load(mock, _parameters):
    mock.AddMethods(MAIN_IFACE, [
        ("Subscribe", "", "", ""),
        ("Unsubscribe", "", "", ""),
        ("Reload", "", "", ""),
        ("KillUnit", "ssi", "", ""),
        ("StopUnit", "ss", "o", 'ret = dbus.ObjectPath("/org/freedesktop/systemd1/job/1")'),
    ])
    mock.AddProperties(MAIN_IFACE, dbus.Dictionary({"Version": "252"}, signature="sv"))
    for target in TARGETS:
        mock.AddObject(f"{MAIN_OBJ}/unit/{escaped(target + '.target')}", UNIT_IFACE,
                       {"ActiveState": "inactive", "LoadState": "loaded"}, [])


def job_for(mock, unit):
    started.append(unit)
    number = len(started)
    path = dbus.ObjectPath(f"{MAIN_OBJ}/job/{number}")

    def done():
        mock.EmitSignal(MAIN_IFACE, "JobRemoved", "uoss", [dbus.UInt32(number), path, unit, "done"])
        return False

    GLib.timeout_add(MILLISECONDS, done)
    return path


@dbus.service.method(MAIN_IFACE, in_signature="ss", out_signature="o")
def StartUnit(self, name, _mode):
    return job_for(self, name)


@dbus.service.method(MAIN_IFACE, in_signature="ssa(sv)a(sa(sv))", out_signature="o")
def StartTransientUnit(self, name, _mode, _properties, _auxiliary):
    return job_for(self, name)


@dbus.service.method("com.dozely.Test", in_signature="", out_signature="as")
def Started(self):
    return dbus.Array(started, signature="s")
