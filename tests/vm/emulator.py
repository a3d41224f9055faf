# SPDX-License-Identifier: MIT
"""A virtual machine under QEMU: its control channel, what its second serial port prints, the registers of its clock."""

import json
import os
import queue
import re
import socket
import subprocess
import threading
import time

CONNECT_LIMIT = 20.0  # seconds until the emulator listens
COMMAND_LIMIT = 20.0  # seconds for one command to the emulator


class Failure(Exception):
    """What went wrong, as a sentence."""


class Emulator:
    """One machine, from switching on to close().

    take() gives what happens, in order, as pairs: ("line", TEXT) for a line of the second serial port, ("event", EVENT)
    for what the emulator reports, ("end", None) when the emulator is gone. say() goes the other way, into the second
    serial port.
    """

    def __init__(self, image, disk, payload, folder, memory=1024, clock="utc"):
        """`memory` in MiB; `clock`: the date at which the machine's begins, this one's unless told."""
        socket_path = os.path.join(folder, "control")
        self.happened = queue.Queue()
        self.replies = queue.Queue()
        self.process = subprocess.Popen(
            ["qemu-system-x86_64", "-nodefaults", "-no-user-config", "-machine", "pc",
             # Translated code in a thread for each processor; hardware help is not everywhere, and not alike.
             "-accel", "tcg,thread=multi", "-cpu", "max", "-smp", "2", "-m", str(memory),
             "-display", "none", "-vga", "std", "-nic", "none", "-rtc", f"base={clock},clock=host",
             "-no-shutdown",
             "-kernel", os.path.join(image, "vmlinuz"), "-initrd", os.path.join(image, "initrd.img"),
             "-append", "root=/dev/vda rw console=tty0 console=ttyS0,115200 mitigations=off nowatchdog no_timer_check"
                        " systemd.show_status=0 quiet",
             "-drive", f"file={disk},if=virtio,format=qcow2,cache=unsafe",
             "-drive", f"file={payload},if=virtio,format=raw,cache=unsafe",
             "-device", "virtio-rng-pci",
             "-serial", "file:" + os.path.join(folder, "console.log"),
             "-chardev", "stdio,id=results,signal=off", "-serial", "chardev:results",
             "-qmp", f"unix:{socket_path},server=on,wait=off"],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, errors="replace", start_new_session=True)
        try:
            self.control = self.connect(socket_path)
        except BaseException:
            self.close()
            raise
        self.reader = self.control.makefile("r")
        self.greeting = json.loads(self.reader.readline())
        for work in (self.read_lines, self.read_control):
            threading.Thread(target=work, daemon=True).start()
        self.command("qmp_capabilities")

    def connect(self, path):
        end = time.monotonic() + CONNECT_LIMIT
        while True:
            control = socket.socket(socket.AF_UNIX)
            try:
                control.connect(path)
                return control
            except OSError:
                control.close()
                if self.process.poll() is not None or time.monotonic() > end:
                    raise Failure("the emulator did not start") from None
                time.sleep(0.1)

    def read_lines(self):
        for line in self.process.stdout:
            self.happened.put(("line", line.rstrip()))
        self.happened.put(("end", None))

    def read_control(self):
        try:
            for line in self.reader:
                message = json.loads(line)
                if "event" in message:
                    self.happened.put(("event", message))
                else:
                    self.replies.put(message)
        except (OSError, ValueError):
            pass  # the channel's end; "end" tells it

    def take(self, limit):
        """What happens next; None when nothing does for so many seconds."""
        try:
            return self.happened.get(timeout=limit)
        except queue.Empty:
            return None

    def say(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()

    def command(self, name, **arguments):
        self.control.sendall((json.dumps({"execute": name, "arguments": arguments}) + "\n").encode())
        try:
            reply = self.replies.get(timeout=COMMAND_LIMIT)
        except queue.Empty:
            raise Failure(f"the emulator did not answer {name}") from None
        if "error" in reply:
            raise Failure(f"the emulator refused {name}: {reply['error'].get('desc')}")
        return reply["return"]

    def port(self, command):
        """Reads or writes an input/output port by a command of the emulator's monitor."""
        answer = self.command("human-monitor-command", **{"command-line": command})
        value = re.search(r"= *(0x[0-9a-f]+)", answer)
        return int(value.group(1), 16) if value else None

    def clock_register(self, index):
        self.port(f"o /b 0x70 {index:#x}")
        return self.port("i /b 0x71")

    def clock(self):
        """The real-time clock as its registers hold it: is the alarm armed, for when, what time is it."""
        decimal = lambda value: (value >> 4) * 10 + (value & 15)
        seconds = lambda hour, minute, second: sum(
            decimal(self.clock_register(index)) * factor
            for index, factor in ((hour, 3600), (minute, 60), (second, 1)))
        control = self.clock_register(0x0B)
        return {"control": control, "isArmed": bool(control & 0x20),
                "alarm": seconds(5, 3, 1), "now": seconds(4, 2, 0)}

    def close(self):
        """Ends the emulator, whatever it is doing."""
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
