# SPDX-License-Identifier: MIT
"""A stand-in for the Avahi daemon, which owns its name on the system bus and does what a real one does only seldom.

    avahi_stand_in.py [OPTION...]

    state=N          the daemon's own state at first (1 registering, 2 running)
    collide=N        the first N names of services are taken, as the network tells after Commit; "always" for all
    refuse=OPERATION that operation fails with a failure of the daemon
    silent=N         the first N resolvers end with a time-out, the next finds the service
    addresses=N      how many addresses the host has

Lines on its input, each answered with a line: "state N" changes the state; "calls" answers what was called, "live" the
objects that were made and not let go of; "move" gives the resolved service another host; "remove N" takes address N away;
"foreign" has a second connection, which does not own the name, tell lies about the resolver.
"""
import json
import sys

import dbus
import dbus.lowlevel
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.freedesktop.Avahi"
options = dict(argument.split("=", 1) for argument in sys.argv[1:])
dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SystemBus()
calls, live = [], []
state = int(options.get("state", 2))
collisions = -1 if options.get("collide") == "always" else int(options.get("collide", 0))
silent = int(options.get("silent", 0))
addresses = int(options.get("addresses", 1))
last = {"number": 0, "resolver": None, "a": None, "host": "host.local"}


def note(operation, *arguments):
    calls.append([operation, *arguments])
    if options.get("refuse") == operation:
        raise dbus.exceptions.DBusException("refused", name=NAME + ".InvalidArgumentError")


def tell(connection, path, interface, member, signature, *arguments):
    message = dbus.lowlevel.SignalMessage(path, NAME + "." + interface, member)
    message.append(*arguments, signature=signature)
    connection.send_message(message)


def later(action, *arguments):
    GLib.timeout_add(1, lambda: action(*arguments) and False)


def new_path(kind):
    last["number"] += 1
    path = "/Client0/%s%d" % (kind, last["number"])
    live.append(path)
    return path


def txt(text):
    return dbus.Array([dbus.ByteArray(text)], signature="ay")


def found(connection=bus, host=None):
    tell(connection, last["resolver"], "ServiceResolver", "Found", "iissssisqaayu", 2, 0, "X", "_dozely._tcp", "local",
         host or last["host"], -1, "", 5111, txt(b"k=1"), 0)


def item(member, path, number):
    tell(bus, path, "RecordBrowser", member, "iisqqayu", 2, 0, last["host"], 1, 1,
         dbus.ByteArray(bytes((10, 0, number // 256, number % 256))), 0)


def items(path):
    for number in range(addresses):
        item("ItemNew", path, number)
        item("ItemNew", path, number)  # once more, as daemons do


class Resource(dbus.service.Object):
    """What was made for a client, until it lets go of it."""

    def let_go(self, operation):
        note(operation, self.path)
        live.remove(self.path)
        self.remove_from_connection()


class Group(Resource):
    def __init__(self, path):
        super().__init__(bus, path)
        self.path, self.name = path, None

    @dbus.service.method(NAME + ".EntryGroup", in_signature="iiussssqaay")
    def AddService(self, interface, protocol, flags, name, kind, domain, host, port, record):
        note("AddService", str(name))
        self.name = name

    @dbus.service.method(NAME + ".EntryGroup", in_signature="iiusssaay")
    def UpdateServiceTxt(self, interface, protocol, flags, name, kind, domain, record):
        note("UpdateServiceTxt", str(name))

    @dbus.service.method(NAME + ".EntryGroup")
    def Commit(self):
        global collisions
        note("Commit")
        taken = collisions != 0
        collisions -= collisions > 0
        later(tell, bus, self.path, "EntryGroup", "StateChanged", "is", 3 if taken else 2, NAME + ".Success")

    @dbus.service.method(NAME + ".EntryGroup")
    def Reset(self):
        note("Reset")

    @dbus.service.method(NAME + ".EntryGroup")
    def Free(self):
        self.let_go("Free group")


class Resolver(Resource):
    def __init__(self, path):
        super().__init__(bus, path)
        self.path = path

    @dbus.service.method(NAME + ".ServiceResolver")
    def Free(self):
        self.let_go("Free resolver")


class Browser(Resource):
    def __init__(self, path):
        super().__init__(bus, path)
        self.path = path

    @dbus.service.method(NAME + ".RecordBrowser")
    def Free(self):
        self.let_go("Free browser")


class Server(dbus.service.Object):
    @dbus.service.method(NAME + ".Server", out_signature="i")
    def GetState(self):
        note("GetState")
        return state

    @dbus.service.method(NAME + ".Server", in_signature="s", out_signature="s")
    def GetAlternativeServiceName(self, name):
        note("GetAlternativeServiceName", str(name))
        return name + "+"

    @dbus.service.method(NAME + ".Server", out_signature="o")
    def EntryGroupNew(self):
        note("EntryGroupNew")
        group = Group(new_path("EntryGroup"))
        return group.path

    @dbus.service.method(NAME + ".Server", in_signature="iisssiu", out_signature="o")
    def ServiceResolverNew(self, interface, protocol, name, kind, domain, address_protocol, flags):
        global silent
        note("ServiceResolverNew", str(name), str(domain), int(flags))
        resolver = Resolver(new_path("ServiceResolver"))
        last["resolver"] = resolver.path
        if silent:
            silent -= 1
            later(tell, bus, resolver.path, "ServiceResolver", "Failure", "s", NAME + ".TimeoutError")
        else:
            later(found)
        return resolver.path

    @dbus.service.method(NAME + ".Server", in_signature="iisqqu", out_signature="o")
    def RecordBrowserNew(self, interface, protocol, name, clazz, kind, flags):
        note("RecordBrowserNew", str(name), int(kind))
        browser = Browser(new_path("RecordBrowser"))
        if kind == 1:
            last["a"] = browser.path
            later(items, browser.path)
        return browser.path


def obey(line):
    global state
    word, *rest = line.split()
    if word == "state":
        state = int(rest[0])
        tell(bus, "/", "Server", "StateChanged", "is", state, NAME + ".Success")
    elif word == "move":
        last["host"] = "other.local"
        found()
    elif word == "remove":
        item("ItemRemove", last["a"], int(rest[0]))
    elif word == "foreign":
        found(dbus.SystemBus(private=True), "evil.local")
    return {"calls": calls, "live": live}.get(word, True)


def readable(channel, condition):
    line = channel.readline()
    if not line:
        loop.quit()
        return False
    print(json.dumps(obey(line)), flush=True)
    return True


loop = GLib.MainLoop()
server = Server(bus, "/")
owned = dbus.service.BusName(NAME, bus)
GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, readable)
print(json.dumps("ready"), flush=True)
loop.run()
