# SPDX-License-Identifier: MIT
"""A desktop for the session of a scratch system: a session bus of its own, a real notification server, and, unless the
person who runs this has a display, a virtual one on which an alert can be looked at and pressed without hands."""

import glob
import json
import os
import shutil
import subprocess

from scratch_system import Failure, START_LIMIT

SERVER = "xfce4-notifyd"  # it shows buttons, and takes away what is closed, which some others do not
SERVER_PLACES = "/usr/lib/*/xfce4/notifyd/" + SERVER
SETTINGS_PLACES = "/usr/lib/*/xfce4/xfconf/xfconfd"  # where that server looks how to show things; empty here
ACCESSIBILITY_BUS = "/usr/libexec/at-spi-bus-launcher"
EYE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "alert_eye.py")
EYE_LIMIT = 30.0  # seconds for the eye to see an alert, or none; it only bounds a failure

SESSION_BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_type="method_call"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow receive_type="signal"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


class Desktop:
    """The desktop of `system`, whose bus must run and whose agent must not yet. Its processes are the system's, and end
    with it."""

    def __init__(self, system, display=None):
        """`display`: the person's own, as in the environment; a virtual one is made without."""
        self.system = system
        self.is_virtual = display is None
        folder = system.path("run/session")
        os.makedirs(folder)
        if os.geteuid() == 0:
            os.chown(folder, system.user.pw_uid, system.user.pw_gid)
        os.chmod(folder, 0o700)
        shutil.copyfile(EYE, system.path("usr/lib/alert_eye.py"))  # the user need not be able to read the source tree
        os.chmod(system.path("usr/lib/alert_eye.py"), 0o644)
        self.environment = {
            "XDG_RUNTIME_DIR": folder,
            "XDG_CONFIG_HOME": folder + "/config",
            "XDG_CACHE_HOME": folder + "/cache",
            "GSETTINGS_BACKEND": "memory",
            "GIO_USE_VFS": "local",
            "PYTHONWARNINGS": "ignore",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",  # the eye looks at the agent's own window, too
            "DBUS_SESSION_BUS_ADDRESS": "unix:path=" + folder + "/bus",
        }
        if name := display or self.start_display():
            self.environment["DISPLAY"] = name
        if not self.is_virtual:
            authority = os.environ.get("XAUTHORITY") or os.path.join(system.user.pw_dir, ".Xauthority")
            self.environment["XAUTHORITY"] = authority
        system.session_environment.update(self.environment)
        self.start_session_bus(folder)
        if self.is_virtual:
            self.start_accessibility()
        self.start_server()

    def start_display(self):
        """The display's name, nothing where there is none. The server itself picks a number that is free."""
        reading, writing = os.pipe()
        with open(reading, encoding="ascii") as numbers:
            self.system.start("the virtual display",
                              ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x960x24", "-nolisten", "tcp", "-noreset"],
                              pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            os.close(writing)
            number = numbers.readline().strip()  # comes once clients may connect
        if not number:
            raise Failure("the virtual display did not start")
        return ":" + number

    def start_session_bus(self, folder):
        with open(self.system.path("run/session.conf"), "w", encoding="utf-8") as file:
            file.write(SESSION_BUS.format(socket=folder + "/bus"))
        self.system.start_bus_daemon("the session bus", self.system.path("run/session.conf"), as_user=True,
                                     stderr=subprocess.DEVNULL)

    def start_accessibility(self):
        """By this the eye sees windows as a screen reader does."""
        self.system.start("the accessibility bus", [ACCESSIBILITY_BUS], as_user=True,
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.wait_for_name("org.a11y.Bus")

    def start_server(self):
        for what, places, name in (("the server's settings", SETTINGS_PLACES, "org.xfce.Xfconf"),
                                   ("the notification server", SERVER_PLACES, "org.freedesktop.Notifications")):
            programs = glob.glob(places)
            if not programs:
                raise Failure(f"{places} is missing; install xfce4-notifyd")
            self.system.start(what, programs[:1], as_user=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            self.wait_for_name(name)
            if name == "org.xfce.Xfconf":  # at the lower right: the agent's own window is at the upper right
                self.call(["xfconf-query", "-c", SERVER, "-p", "/notify-location", "-n", "-t", "uint", "-s", "3"])

    def call(self, arguments, limit=START_LIMIT):
        """Runs a program in the session to its end; its output. Raises Failure when it fails."""
        done = self.system.run_as_user(arguments, timeout=limit + 5)
        if done.returncode != 0:
            raise Failure(f"{os.path.basename(arguments[0])}: {done.stderr.strip() or done.returncode}")
        return done.stdout

    def wait_for_name(self, name):
        self.call(["gdbus", "wait", "--session", "--timeout", f"{START_LIMIT:g}", name])

    def see_alert(self, application=SERVER):
        """Waits for an alert with a button; what is seen of it: "title", "text", "button", and the places "window",
        "press" and, where it has them, "later" and "hide" on the screen (left, top, width, height)."""
        return json.loads(self.look("see", application))

    def see_nothing(self, application=SERVER):
        """Waits until the application, the notification server unless named, shows no alert."""
        self.look("gone", application)

    def look(self, wanted, application):
        return self.call(["/usr/bin/python3", self.system.path("usr/lib/alert_eye.py"), wanted,
                          application, f"{EYE_LIMIT:g}"], EYE_LIMIT)

    def do(self, button, application):
        """Has the alert's button of that name do what it does, by the accessibility bus."""
        self.look("do:" + button, application)

    def press(self, alert, button="press"):
        """Presses the alert's button, or its "later", with the pointer."""
        left, top, width, height = alert[button]
        self.call(["xdotool", "mousemove", "--sync", str(left + width // 2), str(top + height // 2), "click", "1"])

    def photograph(self, alert, file):
        """Writes what the screen shows at the alert's place, as a PNG image."""
        left, top, width, height = alert["window"]
        border = 8
        place = f"{width + 2 * border}x{height + 2 * border}+{max(0, left - border)}+{max(0, top - border)}"
        done = self.system.run_as_user(["import", "-window", "root", "-crop", place, "+repage", "-strip", "png:-"],
                                       text=False, timeout=START_LIMIT)
        if done.returncode != 0:
            raise Failure("the alert could not be photographed: " + done.stderr.decode(errors="replace").strip())
        with open(file, "wb") as image:
            image.write(done.stdout)
