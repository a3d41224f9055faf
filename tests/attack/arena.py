# SPDX-License-Identifier: MIT
"""The system that is attacked, below a scratch folder, and who attacks it."""

import contextlib
import datetime
import json
import os
import resource
import shutil
import signal
import sqlite3
import subprocess
import sys

import measuring
import scratch_system
import wire

FIRST_ATTACKER = 4711  # user ids; nobody is logged in under them
BYSTANDER = 4799  # a user who attacks nobody
DESCRIPTORS = 1024  # what a service manager and a login give a program at first
START_LIMIT = 40.0  # seconds

NAMESPACE_MARK = "DOZELY_ATTACK_NAMESPACE"


def enter_namespace():
    """Without root: starts this program again as the root of a namespace with as many users as an attack needs. Returns
    a sentence when that cannot be done."""
    if os.geteuid() == 0 or NAMESPACE_MARK in os.environ:
        return None
    unshare = ["unshare", "--user", "--map-root-user", "--map-auto"]
    trial = [sys.executable, "-c", f"import os; os.setgroups([]); os.setresuid(*[{BYSTANDER}] * 3)"]
    with contextlib.suppress(OSError):
        done = subprocess.run(unshare + trial, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
        if done.returncode == 0:
            os.environ[NAMESPACE_MARK] = "1"
            os.environ.pop("SUDO_UID", None)
            os.execvp(unshare[0], unshare + [sys.executable, *sys.argv])
    return ("You are not root, and no user namespace with more than one user can be made: that needs newuidmap (package "
            "uidmap), a range of ids for you in /etc/subuid and /etc/subgid, and a kernel that lets users make "
            "namespaces. What takes a second user is left out.")


def take_usual_limits():
    """Hosts begin with the usual soft limit of descriptors, which they take over from here; how far they may raise it is the
    machine's choice."""
    _, hard = resource.getrlimit(resource.RLIMIT_NOFILE)
    resource.setrlimit(resource.RLIMIT_NOFILE, (min(DESCRIPTORS, hard), hard))


class Arena:
    """One system with its processes, and the attackers of one attack."""

    def __init__(self, system, flood, has_users):
        self.system = system
        self.has_users = has_users
        self.daemon_socket = system.path(scratch_system.SOCKETS + "/dozelyd")
        self.agent_socket = system.path(f"{scratch_system.SOCKETS}/Dozely Agent.{system.user.pw_uid}")
        self.flood_program = system.path("usr/lib/flood")
        shutil.copyfile(flood, self.flood_program)
        os.chmod(self.flood_program, 0o755)
        os.mkdir(system.path("attack"))
        self.floods = []
        self.children = []
        self.files = 0
        self.hosts = []

    # ---- the system

    def begin(self):
        """Daemon and agent, fresh, so that no attack bears the traces of the one before."""
        for name in ("daemon", "session"):
            with contextlib.suppress(FileNotFoundError):
                os.unlink(self.marks(name))
        record = [f"var/lib/dozely/occurrences.db{companion}" for companion in ("", "-wal", "-shm")]
        for name in (*record, "Library/Preferences/com.dozely.plist"):
            with contextlib.suppress(FileNotFoundError):
                os.unlink(self.system.path(name))
        self.log_begin = self.log_size()
        # What a host says on its error output when it has no descriptor left is not for the table.
        daemon = self.system.start_daemon(stderr=subprocess.DEVNULL)
        self.wait_for(self.daemon_socket)
        agent = self.system.start("Dozely Agent", [self.system.path(scratch_system.AGENT), "--root", self.system.root],
                                  as_user=True, stderr=subprocess.DEVNULL)
        self.wait_for(self.agent_socket)
        self.hosts = [measuring.Host("dozelyd", daemon.pid), measuring.Host("Dozely Agent", agent.pid)]

    def wait_for(self, path):
        def answers():
            with contextlib.suppress(OSError, wire.Refused):
                wire.ping(path, os.geteuid(), START_LIMIT)
                return True
            return False
        self.system.wait_until(f"an answer at {os.path.basename(path)}", START_LIMIT, answers)

    def end(self):
        """Ends daemon and agent. Sentences about those that did not end well."""
        complaints = []
        for _ in self.hosts:
            name, process = self.system.processes.pop()
            if process.poll() is None:
                process.send_signal(signal.SIGCONT)
                process.send_signal(signal.SIGTERM)
            try:
                process.wait(scratch_system.STOP_LIMIT)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
                complaints.append(f"{name} had to be killed")
            else:
                if process.returncode != 0:
                    complaints.append(f"{name} ended with status {process.returncode}")
        self.hosts = []
        return complaints

    def marks(self, place):
        return self.system.path(f"marks/{place}/lateness")

    def log_size(self):
        with contextlib.suppress(FileNotFoundError):
            return os.stat(self.system.path("var/log/dozely.log")).st_size
        return 0

    def new_log(self):
        with open(self.system.path("var/log/dozely.log"), encoding="utf-8", errors="replace") as log:
            log.seek(self.log_begin)
            return log.read().splitlines()

    def plan(self, seconds, more=()):
        """Stores schedules: an action in the daemon and one in the session each second of an attack that begins when this
        returns, and one of each before, so that the hosts have once done all that they do. How many of each then are due."""
        count = max(1, int(seconds) - 1)
        now = scratch_system.utc_now()
        first = now.replace(microsecond=0) + datetime.timedelta(seconds=1 if now.microsecond < 500_000 else 2)
        dates = [first] + [first + datetime.timedelta(seconds=2 + i) for i in range(count)]
        schedules = [
            scratch_system.schedule(f"{place}-{i}", date, "Stopwatch.plugin",
                                    {"File": self.marks(place), "Acts In User Agent": in_agent})
            for place, in_agent in (("daemon", 0), ("session", 1)) for i, date in enumerate(dates)]
        self.system.store([*schedules, *more])
        self.system.wait_until("the first actions", START_LIMIT, lambda: all(
            len(measuring.lateness(self.marks(place))) == 1 for place in ("daemon", "session")))
        return count

    def late(self):
        """How late each action of the attack's began, in ms, by its place."""
        return {place: measuring.lateness(self.marks(place))[1:] for place in ("daemon", "session")}

    def recorded(self):
        """How many of the attack's actions in the daemon are on record as done."""
        place = f"file:{self.system.path('var/lib/dozely/occurrences.db')}?mode=ro"
        with contextlib.suppress(sqlite3.Error), contextlib.closing(sqlite3.connect(place, uri=True)) as record:
            count, = record.execute("SELECT count(*) FROM occurrences WHERE state = 'done' "
                                    "AND identifier LIKE 'schedule-daemon%'").fetchone()
            return count - 1
        return 0

    # ---- attackers

    def users(self, count):
        return range(FIRST_ATTACKER, FIRST_ATTACKER + count)

    def file(self, content):
        self.files += 1
        path = self.system.path(f"attack/{self.files}")
        with open(path, "wb") as file:
            file.write(content)
        return path

    def flood(self, users, streams, payload=b"", *options, greeting=None, target=None):
        """Has each user open so many streams to the daemon and send that; returns at once."""
        payload = self.file(payload)
        for user in users:
            mine = self.file(wire.greeting(user) if greeting is None else greeting)
            arguments = [self.flood_program, target or self.daemon_socket, str(streams), mine, payload, *options]
            as_user = {"user": user, "group": user, "extra_groups": []} if self.has_users else {}
            self.floods.append(subprocess.Popen(arguments, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True,
                                                cwd="/", **as_user))

    def child(self, user, function, *arguments):
        """Runs the function as that user; what it gets first is the pipe on which it is told to end."""
        child = measuring.Child(user if self.has_users else os.geteuid(), function, *arguments)
        self.children.append(child)
        return child

    def call_off(self):
        """Ends all attackers; what they did, added up."""
        sums = {}
        for flood in self.floods:
            flood.send_signal(signal.SIGTERM)
        for flood in self.floods:
            try:
                output, _ = flood.communicate(timeout=20)
            except subprocess.TimeoutExpired:
                flood.kill()
                output, _ = flood.communicate()
            for name, value in json.loads(output or "{}").items():
                sums[name] = sums.get(name, 0) + value
        self.floods = []
        for child in self.children:
            for name, value in (child.result(30) or {}).items():
                sums[name] = sums.get(name, 0) + value
        self.children = []
        return sums

    def kill_attackers(self):
        for flood in self.floods:
            flood.kill()
            flood.communicate()
        for child in self.children:
            child.kill()
        self.floods, self.children = [], []

