#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Stands in for polkit: org.freedesktop.PolicyKit1 on the system bus, as far as the daemon asks it.

com.dozely.Test.SetAnswer(user, action, answer) says what becomes of a question about a user ("yes", "no", or "ask": it
stays open until somebody calls Decide); GetQuestions tells those that came, GetOpen those that are open, GetCancelled
those that were taken back.
"""
import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

AUTHORITY = "org.freedesktop.PolicyKit1.Authority"
TEST = "com.dozely.Test"


class Authority(dbus.service.Object):
    def __init__(self, bus):
        super().__init__(dbus.service.BusName("org.freedesktop.PolicyKit1", bus), "/org/freedesktop/PolicyKit1/Authority")
        self.bus = bus
        self.answers = {}
        self.questions = []
        self.open = {}
        self.cancelled = []

    @dbus.service.method(AUTHORITY, in_signature="(sa{sv})sa{ss}us", out_signature="(bba{ss})",
                         async_callbacks=("answer", "fail"))
    def CheckAuthorization(self, subject, action, _details, flags, cancellation, answer, fail):
        kind, about = subject
        if kind != "system-bus-name" or list(about) != ["name"]:
            fail(dbus.DBusException("the subject is no name of a connection", name=AUTHORITY + ".Error.Failed"))
            return
        user = self.bus.get_unix_user(about["name"])
        decided = self.answers.get((int(user), str(action)), "no")
        self.questions.append(f"{user} {action} {flags}")
        if decided == "ask" and flags & 1:
            self.open[str(cancellation)] = answer
        else:
            answer((decided == "yes", decided == "ask", dbus.Dictionary({}, signature="ss")))

    @dbus.service.method(AUTHORITY, in_signature="s")
    def CancelCheckAuthorization(self, cancellation):
        self.cancelled.append(str(cancellation))
        self.open.pop(str(cancellation), None)

    @dbus.service.method(TEST, in_signature="uss")
    def SetAnswer(self, user, action, decided):
        self.answers[(int(user), str(action))] = str(decided)

    @dbus.service.method(TEST, in_signature="b")
    def Decide(self, allowed):
        for answer in self.open.values():
            answer((bool(allowed), False, dbus.Dictionary({}, signature="ss")))
        self.open.clear()

    @dbus.service.method(TEST, out_signature="as")
    def GetQuestions(self):
        asked, self.questions = self.questions, []
        return dbus.Array(asked, signature="s")

    @dbus.service.method(TEST, out_signature="as")
    def GetOpen(self):
        return dbus.Array(list(self.open), signature="s")

    @dbus.service.method(TEST, out_signature="as")
    def GetCancelled(self):
        return dbus.Array(self.cancelled, signature="s")


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
AUTHORITY_OBJECT = Authority(dbus.SystemBus())
GLib.MainLoop().run()
