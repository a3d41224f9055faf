#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The gallery on a dark desktop, as a screen reader meets it by the accessibility bus of a session of its own.

Usage: gallery_test.py GALLERY PLUG_IN [OPTIONS OF THE GALLERY]

Exit status: 0 when all that is looked for is there, 1 when not.
"""

import contextlib
import os
import subprocess
import sys
import tempfile
import time

from Xlib import X, display

LIMIT = 30.0  # seconds; only bounds a failure
GROUND = 40, 44, 52  # of the desktop's windows: red, green, blue
DESKTOP = """[Colors:Window]
BackgroundNormal={},{},{}
ForegroundNormal=230,230,230
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=230,230,230
""".format(*GROUND)
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
ROWS = ["Morning music, 07:00, Run mpv, wakes the computer, starts the computer",
        "Evening backup, 19:30, Run rsync, wakes the computer",
        "Lights out, 22:45, Run a script, starts the computer",
        "Sleep, 23:30, Sleep"]


class Failure(Exception):
    """What was seen is not what should be."""


def wait_for(what, look):
    end = time.monotonic() + LIMIT
    while time.monotonic() < end:
        found = look()
        if found is not None:
            return found
        time.sleep(0.05)  # between two looks; no message tells when a tree is complete
    raise Failure(f"{what}: not there")


def nodes(node):
    yield node
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield from nodes(child)


def look():
    """Within the session: Atspi connects when it is imported."""
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib

    def find(condition):
        try:
            desktop = Atspi.get_desktop(0)
            desktop.clear_cache()
            for application in filter(None, map(desktop.get_child_at_index, range(desktop.get_child_count()))):
                if application.get_name() == "gallery":
                    application.clear_cache()
                    for node in nodes(application):
                        if condition(node):
                            return node
        except GLib.Error:
            pass
        return None

    def named(role, name):
        return wait_for(f"{role.value_nick} {name!r}",
                        lambda: find(lambda node: node.get_role() == role and node.get_name() == name))

    schedules = named(Atspi.Role.LIST, "Schedules")
    for row in ROWS:
        named(Atspi.Role.LIST_ITEM, row)
    if schedules.get_child_count() != 5:
        raise Failure(f"the list has {schedules.get_child_count()} rows")
    pie = named(Atspi.Role.PROGRESS_BAR, "Time left")
    value = pie.get_value_iface()
    if (value.get_minimum_value(), value.get_maximum_value(), value.get_current_value()) != (0, 10, 6.5):
        raise Failure(f"the countdown is at {value.get_current_value()}")
    loop = GLib.MainLoop()
    changes = Atspi.EventListener.new(lambda event: event.source == pie and loop.quit())
    changes.register("object:property-change:accessible-value")
    limit = GLib.timeout_add_seconds(int(LIMIT), loop.quit)
    if not named(Atspi.Role.PUSH_BUTTON, "Count down").get_action_iface().do_action(0):
        raise Failure("the countdown cannot be started")
    loop.run()
    if not GLib.source_remove(limit) or value.get_current_value() >= 6.5:
        raise Failure("no reader is told that the countdown goes on")
    named(Atspi.Role.LIST, "Arguments")
    named(Atspi.Role.PUSH_BUTTON, "Add")


def ground(name):
    """The colour of the window's corner, which is that of the display: nobody places windows here."""
    blue, green, red = display.Display(name).screen().root.get_image(3, 3, 1, 1, X.ZPixmap, 0xFFFFFFFF).data[:3]
    return red, green, blue


def run(stack, gallery, plug_in, *options):
    folder = stack.enter_context(tempfile.TemporaryDirectory())
    reading, writing = os.pipe()
    numbers = stack.enter_context(open(reading, encoding="ascii"))

    def start(arguments, **options):
        process = subprocess.Popen(arguments, stderr=subprocess.DEVNULL, **options)
        stack.callback(process.wait)
        stack.callback(process.kill)
        return process

    start(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"],
          pass_fds=[writing], stdout=subprocess.DEVNULL)
    os.close(writing)
    environment = dict(os.environ, DISPLAY=":" + numbers.readline().strip(), XDG_RUNTIME_DIR=folder,
                       QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", LANG="C.UTF-8", LANGUAGE="en",
                       GSETTINGS_BACKEND="memory", GIO_USE_VFS="local", PYTHONWARNINGS="ignore")
    # A desktop whose colours Qt reads by itself.
    environment.update(XDG_CONFIG_HOME=folder, QT_QPA_PLATFORMTHEME="kde", XDG_CURRENT_DESKTOP="KDE",
                       KDE_SESSION_VERSION="5")
    with open(os.path.join(folder, "kdeglobals"), "w", encoding="ascii") as file:
        file.write(DESKTOP)
    bus = start(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address"], env=environment,
                stdout=subprocess.PIPE, text=True)
    environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
    start([LAUNCHER], env=environment, stdout=subprocess.DEVNULL)
    subprocess.run(["gdbus", "wait", "--session", "--timeout", f"{LIMIT:g}", "org.a11y.Bus"], env=environment,
                   check=True)
    start([gallery, "--plug-in", plug_in, *options], env=environment, stdout=subprocess.DEVNULL)
    seen = subprocess.run([sys.executable, __file__, "look"], env=environment, check=False)
    if seen.returncode != 0:
        raise Failure("the gallery is not what a screen reader needs")
    seen = ground(environment["DISPLAY"])
    if seen != GROUND:
        raise Failure(f"the gallery's ground is {seen}, the desktop's {GROUND}")


def main(*arguments):
    with contextlib.ExitStack() as stack:
        try:
            if arguments == ("look",):
                look()
            else:
                run(stack, *arguments)
        except (Failure, OSError, subprocess.SubprocessError) as failure:
            print(failure, file=sys.stderr)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
