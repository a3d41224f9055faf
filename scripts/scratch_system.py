# SPDX-License-Identifier: MIT
"""A whole system below a scratch folder: bus, login manager, daemon and agent, for the demo and the benchmarks."""

import contextlib
import datetime
import os
import plistlib
import pwd
import re
import shutil
import signal
import subprocess
import tempfile
import time

START_LIMIT = 40.0  # seconds for everything to be up; only bounds a failure
STOP_LIMIT = 30.0  # seconds until a process that ends badly is killed; a busy machine takes its time

APPLICATION = "Applications/Dozely.app"
AGENT = APPLICATION + "/Contents/Helpers/Dozely Agent.app/Contents/Linux/Dozely Agent"
PLUG_INS = "Library/Application Support/Dozely/PlugIns"
SOCKETS = "private/var/tmp/com.dozely"

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_destination="*"/>
    <allow receive_type="method_call"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow receive_type="signal"/>
  </policy>
</busconfig>
"""


def utc_now():
    """The time now, as property lists have it."""
    return datetime.datetime.now(datetime.timezone.utc).replace(tzinfo=None)


def schedule(number, date, bundle="Command.plugin", parameters=None, owner=None):
    """An entry of the schedule store, this process's user's unless told."""
    return {
        "Identifier": f"schedule-{number}", "Name": f"Schedule {number}", "Is Enabled": True,
        "Bundle Path": f"/{PLUG_INS}/{bundle}", "Parameters": parameters or {},
        "Date": date, "Time Zone": "UTC", "Owner": os.geteuid() if owner is None else owner,
    }


class Failure(Exception):
    """What went wrong, as a sentence."""


def console_user():
    """The user in whose session the agent runs."""
    if os.geteuid() != 0:
        try:
            return pwd.getpwuid(os.geteuid())
        except KeyError:
            raise Failure("the user database does not know you, and a message bus would not let you in") from None
    sudo_user = os.environ.get("SUDO_UID", "0")
    if sudo_user.isdecimal() and sudo_user != "0":
        try:
            return pwd.getpwuid(int(sudo_user))
        except KeyError:
            pass
    return pwd.getpwnam("nobody")


class System:
    """The system below the scratch folder and its processes."""

    def __init__(self, build, root, user):
        self.build = build
        self.root = root
        self.user = user
        self.processes = []  # (name, process), in the order of their start
        self.log = None
        self.bus = "unix:path=" + self.path("run/bus")
        self.session_environment = {}  # what the user's processes have besides
        self.environment = {
            "PATH": "/usr/local/bin:/usr/bin:/bin",
            "LANG": os.environ.get("LANG", "C.UTF-8"),
            "DBUS_SYSTEM_BUS_ADDRESS": self.bus,
            # The agent's user need not be able to read the build tree.
            "LD_LIBRARY_PATH": self.path("usr/lib"),
        }
        self.runtime = self.path(f"run/user/{user.pw_uid}")  # of the user's session

    def path(self, relative):
        return os.path.join(self.root, relative)

    def helper_programs(self):
        """Where the hosts look for the programs that they start, as the build was told."""
        with open(os.path.join(self.build, "CMakeCache.txt"), encoding="utf-8") as file:
            cache = dict(re.findall(r"^(CMAKE_INSTALL_(?:PREFIX|LIBEXECDIR)):\w+=(.*)$", file.read(), re.MULTILINE))
        return os.path.join(cache["CMAKE_INSTALL_PREFIX"], cache["CMAKE_INSTALL_LIBEXECDIR"] or "libexec").lstrip("/")

    def lay_out(self, more_plug_ins=()):
        for folder in ("Library/Preferences", PLUG_INS, "private/var/tmp", "run", "var/lib/dozely", "var/log",
                       "marks/daemon", "marks/session", "usr/bin", "usr/sbin", "usr/lib", self.helper_programs()):
            os.makedirs(self.path(folder), mode=0o755, exist_ok=True)
        copies = [
            ("bundles/Dozely.app", APPLICATION),
            ("bundles/PlugIns/Command.plugin", PLUG_INS + "/Command.plugin"),
            ("hosts/daemon/dozelyd", "usr/sbin/dozelyd"),
            ("hosts/admin/dozely-admin", "usr/bin/dozely-admin"),
            ("hosts/performer/dozely-performer", self.helper_programs() + "/dozely-performer"),
            ("hosts/session-performer/dozely-session-performer",
             self.helper_programs() + "/dozely-session-performer"),
            ("kit/libDozelyKit.so.0", "usr/lib/libDozelyKit.so.0"),
            ("kit/libDozelyInterface.so.0", "usr/lib/libDozelyInterface.so.0"),
            ("kit/dozely", "usr/lib/dozely"),
        ]
        copies += [(f"bundles/PlugIns/{name}", f"{PLUG_INS}/{name}") for name in more_plug_ins]
        for source, target in copies:
            source = os.path.join(self.build, source)
            if not os.path.exists(source):
                raise Failure(f"{source} is missing; build first")
            if os.path.isdir(source):
                shutil.copytree(source, self.path(target))
            else:
                shutil.copyfile(source, self.path(target))
                os.chmod(self.path(target), 0o755)
        os.makedirs(self.runtime)
        self.close_to_others()
        os.chmod(self.runtime, 0o700)
        if os.geteuid() == 0:
            for folder in (self.path("marks/session"), self.runtime):
                os.chown(folder, self.user.pw_uid, self.user.pw_gid)
        else:
            # Only a root daemon makes this folder itself.
            os.mkdir(self.path(SOCKETS))
            os.chmod(self.path(SOCKETS), 0o777)

    def store(self, schedules):
        """Writes the schedule store as the admin tool would: whole or not at all."""
        path = self.path("Library/Preferences/com.dozely.plist")
        with open(path + ".new", "wb") as file:
            plistlib.dump({"Schedule Array": schedules}, file, fmt=plistlib.FMT_BINARY)
        os.chmod(path + ".new", 0o644)
        os.rename(path + ".new", path)

    def close_to_others(self):
        """Takes away what a generous umask gave: code that others may write is not loaded."""
        for folder, folders, files in os.walk(self.root):
            for name in folders + files:
                path = os.path.join(folder, name)
                mode = os.stat(path).st_mode & 0o755
                os.chmod(path, mode | (0o555 if os.path.isdir(path) else 0o444))

    def as_user(self):
        """Options that make a process one of the user's session."""
        options = {"env": {**self.environment, "HOME": self.user.pw_dir, "XDG_RUNTIME_DIR": self.runtime,
                           **self.session_environment}}
        if os.geteuid() == 0:
            options.update(user=self.user.pw_uid, group=self.user.pw_gid, extra_groups=[])
        return options

    def start(self, name, arguments, as_user=False, **more):
        options = self.as_user() if as_user else {"env": self.environment}
        process = subprocess.Popen(arguments, cwd="/", stdin=subprocess.DEVNULL, **options, **more)
        self.processes.append((name, process))
        return process

    def run_as_user(self, arguments, **more):
        """Runs a program in the user's session to its end."""
        options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, "text": True, **self.as_user(), **more}
        return subprocess.run(arguments, cwd="/", stdin=subprocess.DEVNULL, check=False, **options)

    def call(self, arguments):
        """Runs a program to its end; its exit status and output."""
        done = subprocess.run(arguments, env=self.environment, cwd="/", stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=15, check=False)
        return done.returncode, done.stdout.strip()

    def admin(self, *arguments):
        return self.call([self.path("usr/bin/dozely-admin"), "--root", self.root, *arguments])

    def start_bus(self):
        with open(self.path("run/bus.conf"), "w", encoding="utf-8") as file:
            file.write(BUS_CONFIGURATION.format(socket=self.path("run/bus")))
        self.start_bus_daemon("the bus", self.path("run/bus.conf"), stderr=subprocess.DEVNULL)
        self.start("the mock login manager", ["/usr/bin/python3", "-m", "dbusmock", "--template", "logind"],
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        call = ["dbus-send", "--bus=" + self.bus, "--print-reply", "--dest=org.freedesktop.login1",
                "/org/freedesktop/login1"]
        self.wait_until("the mock login manager", START_LIMIT,
                        lambda: self.call(call + ["org.freedesktop.DBus.Peer.Ping"])[0] == 0)
        status, output = self.call(call + ["org.freedesktop.DBus.Mock.AddSession", "string:c1", "string:seat0",
                                           f"uint32:{self.user.pw_uid}", f"string:{self.user.pw_name}",
                                           "boolean:true"])
        if status != 0:
            raise Failure(f"the mock login manager took no session: {output}")

    def start_bus_daemon(self, name, configuration, **more):
        """Starts a message bus; it listens when this returns, which is later than its socket is there."""
        reading, writing = os.pipe()
        with open(reading, encoding="utf-8") as addresses:
            self.start(name, ["dbus-daemon", "--config-file=" + configuration, "--nofork", "--nopidfile",
                              f"--print-address={writing}"], pass_fds=[writing], **more)
            os.close(writing)
            if not addresses.readline():
                raise Failure(f"{name} did not start")

    def start_daemon(self, **more):
        return self.start("dozelyd", [self.path("usr/sbin/dozelyd"), "--root", self.root], **more)

    def process(self, wanted):
        return next(process for name, process in self.processes if name == wanted)

    def stop_last(self):
        """Ends the process that was started last."""
        _, process = self.processes.pop()
        process.send_signal(signal.SIGTERM)
        process.wait(STOP_LIMIT)

    def start_hosts(self):
        self.start_daemon()
        self.wait_until("the daemon", START_LIMIT, lambda: self.admin("ping", "daemon")[0] == 0)
        self.start_agent()

    def start_agent(self):
        self.start("Dozely Agent", [self.path(AGENT), "--root", self.root], as_user=True)
        self.wait_until("the agent", START_LIMIT,
                        lambda: self.admin("ping", "agent", str(self.user.pw_uid))[0] == 0)

    def add(self, name, place, mark, delay, *more):
        status, output = self.admin("add", name, "--in", str(delay), "--in-" + place, "--program", "/usr/bin/touch",
                                    "--argument", mark, *more)
        if status != 0:
            raise Failure(f"the schedule could not be added: {output}")
        print(output, flush=True)

    def wait_until(self, what, limit, condition):
        deadline = time.monotonic() + limit
        while not condition():
            for name, process in self.processes:
                if process.poll() is not None:
                    raise Failure(f"{name} ended with status {process.returncode}")
            if time.monotonic() > deadline:
                raise Failure(f"{what} did not come within {limit:g} seconds")
            time.sleep(0.05)

    def stop(self):
        """Ends all processes, the last first; a sentence for each that did not end well."""
        complaints = []
        while self.processes:
            name, process = self.processes.pop()
            if process.poll() is None:
                process.send_signal(signal.SIGTERM)
            try:
                process.wait(STOP_LIMIT)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
                complaints.append(f"{name} did not end within {STOP_LIMIT:g} seconds")
                continue
            if name in ("dozelyd", "Dozely Agent") and process.returncode != 0:
                complaints.append(f"{name} ended with status {process.returncode}")
        if self.log:
            self.log.thread.join(STOP_LIMIT)
        return complaints


@contextlib.contextmanager
def scratch(build, kind=System):
    """A system, or one of a class derived from it, for the length of a with statement; stopped and removed at its end.
    Complaints of processes that did not end well raise Failure, unless something else went wrong before."""
    root = tempfile.mkdtemp(prefix="dozely-", dir="/tmp")
    os.chmod(root, 0o755)
    system = kind(build, root, console_user())
    try:
        yield system
        complaints = system.stop()
        if complaints:
            raise Failure("; ".join(complaints))
    finally:
        system.stop()
        shutil.rmtree(root, ignore_errors=True)
