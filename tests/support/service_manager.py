#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""A stand-in for systemd on a bus, as far as it runs transient services.

    service_manager.py FOLDER [--refuse TEXT | --vanish]

Owns org.freedesktop.systemd1 on the system bus and really starts what StartTransientUnit asks for. Each property must be
one that systemd has, of exactly its type. FOLDER gets a file a unit, UNIT.json, with the properties, and UNIT.log with
what its program printed. As systemd does, it has a copy of a unit's standard input until the unit is over, and forgets a
unit that is over unless somebody holds a reference to it.

--refuse: every start is refused with this text. --vanish: it ends instead of answering.
"""
import argparse
import json
import os
import re
import signal
import subprocess
import sys

from gi.repository import Gio, GLib

NAME = "org.freedesktop.systemd1"
PATH = "/org/freedesktop/systemd1"
ERROR = "org.freedesktop.DBus.Error."
# org.freedesktop.systemd1(5)
TYPES = {"Description": "s", "ExecStart": "a(sasb)", "StandardInputFileDescriptor": "h", "StandardOutput": "s",
         "StandardError": "s", "SyslogIdentifier": "s", "IgnoreSIGPIPE": "b", "KillMode": "s", "TimeoutStopUSec": "t",
         "OOMPolicy": "s", "CollectMode": "s", "AddRef": "b", "Nice": "i", "CPUWeight": "t", "IOWeight": "t",
         "MemoryMax": "t", "Environment": "as"}
WORDS = {"StandardOutput": ("journal",), "StandardError": ("journal",), "KillMode": ("mixed",), "OOMPolicy": ("continue",),
         "CollectMode": ("inactive-or-failed",)}
MANAGER = Gio.DBusNodeInfo.new_for_xml("""<node><interface name='org.freedesktop.systemd1.Manager'>
  <method name='StartTransientUnit'><arg type='s' direction='in'/><arg type='s' direction='in'/>
    <arg type='a(sv)' direction='in'/><arg type='a(sa(sv))' direction='in'/><arg type='o' direction='out'/></method>
  <method name='GetUnit'><arg type='s' direction='in'/><arg type='o' direction='out'/></method>
  <method name='UnrefUnit'><arg type='s' direction='in'/></method>
</interface></node>""").interfaces[0]
SERVICE = Gio.DBusNodeInfo.new_for_xml("""<node><interface name='org.freedesktop.systemd1.Service'>
  <property name='Result' type='s' access='read'/></interface></node>""").interfaces[0]


class Refused(Exception):
    def __init__(self, name, text):
        super().__init__(text)
        self.name = name


def properties_of(list_of_pairs):
    """What they say, by name; raises for what systemd would not take."""
    properties = {}
    for index in range(list_of_pairs.n_children()):
        pair = list_of_pairs.get_child_value(index)
        name, value = pair.get_child_value(0).get_string(), pair.get_child_value(1).get_variant()
        if name not in TYPES:
            raise Refused(ERROR + "PropertyReadOnly", f"Cannot set property {name}, or unknown property.")
        if value.get_type_string() != TYPES[name]:
            raise Refused(ERROR + "InvalidArgs", f"{name} is {value.get_type_string()}, not {TYPES[name]}")
        properties[name] = value.unpack()
        if name in WORDS and properties[name] not in WORDS[name]:
            raise Refused(ERROR + "InvalidArgs", f"Invalid {name} setting: {properties[name]}")
    if not all(re.fullmatch("[A-Za-z_][A-Za-z0-9_]*=[^\0-\x08\x0b-\x1f\x7f]*", entry)
               for entry in properties.get("Environment", [])):
        raise Refused(ERROR + "InvalidArgs", "Invalid environment block.")
    if len(properties.get("ExecStart", [])) != 1 or not properties["ExecStart"][0][0].startswith("/"):
        raise Refused(ERROR + "InvalidArgs", "Service has no ExecStart= setting.")
    return properties


class Unit:
    def __init__(self, connection, name, properties, standard_input, folder, over):
        self.connection, self.name, self.over = connection, name, over
        self.standard_input = standard_input
        self.is_referred_to = properties.get("AddRef", False)
        self.result = None
        self.path = f"{PATH}/unit/" + re.sub("[^A-Za-z0-9]", lambda match: f"_{ord(match[0]):02x}", name)
        self.object = connection.register_object(self.path, SERVICE, None, self.property, None)
        program, arguments, _ = properties["ExecStart"][0]
        environment = {"INVOCATION_ID": "0" * 32} | dict(entry.split("=", 1) for entry in properties.get("Environment", []))
        with open(f"{folder}/{name}.log", "wb") as log:
            try:
                child = subprocess.Popen([word.replace("$$", "$") for word in arguments], executable=program, cwd="/",
                                         env=environment, stdin=standard_input, stdout=log, stderr=log,
                                         start_new_session=True, restore_signals=not properties.get("IgnoreSIGPIPE", True))
                GLib.child_watch_add(GLib.PRIORITY_DEFAULT, child.pid, self.ended)
                self.child = child
            except OSError:
                GLib.idle_add(self.end, "exit-code")  # the manager forks before it knows

    def property(self, _connection, _sender, _path, _interface, _name):
        return GLib.Variant("s", self.result or "success")

    def ended(self, _process, status):
        self.child.returncode = status  # it has been waited for
        self.end("signal" if os.WIFSIGNALED(status) else "exit-code" if os.WEXITSTATUS(status) else "success")

    def end(self, result):
        self.result = result
        os.close(self.standard_input)
        self.over()

    def is_over(self):
        return self.result is not None and not self.is_referred_to

    def forget(self):
        self.connection.unregister_object(self.object)


class Manager:
    def __init__(self, arguments):
        self.arguments = arguments
        self.units = {}

    def call(self, connection, _sender, _path, _interface, method, parameters, invocation):
        try:
            if self.arguments.vanish:
                os._exit(0)
            invocation.return_value(getattr(self, method)(connection, parameters, invocation))
        except Refused as refused:
            invocation.return_dbus_error(refused.name, str(refused))

    def StartTransientUnit(self, connection, parameters, invocation):
        name, mode = parameters.get_child_value(0).get_string(), parameters.get_child_value(1).get_string()
        if self.arguments.refuse:
            raise Refused(ERROR + "AccessDenied", self.arguments.refuse)
        if not re.fullmatch(r"[A-Za-z0-9:_.\\-]+\.service", name) or mode not in ("fail", "replace"):
            raise Refused(ERROR + "InvalidArgs", f"Unit name {name} or job mode {mode} is invalid.")
        if name in self.units:
            raise Refused(NAME + ".UnitExists", f"Unit {name} was already loaded or has a fragment file.")
        properties = properties_of(parameters.get_child_value(2))
        descriptors = invocation.get_message().get_unix_fd_list()
        if descriptors is None or descriptors.get_length() != 1 or properties["StandardInputFileDescriptor"] != 0:
            raise Refused(ERROR + "InvalidArgs", "Standard input is no descriptor of the message.")
        with open(f"{self.arguments.folder}/{name}.json", "w", encoding="utf-8") as file:
            json.dump(properties, file)
        self.units[name] = Unit(connection, name, properties, descriptors.steal_fds()[0], self.arguments.folder, self.collect)
        return GLib.Variant("(o)", (f"{PATH}/job/{len(self.units)}",))

    def GetUnit(self, _connection, parameters, _invocation):
        return GLib.Variant("(o)", (self.unit(parameters).path,))

    def UnrefUnit(self, _connection, parameters, _invocation):
        unit = self.unit(parameters)
        if not unit.is_referred_to:
            raise Refused(NAME + ".NotReferenced", "Unit has not been referenced yet.")
        unit.is_referred_to = False
        self.collect()

    def unit(self, parameters):
        name = parameters.get_child_value(0).get_string()
        if name not in self.units:
            raise Refused(NAME + ".NoSuchUnit", f"Unit {name} not loaded.")
        return self.units[name]

    def collect(self):
        for name in [name for name, unit in self.units.items() if unit.is_over()]:
            self.units.pop(name).forget()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder")
    parser.add_argument("--refuse")
    parser.add_argument("--vanish", action="store_true")
    loop = GLib.MainLoop()
    manager = Manager(parser.parse_args())
    Gio.bus_own_name(Gio.BusType.SYSTEM, NAME, Gio.BusNameOwnerFlags.NONE,
                     lambda connection, _name: connection.register_object(PATH, MANAGER, manager.call, None, None),
                     None, lambda _connection, _name: sys.exit("service_manager.py: the name is not to be had"))
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGTERM, loop.quit)
    loop.run()


if __name__ == "__main__":
    main()
