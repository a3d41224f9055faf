#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Another client of the notification server, with a great many notifications: each is shown and closed again.

    flood_client.py COUNT
"""
import sys

import dbus

server = dbus.Interface(
    dbus.SessionBus().get_object("org.freedesktop.Notifications", "/org/freedesktop/Notifications"),
    "org.freedesktop.Notifications")
for number in range(int(sys.argv[1])):
    notification = server.Notify("Flood", dbus.UInt32(0), "", f"Notification {number}", "x" * 1000,
                                 dbus.Array(["cancel", "Cancel"], signature="s"), dbus.Dictionary(signature="sv"), -1)
    server.CloseNotification(notification)
