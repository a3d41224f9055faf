# SPDX-License-Identifier: MIT
"""Runs a program on a machine whose /dev/uinput and real-time clock are emulated by umockdev.

    umockdev-wrapper python3 emulated_devices.py PROGRAM [ARGUMENT...]

Prints one line of JSON: "status", "output" (lines), "keyboards" (names of the devices made), "events" ([type, code,
value] in order), "alarm" (the content of wakealarm at the end).
"""
import json
import os
import struct
import subprocess
import sys
import threading
import time

import gi

gi.require_version("UMockdev", "1.0")
from gi.repository import GLib, UMockdev  # noqa: E402

LIMIT = 30  # seconds
EVENT = struct.Struct("<qqHHi")  # time, type, code, value

# The numbers of uinput's operations, without direction and size.
DEV_SETUP, GET_SYSNAME, GET_VERSION = 3, 44, 45


class Uinput:
    def __init__(self):
        self.keyboards, self.events = [], []

    def ioctl(self, _base, client):
        request = client.get_request()
        number, size = request & 0xFF, request >> 16 & 0x3FFF
        if number == DEV_SETUP:
            setup = bytes(client.get_arg().resolve(0, size).retrieve())
            self.keyboards.append(setup[8:88].split(b"\0")[0].decode())
        elif number == GET_VERSION:
            client.get_arg().resolve(0, 4).update(0, struct.pack("<I", 5))
        elif number == GET_SYSNAME:
            client.get_arg().resolve(0, size).update(0, b"input99\0")
        client.complete(0, 0)
        return True

    def write(self, _base, client):
        data = bytes(client.get_arg().retrieve())
        self.events += [EVENT.unpack_from(data, at)[2:] for at in range(0, len(data), EVENT.size)]
        client.complete(len(data), 0)
        return True


def main(command):
    testbed = UMockdev.Testbed.new()
    testbed.add_from_string(
        "P: /devices/pnp0/00:05/rtc/rtc0\nN: rtc0\nE: DEVNAME=/dev/rtc0\nE: SUBSYSTEM=rtc\nA: name=rtc_emulated\n"
        f"A: wakealarm=\nA: since_epoch={int(time.time())}\n\n")
    testbed.add_from_string(
        "P: /devices/virtual/misc/uinput\nN: uinput\nE: DEVNAME=/dev/uinput\nE: SUBSYSTEM=misc\nE: MAJOR=10\n"
        "E: MINOR=223\nA: dev=10:223\n\n")
    uinput = Uinput()
    base = UMockdev.IoctlBase()
    base.connect("handle-ioctl", uinput.ioctl)
    base.connect("handle-write", uinput.write)
    testbed.attach_ioctl("/dev/uinput", base)

    loop = GLib.MainLoop()
    done = []

    def run():
        try:
            done.append(subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, timeout=LIMIT,
                                       check=False))
        finally:
            GLib.idle_add(loop.quit)

    threading.Thread(target=run, daemon=True).start()
    loop.run()
    sys.stderr.buffer.write(done[0].stderr)
    alarm = os.path.join(testbed.get_root_dir(), "sys/class/rtc/rtc0/wakealarm")
    with open(alarm, encoding="ascii") as file:
        content = file.read().strip()
    print(json.dumps({"status": done[0].returncode, "output": done[0].stdout.decode().splitlines(),
                      "keyboards": uinput.keyboards, "events": uinput.events, "alarm": content}))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
