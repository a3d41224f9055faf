# SPDX-License-Identifier: MIT
"""A person's desk: daemon, agent and window, real processes below a scratch folder, on a display or a Wayland compositor of
their own, with the machine's bus, polkit's stand-in and a clock that the test moves. Whoever imports this has scripts/,
tests/integration/bus and tests/faults in his path."""

import contextlib
import datetime
import json
import os
import shutil
import socket
import subprocess

import scratch_desktop
from bus_system import ALICE, OWN, WAKE, BusSystem
from controlled import DUE, NOW, PAST, PERFORMERS, SECOND, START, TIMERS, Page, nanoseconds
from scratch_system import APPLICATION, START_LIMIT, Failure

HERE = os.path.dirname(os.path.abspath(__file__))
PROGRAM = APPLICATION + "/Contents/Linux/Dozely"
OPENBOX = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <placement><policy>Smart</policy><center>yes</center></placement>
  <desktops><number>1</number><firstdesk>1</firstdesk><popupTime>0</popupTime></desktops>
  <keyboard><keybind key="A-Tab"><action name="NextWindow"><dialog>none</dialog><interactive>no</interactive><finalactions>
    <action name="Focus"/><action name="Raise"/></finalactions></action></keybind></keyboard>
</openbox_config>"""
WESTON = "[core]\nidle-time=0\n[shell]\npanel-position=none\nanimation=none\nstartup-animation=none\nlocking=false\n"
DARK = """[Colors:Window]
BackgroundNormal=40,44,52
ForegroundNormal=230,230,230
[Colors:View]
BackgroundNormal=32,35,41
ForegroundNormal=230,230,230
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=230,230,230
[Colors:Selection]
BackgroundNormal=61,124,201
ForegroundNormal=255,255,255
[Colors:Tooltip]
BackgroundNormal=49,54,59
ForegroundNormal=230,230,230
"""
DARK_DESKTOP = {"QT_QPA_PLATFORMTHEME": "kde", "XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"}
MORNING = datetime.datetime(2026, 3, 16, 8, 0)  # a Monday; when the clock of a desk begins, UTC


class Clock:
    """The one that all three programs have; it stands still until it is moved."""

    def __init__(self, system, shim, now):
        self.shim = system.path("usr/lib/fault_shim.so")
        shutil.copyfile(shim, self.shim)
        os.chmod(self.shim, 0o755)
        self.system = system
        self.pages = {}
        self.timers = {}
        self.now = now

    def page(self, name):
        page = self.pages[name] = Page(self.system.path(f"run/{name.replace(' ', '-')}-page"))
        page.numbers[START] = nanoseconds(self.now) - 86400 * SECOND
        page.numbers[NOW] = nanoseconds(self.now) + PAST
        return page

    def wrap(self, program):
        """Has whoever starts the program get one with this clock."""
        page = self.page(os.path.basename(program))
        os.rename(program, program + ".timed")
        with open(program, "w", encoding="utf-8") as script:
            script.write(f"#!/bin/sh\nexport LD_PRELOAD='{self.shim}' DOZELY_SHIM='{page.path}'\n"
                         f"exec '{program}.timed' \"$@\"\n")
        os.chmod(program, 0o755)

    def environment(self, name):
        """What a program needs to have this clock; what it has to inherit are its timers."""
        page = self.page(name)
        timers = self.timers[name] = [os.eventfd(0, os.EFD_NONBLOCK | os.EFD_CLOEXEC) for _ in range(TIMERS)]
        return {"LD_PRELOAD": self.shim, "DOZELY_SHIM": page.path, "DOZELY_SHIM_TIMERS": ",".join(map(str, timers))}

    def move(self, date):
        self.now = date
        for page in self.pages.values():
            page.numbers[NOW] = nanoseconds(date) + PAST
        for name, page in self.pages.items():
            for i, timer in enumerate(self.timers.get(name, ())):
                if 0 < page.numbers[DUE + i] <= nanoseconds(date) + PAST:
                    os.eventfd_write(timer, 1)


def listens(path):
    """Whether somebody listens at that socket, which is later than its name is there."""
    with socket.socket(socket.AF_UNIX) as client:
        return client.connect_ex(path) == 0


class Screen(scratch_desktop.Desktop):
    """A display with a window manager, or a Wayland compositor without a display, and the accessibility bus; nothing
    else of a desktop."""

    def __init__(self, system, is_wayland=False):
        self.is_wayland = is_wayland
        super().__init__(system)
        if is_wayland:
            self.start_compositor()
        else:
            self.start_manager()

    def start_display(self):
        return None if self.is_wayland else super().start_display()

    def start_server(self):
        pass

    def write(self, name, content):
        path = self.system.path("usr/lib/" + name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(content)
        os.chmod(path, 0o644)
        return path

    def start_manager(self):
        self.system.start("the window manager", ["openbox", "--config-file", self.write("rc.xml", OPENBOX), "--sm-disable"],
                          as_user=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for count in ("2", "1"):  # what it is asked before it hears is lost, windows that are to be shown as well
            self.system.wait_until("the window manager", START_LIMIT, lambda count=count: self.has_desktops(count))

    def has_desktops(self, count):
        """Whether the window manager does as it is asked."""
        self.system.run_as_user(["xdotool", "set_num_desktops", count])
        found = self.system.run_as_user(["xprop", "-root", "_NET_NUMBER_OF_DESKTOPS"]).stdout
        return found.endswith(f"= {count}\n")

    def start_compositor(self):
        self.system.session_environment["WAYLAND_DISPLAY"] = "wayland-desk"
        folder = self.environment["XDG_RUNTIME_DIR"]
        self.system.start("the compositor", ["weston", "--backend=headless-backend.so", "--socket=wayland-desk",
                                             "--config=" + self.write("weston.ini", WESTON), "--log=" + folder + "/log",
                                             "--width=1280", "--height=960"], as_user=True,
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.system.wait_until("the compositor", START_LIMIT, lambda: listens(folder + "/wayland-desk"))


class Person:
    """Who sees and does by the accessibility bus: person.py, in the session. Each of its orders is a method here."""

    def __init__(self, system, application="Dozely"):
        self.application = application
        path = system.path("usr/lib/person.py")
        if not os.path.exists(path):
            shutil.copyfile(HERE + "/person.py", path)
            os.chmod(path, 0o644)
        self.process = system.start("a person", ["/usr/bin/python3", "-u", path], as_user=True, piped=True)

    def __getattr__(self, what):
        def tell(role=None, name=".*", app=self.application, **more):
            order = {"do": what, "app": app, "role": role, "name": name, **more}
            self.process.stdin.write(json.dumps(order) + "\n")
            self.process.stdin.flush()
            answer = json.loads(self.process.stdout.readline())
            if "failure" in answer:
                if what == "show" or "limit" in more:
                    raise Failure(answer["failure"])
                raise Failure(answer["failure"] + "\nThere is:\n" + self.show(app=app))
            return answer["done"]
        return tell


class Desk(BusSystem):
    """What stands on it is started by the methods, in their order."""

    shim = None  # the library that gives programs another clock; without it they have the machine's
    plug_ins = ("Open.plugin", "PowerOff.plugin", "Sleep.plugin", "Script.plugin")

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.clock = self.screen = None
        self.environment.update({"TZ": "UTC", "LANG": "en_GB.UTF-8", "LANGUAGE": "en"})

    def lay_out(self, more_plug_ins=()):
        super().lay_out((*self.plug_ins, *more_plug_ins))
        home = self.path(self.user.pw_dir.lstrip("/"))
        os.makedirs(home, exist_ok=True)
        os.chown(home, self.user.pw_uid, self.user.pw_gid)
        if self.shim:
            self.clock = Clock(self, self.shim, MORNING)
            for name in PERFORMERS:
                self.clock.wrap(self.path(os.path.join(self.helper_programs(), name)))

    def start(self, name, arguments, as_user=False, piped=False, **more):  # pylint: disable=arguments-differ
        """`piped`: lines are written to it and read from it."""
        if not piped and not self.is_clocked(name):
            return super().start(name, arguments, as_user, **more)
        options = {**(self.as_user() if as_user else {"env": dict(self.environment)}), **more}
        if piped:
            options |= {"stdin": subprocess.PIPE, "stdout": subprocess.PIPE, "text": True}
        else:
            options |= {"stdin": subprocess.DEVNULL}
            options["env"] = {**options["env"], **self.clock.environment(name)}
            options["pass_fds"] = self.clock.timers[name]
        process = subprocess.Popen(arguments, cwd="/", **options)
        self.processes.append((name, process))
        return process

    def is_clocked(self, name):
        return self.clock is not None and name in ("dozelyd", "Dozely Agent", "Dozely")

    def begin_desk(self, is_wayland=False, polkit=True, daemon=True):
        """All but the window."""
        self.lay_out()
        self.start_bus()
        if polkit:
            self.start_polkit()
            for action in (OWN, WAKE):
                self.answer(ALICE, action, "yes")
        if daemon:
            self.start_daemon()
            self.wait_until("the daemon on the bus", START_LIMIT, lambda: self.owner_of("com.dozely"))
        self.screen = Screen(self, is_wayland)
        self.session_environment.update({"FONTCONFIG_FILE": self.copy_fonts(), "QT_FONT_DPI": "96",
                                         "QT_WAYLAND_CLIENT_BUFFER_INTEGRATION": "none"})
        for name in ("caller.py",):
            shutil.copyfile(os.path.join(HERE, os.pardir, "bus", name), self.path("usr/lib/" + name))
            os.chmod(self.path("usr/lib/" + name), 0o644)

    def copy_fonts(self):
        """The fonts of the tests, where the person may read them."""
        folder = self.path("usr/lib/fonts")
        shutil.copytree(os.path.join(HERE, *[os.pardir] * 2, "fonts"), folder)
        for name in os.listdir(folder):
            os.chmod(os.path.join(folder, name), 0o644)
        os.chmod(folder, 0o755)
        return folder + "/fonts.conf"

    def open_window(self, **environment):
        """Starts the program; a person before it."""
        with contextlib.ExitStack() as stack:
            former = dict(self.session_environment)
            stack.callback(lambda: (self.session_environment.clear(), self.session_environment.update(former)))
            self.session_environment.update(environment)
            self.start("Dozely", [self.path(PROGRAM), "--root", self.root], as_user=True)
        return Person(self)

    def write_colours(self, are_dark):
        """The colours of the desktop, as DARK_DESKTOP has Qt read them."""
        folder = self.session_environment["XDG_CONFIG_HOME"]
        os.makedirs(folder, exist_ok=True)
        with open(folder + "/kdeglobals", "w", encoding="ascii") as file:
            file.write(DARK if are_dark else "")

    def mark_program(self):
        """A program that leaves a mark, whatever it is given; with the path of the mark."""
        mark = self.path("marks/session/done")
        path = self.path("usr/bin/leave-a-mark")
        with open(path, "w", encoding="utf-8") as file:
            file.write(f"#!/bin/sh\necho done >> '{mark}'\n")
        os.chmod(path, 0o755)
        return path, mark
