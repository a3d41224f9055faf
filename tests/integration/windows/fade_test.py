#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""A window that fades, seen by another process than its own.

Usage: fade_test.py PROGRAM x11|wayland glib|unix

PROGRAM shows and closes its window as it is told. What counts is what the display server has: on X11 the window's
opacity, on Wayland what the compositor shows. Exit status: 0 when each fade can be followed, 1 when not.
"""

import contextlib
import os
import select
import subprocess
import sys
import tempfile
import time

from Xlib import X, display, error

LIMIT = 20.0  # seconds; only bounds a failure
ATTEMPTS = 40  # other processes may have the processor for a part of many a fade
LEAST_STEPS = 8  # of some 25, that the watcher tells apart
OPAQUE = 0xFFFFFFFF
WHITE, BEZEL = 255, 77  # of what is behind, and of black with alpha 0.7 over it
PLACE = 600, 450  # on the display: in the window, wherever the compositor puts it, and beside the pointer


class Failure(Exception):
    """What was seen is not what should be."""


def started_display(stack, screen):
    reading, writing = os.pipe()
    numbers = stack.enter_context(open(reading, encoding="ascii"))
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", screen, "-nolisten", "tcp",
                               "-noreset"], pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    stack.callback(server.wait)
    stack.callback(server.kill)
    os.close(writing)
    number = numbers.readline().strip()
    if not number:
        raise Failure("Xvfb did not start")
    return ":" + number


def start_compositor(stack, environment, folder):
    """A compositor whose screen is a window of the display."""
    configuration = os.path.join(folder, "weston.ini")
    with open(configuration, "w", encoding="ascii") as file:
        file.write("[core]\nidle-time=0\n[shell]\nbackground-color=0xffffffff\npanel-position=none\nanimation=none\n"
                   "startup-animation=none\nclose-animation=none\nlocking=false\n")
    weston = subprocess.Popen(["weston", "--backend=x11-backend.so", "--use-pixman", "--socket=wayland-fade",
                               "--config=" + configuration, "--log=" + os.path.join(folder, "log"), "--width=1280",
                               "--height=800"], env=environment)
    stack.callback(weston.wait)
    stack.callback(weston.kill)


class Subject:
    """The program whose window fades."""

    def __init__(self, stack, program, environment):
        self.process = subprocess.Popen([program], env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        text=True)
        stack.callback(self.process.wait)
        stack.callback(self.process.kill)
        self.loop = self.process.stdout.readline().strip()

    def order(self, what):
        self.process.stdin.write(what + "\n")
        self.process.stdin.flush()

    def show(self):
        """The number of the window, which is another one each time."""
        self.order("show")
        return int(self.process.stdout.readline() or 0)

    def close(self):
        self.order("close")


class OpacityWatch:
    """The opacity that the X server holds of a window, each value once in a row."""

    def __init__(self, name):
        self.display = display.Display(name)
        self.atom = self.display.intern_atom("_NET_WM_WINDOW_OPACITY")
        self.window = None
        self.values = []

    def value(self):
        found = self.window.get_full_property(self.atom, X.AnyPropertyType)
        return found.value[0] if found else OPAQUE

    def until(self, last):
        values = self.values = []
        end = time.monotonic() + LIMIT
        while time.monotonic() < end:
            value = self.value()
            if not values or values[-1] != value:
                values.append(value)
            if value == last:
                return values
            if not self.display.pending_events():
                select.select([self.display], [], [], end - time.monotonic())
            while self.display.pending_events():
                self.display.next_event()
        raise Failure(f"the opacity stays {values[-1]:#x}")

    @staticmethod
    def steps(values):
        return sum(0 < value < OPAQUE for value in values)

    def shown(self, subject):
        self.window = self.display.create_resource_object("window", subject.show())
        self.window.change_attributes(event_mask=X.PropertyChangeMask | X.StructureNotifyMask)
        return self.until(OPAQUE)

    def closed(self, subject):
        subject.close()
        try:
            return self.until(0)
        except error.BadWindow:  # it is gone right after its last step
            return self.values


class PictureWatch:
    """What the display shows in one place, each grey once in a row."""

    def __init__(self, name):
        self.root = display.Display(name).screen().root

    def grey(self):
        return self.root.get_image(*PLACE, 1, 1, X.ZPixmap, 0xFFFFFFFF).data[0]

    def until(self, reached):
        values = [self.grey()]
        end = time.monotonic() + LIMIT
        while time.monotonic() < end:
            value = self.grey()
            if values[-1] != value:
                values.append(value)
            if reached(value):
                return values
        raise Failure(f"the display still shows {values[-1]}, after {values}")

    @staticmethod
    def steps(values):
        return sum(BEZEL + 2 < value < WHITE - 2 for value in values)

    def wait_for_background(self):
        self.until(lambda grey: abs(grey - WHITE) <= 2)

    def shown(self, subject):
        subject.show()
        return self.until(lambda grey: abs(grey - BEZEL) <= 2)

    def closed(self, subject):
        subject.close()
        return self.until(lambda grey: abs(grey - WHITE) <= 2)


def follow(watch, subject):
    """Several fades each way; the best of them has steps enough, and each of them comes to its end."""
    most_in = most_out = 0
    for _ in range(ATTEMPTS):
        most_in = max(most_in, watch.steps(watch.shown(subject)))
        most_out = max(most_out, watch.steps(watch.closed(subject)))
        if min(most_in, most_out) >= LEAST_STEPS:
            return
    raise Failure(f"at most {most_in} steps were seen while it came, {most_out} while it went")


def run(stack, program, system, loop):
    folder = stack.enter_context(tempfile.TemporaryDirectory())
    name = started_display(stack, "1280x800x24")
    environment = dict(os.environ, DISPLAY=name, XDG_RUNTIME_DIR=folder, QT_QPA_PLATFORM="xcb")
    for variable in ("WAYLAND_DISPLAY", "WAYLAND_SOCKET", "QT_NO_GLIB", "QT_SCALE_FACTOR"):
        environment.pop(variable, None)
    if loop == "unix":
        environment["QT_NO_GLIB"] = "1"
    if system == "wayland":
        start_compositor(stack, environment, folder)
        environment.update(QT_QPA_PLATFORM="wayland", WAYLAND_DISPLAY="wayland-fade",
                           QT_WAYLAND_CLIENT_BUFFER_INTEGRATION="none")
        watch = PictureWatch(name)
        watch.wait_for_background()  # the compositor draws
    else:
        watch = OpacityWatch(name)
    subject = Subject(stack, program, environment)
    if ("Glib" in subject.loop) != (loop == "glib"):
        raise Failure(f"the event loop is {subject.loop!r}")
    follow(watch, subject)


def main(program, system, loop):
    with contextlib.ExitStack() as stack:
        try:
            run(stack, program, system, loop)
        except (Failure, OSError) as failure:
            print(failure, file=sys.stderr)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
