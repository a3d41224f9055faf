# SPDX-License-Identifier: MIT
"""A system whose daemon is on a real system bus with the installed policy, called by several users, with a stand-in for
polkit or the machine's own. Whoever imports this has scripts/ in his path."""
import json
import os
import pwd
import re
import signal
import subprocess
import sys

from scratch_system import START_LIMIT, System

HERE = os.path.dirname(os.path.abspath(__file__))
SOURCES = os.path.normpath(os.path.join(HERE, *[os.pardir] * 3))

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <deny own="*"/>
    <deny send_type="method_call"/>
    <allow send_type="signal"/>
    <allow send_requested_reply="true" send_type="method_return"/>
    <allow send_requested_reply="true" send_type="error"/>
    <allow receive_type="method_call"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow receive_type="signal"/>
    <allow send_destination="org.freedesktop.DBus"/>
    <allow send_destination="org.freedesktop.login1" send_interface="org.freedesktop.login1.Manager"/>
  </policy>
  <policy user="root">
    <allow own="*"/>
    <allow send_destination="org.freedesktop.PolicyKit1"/>
    <allow send_destination="org.freedesktop.login1"/>
    <allow send_interface="org.freedesktop.DBus.Peer"/>
    <allow send_interface="org.freedesktop.DBus.Introspectable"/>
  </policy>
  <policy user="polkitd"><allow own="org.freedesktop.PolicyKit1"/></policy>
  <include>{policy}</include>
</busconfig>
"""
ALICE, BOB = pwd.getpwnam("nobody").pw_uid, pwd.getpwnam("daemon").pw_uid
OWN, WAKE, ALL = (f"com.dozely.scheduler.{name}" for name in ("manage-own", "wake", "manage-all"))
ERROR = "com.dozely.Error."
POLKIT = ["--dest", "org.freedesktop.PolicyKit1", "--object-path", "/org/freedesktop/PolicyKit1/Authority"]


def become_root():
    """Starts this program again as root of a namespace of its own, unless root runs it: other users are needed."""
    if os.geteuid() != 0:
        os.execvp("unshare", ["unshare", "--user", "--map-root-user", "--map-auto", sys.executable, *sys.argv])


class BusSystem(System):
    def start_bus(self):
        with open(self.path("run/bus.conf"), "w", encoding="utf-8") as file:
            file.write(BUS_CONFIGURATION.format(socket=self.path("run/bus"),
                                                policy=SOURCES + "/packaging/com.dozely.Scheduler1.conf"))
        self.start_bus_daemon("the bus", self.path("run/bus.conf"))
        self.start("the mock login manager", ["/usr/bin/python3", "-m", "dbusmock", "--template", "logind"],
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.wait_until("the mock login manager", START_LIMIT, lambda: self.owner_of("org.freedesktop.login1"))
        status, output = self.call(["gdbus", "call", "--address", self.bus, "--dest", "org.freedesktop.login1", "--object-path",
                                    "/org/freedesktop/login1", "--method", "org.freedesktop.DBus.Mock.AddSession", "c1",
                                    "seat0", str(ALICE), "nobody", "true"])
        assert status == 0, output

    def start_polkit(self):
        self.start("polkit", ["/usr/bin/python3", HERE + "/polkit_stand_in.py"])
        self.wait_until("polkit", START_LIMIT, lambda: self.owner_of("org.freedesktop.PolicyKit1"))

    def start_real_polkit(self, rule):
        """The machine's own polkitd, with the policy that is installed and a rule of the administrator's."""
        actions, rules = self.path("run/actions"), self.path("run/rules.d")
        for folder in (actions, rules):
            os.makedirs(folder, mode=0o755)
        with open(SOURCES + "/packaging/com.dozely.policy", encoding="utf-8") as source, \
                open(actions + "/com.dozely.policy", "w", encoding="utf-8") as target:
            target.write(source.read())
        with open(rules + "/10-test.rules", "w", encoding="utf-8") as file:
            file.write(rule)
        for folder, place in ((actions, "/usr/share/polkit-1/actions"), (rules, "/etc/polkit-1/rules.d")):
            subprocess.run(["mount", "--bind", folder, place], check=True)
        self.start("polkit", ["/usr/lib/polkit-1/polkitd"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.wait_until("polkit", START_LIMIT, lambda: self.owner_of("org.freedesktop.PolicyKit1"))

    def end(self, name):
        entry = next(entry for entry in self.processes if entry[0] == name)
        self.processes.remove(entry)
        entry[1].send_signal(signal.SIGTERM)
        entry[1].wait(30)

    def owner_of(self, name):
        status, output = self.call(["gdbus", "call", "--address", self.bus, "--dest", "org.freedesktop.DBus", "--object-path",
                                    "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.GetNameOwner", name])
        return output if status == 0 else None

    def begin(self, polkit=True):
        self.lay_out()
        self.start_bus()
        if polkit:
            self.start_polkit()
        self.start_daemon()
        self.wait_until("the daemon on the bus", START_LIMIT, lambda: self.owner_of("com.dozely"))

    def answer(self, user, action, decided):
        status, output = self.call(["gdbus", "call", "--address", self.bus, *POLKIT, "--method",
                                    "com.dozely.Test.SetAnswer", str(user), action, decided])
        assert status == 0, output

    def polkit(self, method, *arguments):
        status, output = self.call(["gdbus", "call", "--address", self.bus, *POLKIT, "--method",
                                    "com.dozely.Test." + method, *arguments])
        assert status == 0, output
        return re.findall(r"'([^']*)'", output)

    def start_as(self, user, arguments, **more):
        # Away from this process's own user, and known by the number alone.
        return subprocess.Popen(arguments, env={**self.environment, "HOME": "/"}, cwd="/", stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, text=True, user=user, group=user, extra_groups=[], **more)

    def as_user(self, user=None, arguments=None):  # pylint: disable=arguments-differ
        if arguments is None:
            return super().as_user()
        process = self.start_as(user, arguments, stderr=subprocess.STDOUT)
        output, _ = process.communicate(timeout=120)
        return process.returncode, output.strip()

    def ask(self, user, method, *arguments):
        """What a user is answered, by python3-dbus."""
        status, output = self.as_user(user, ["/usr/bin/python3", self.path("usr/lib/caller.py"), method,
                                             *[json.dumps(each) for each in arguments]])
        assert status == 0, output
        return json.loads(output)

    def error(self, user, method, *arguments):
        answer = self.ask(user, method, *arguments)
        assert isinstance(answer, dict) and "error" in answer, answer
        assert answer["text"].endswith(".") and "\n" not in answer["text"], answer
        return answer["error"].removeprefix(ERROR)

    def store_bytes(self):
        with open(self.path("Library/Preferences/com.dozely.plist"), "rb") as file:
            return file.read()

    def log_text(self):
        with open(self.path("var/log/dozely.log"), encoding="utf-8") as file:
            return file.read()
