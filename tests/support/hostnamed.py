# SPDX-License-Identifier: MIT
"""A stand-in for the host name service, for python3-dbusmock."""
BUS_NAME = MAIN_IFACE = "org.freedesktop.hostname1"
MAIN_OBJ = "/org/freedesktop/hostname1"
SYSTEM_BUS = True


def load(mock, parameters):
    mock.AddProperties(MAIN_IFACE, {"PrettyHostname": "", "Hostname": "mock-host"})
