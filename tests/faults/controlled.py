# SPDX-License-Identifier: MIT
"""Daemon and agent, real processes below a scratch folder, whose clock stands still until the test moves it, and that may
be refused a call or be killed at one. What stands between them and the machine is Shim.cpp."""

import collections
import contextlib
import datetime
import fcntl
import hashlib
import mmap
import os
import shutil
import signal
import sqlite3
import struct
import subprocess
import time

import scratch_system

LIMIT = 60.0  # seconds; only bounds a failure
LEFT_LIMIT = 10.0  # the same, of which there may be many
STORE = "Library/Preferences/com.dozely.plist"
RECORD = "var/lib/dozely/occurrences.db"
PERFORMING = ("var/lib/dozely/performing", "run/dozely/performing")
PERFORMERS = ("dozely-performer", "dozely-session-performer")
PREPARATION = datetime.timedelta(seconds=2)  # before its date an action is made ready

# What FaultPage.h has.
NONE, FAIL, DIE_BEFORE, DIE_AFTER, CUT_SHORT, DISK_FULL = range(6)
SECOND = 1_000_000_000  # in nanoseconds
PAST = SECOND // 1000  # a machine is a little late, and timers are set for a nanosecond after the date
WHOEVER_COMES, WHOEVER_IS_FORKED = -1, -2
TIMERS = 4
PAGE_SIZE = 64 << 10
TRACED_CALLS, TRACE_LENGTH = 256, 160
NOW, START, DUE, COUNTED, CALLS, TARGET, WAY, FIRED, TRACE = 0, 1, 2, 6, 7, 8, 9, 10, 11

Occurrence = collections.namedtuple("Occurrence", "identifier date place")


class Failure(scratch_system.Failure):
    """An invariant that does not hold, or something that never happened."""


def until(what, condition, limit=LIMIT):
    """Waits for the condition and returns what it says."""
    deadline = time.monotonic() + limit
    while not (result := condition()):
        if time.monotonic() > deadline:
            raise Failure(f"{what} did not come within {limit:g} seconds")
        time.sleep(0.002)
    return result


def nanoseconds(date):
    return int(date.replace(tzinfo=datetime.timezone.utc).timestamp()) * SECOND


class Page:
    """The memory that one program shares with this one."""

    def __init__(self, path):
        with open(path, "wb") as file:
            file.truncate(PAGE_SIZE)
        os.chmod(path, 0o666)  # for the agent's user, too
        with open(path, "r+b") as file:
            self.memory = mmap.mmap(file.fileno(), PAGE_SIZE)
        self.path = path
        self.numbers = memoryview(self.memory).cast("q")

    def arm(self, process, number, way):
        """The process's next calls are counted; that happens to the one of this number, 0 for none. WHOEVER_COMES is the
        next process that begins, WHOEVER_IS_FORKED the next one that is forked and goes on with the same program."""
        self.numbers[COUNTED] = 0
        self.numbers[FIRED] = self.numbers[CALLS] = 0
        self.numbers[TARGET], self.numbers[WAY] = number, way
        self.numbers[COUNTED] = process

    def disarm(self):
        self.numbers[COUNTED] = 0

    def counted(self):
        return self.numbers[COUNTED]

    def fired(self):
        return self.numbers[FIRED] != 0

    def trace(self):
        """What each counted call was."""
        calls = []
        for i in range(min(self.numbers[CALLS], TRACED_CALLS)):
            place = 8 * TRACE + i * TRACE_LENGTH
            calls.append(bytes(self.memory[place:place + TRACE_LENGTH]).split(b"\0")[0].decode(errors="replace"))
        return calls


def is_alive(process):
    """Whether a process of that number is there and has not ended."""
    with contextlib.suppress(OSError), open(f"/proc/{process}/stat", encoding="utf-8", errors="replace") as stat:
        return stat.read().rpartition(")")[2].split()[0] not in "ZX"
    return False


def is_locked(path):
    """Whether somebody has the lock of an open file description on it."""
    lock = struct.pack("hhqqi4x", fcntl.F_WRLCK, os.SEEK_SET, 0, 0, 0)
    with contextlib.suppress(FileNotFoundError), open(path, "r+b") as file:
        return struct.unpack("hhqqi4x", fcntl.fcntl(file, fcntl.F_OFD_GETLK, lock))[0] != fcntl.F_UNLCK
    return False


class Hosts:
    """A daemon, and an agent if that is wanted, on a system whose bus runs."""

    def __init__(self, system, shim):
        self.system = system
        self.shim = system.path("usr/lib/fault_shim.so")
        shutil.copyfile(shim, self.shim)  # the agent's user need not be able to read the build tree
        os.chmod(self.shim, 0o755)
        self.daemon_page = Page(system.path("run/daemon-page"))
        self.agent_page = Page(system.path("run/agent-page"))
        self.performer_page = Page(system.path("run/performer-page"))
        self.timers = [os.eventfd(0, os.EFD_NONBLOCK | os.EFD_CLOEXEC) for _ in range(TIMERS)]
        self.daemon = self.agent = None
        self.dates = set()
        self.now = scratch_system.utc_now().replace(microsecond=0) + datetime.timedelta(hours=1)
        for page in (self.daemon_page, self.agent_page, self.performer_page):
            page.numbers[START] = nanoseconds(self.now) - 86400 * SECOND
        self.move_clock(self.now)

    # ---- the clock

    def move_clock(self, date):
        """It is that date for all of them, and what waits for it goes on."""
        self.now = date
        for page in (self.daemon_page, self.agent_page, self.performer_page):
            page.numbers[NOW] = nanoseconds(date) + PAST
        for i, timer in enumerate(self.timers):
            if 0 < self.daemon_page.numbers[DUE + i] <= nanoseconds(date) + PAST:
                os.eventfd_write(timer, 1)

    def waits_for(self, date):
        """Whether the daemon has read the store and has set a timer for that date, or for making ready what comes then."""
        return not self.awaited().isdisjoint(self.moments(date))

    @staticmethod
    def moments(date):
        return {nanoseconds(moment) // SECOND for moment in (date, date - PREPARATION)}

    def awaited(self):
        """The seconds for which the daemon's timers wait."""
        return {due // SECOND for due in self.daemon_page.numbers[DUE:DUE + TIMERS].tolist()}

    def store(self, occurrences):
        """Writes the store, with a schedule for each."""
        self.dates = set().union(*(self.moments(occurrence.date) for occurrence in occurrences))
        self.system.store([self.entry(occurrence) for occurrence in occurrences])

    # ---- the programs

    def environment(self, page):
        return {"LD_PRELOAD": self.shim, "DOZELY_SHIM": page.path}

    def count_performers(self):
        """Has the calls of performers counted, too; not of those that only ask."""
        program = self.system.path(os.path.join(self.system.helper_programs(), PERFORMERS[0]))
        os.rename(program, program + ".counted")
        with open(program, "w", encoding="utf-8") as script:
            variables = " ".join(f"{name}='{value}'" for name, value in self.environment(self.performer_page).items())
            script.write(f"#!/bin/sh\ntest \"$1\" = --ask || export {variables}\nexec '{program}.counted' \"$@\"\n")
        os.chmod(program, 0o755)

    def start_daemon(self):
        """A daemon on this root; returns at once."""
        for i in range(TIMERS):
            self.daemon_page.numbers[DUE + i] = 0
            with contextlib.suppress(BlockingIOError):
                os.eventfd_read(self.timers[i])
        timers = {"DOZELY_SHIM_TIMERS": ",".join(map(str, self.timers))}
        self.daemon = subprocess.Popen(
            [self.system.path("usr/sbin/dozelyd"), "--root", self.system.root], cwd="/", stdin=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, pass_fds=self.timers,
            env={**self.system.environment, **self.environment(self.daemon_page), **timers})

    def start_agent(self):
        options = self.system.as_user()
        options["env"] |= self.environment(self.agent_page)
        self.agent = subprocess.Popen(
            [self.system.path(scratch_system.AGENT), "--root", self.system.root], cwd="/", stdin=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, **options)

    def wait_for_daemon(self):
        """Until it has read its store and waits for something that is in it."""
        def is_up():
            if self.daemon.poll() is not None:
                raise Failure(f"the daemon ended with status {self.daemon.returncode} instead of coming up")
            return not self.dates.isdisjoint(self.awaited())
        until("the daemon", is_up)

    def wait_for_agent(self):
        until("the agent", lambda: self.system.admin("ping", "agent", str(self.system.user.pw_uid))[0] == 0)

    @staticmethod
    def kill(process):
        process.send_signal(signal.SIGKILL)
        process.wait()

    def stop(self):
        """Ends both in good order; sentences about those that did not end so."""
        complaints = []
        for name, process in (("the agent", self.agent), ("the daemon", self.daemon)):
            if process is None or process.poll() is not None:
                continue
            process.send_signal(signal.SIGTERM)
            try:
                process.wait(LIMIT)
            except subprocess.TimeoutExpired:
                self.kill(process)
                complaints.append(f"{name} did not end at SIGTERM")
                continue
            if process.returncode != 0:
                complaints.append(f"{name} ended with status {process.returncode}")
        return complaints

    def kill_all(self):
        for process in (self.agent, self.daemon):
            if process is not None and process.poll() is None:
                self.kill(process)
        for process in self.performers():
            with contextlib.suppress(ProcessLookupError):
                os.kill(process, signal.SIGKILL)

    # ---- what they do

    def marks(self, place):
        return self.system.path(f"marks/{place}/performed")

    def performing(self):
        """The files of performances in the daemon."""
        return [os.path.join(folder, name) for folder in PERFORMING if os.path.isdir(self.system.path(folder))
                for name in sorted(os.listdir(self.system.path(folder)))]

    def is_ready(self, occurrence):
        """Whether there is a performer for it, which waits or performs."""
        name = hashlib.sha1(f"{occurrence.identifier}\n{nanoseconds(occurrence.date) // 1_000_000}".encode()).hexdigest()
        return any(is_locked(self.system.path(os.path.join(folder, name))) for folder in PERFORMING)

    def performers(self):
        """The processes of performers, with their parents: supervisors, and actors, whose parents those are. One that only
        asks plug-ins is none."""
        found = {}
        for process in filter(str.isdigit, os.listdir("/proc")):
            with contextlib.suppress(OSError):
                program = os.readlink(f"/proc/{process}/exe")
                with open(f"/proc/{process}/stat", encoding="utf-8", errors="replace") as stat:
                    state, parent = stat.read().rpartition(")")[2].split()[:2]
                with open(f"/proc/{process}/cmdline", "rb") as line:
                    only_asks = b"--ask" in line.read().split(b"\0")
                name = os.path.basename(program).split(".")[0]
                if not only_asks and program.startswith(self.system.root + "/") and name in PERFORMERS and state not in "ZX":
                    found[int(process)] = int(parent)
        return found

    def hold(self, occurrence):
        """Has an action wait, once it has left its mark, until what this returns is called."""
        path = f"{self.marks(occurrence.place)}.{occurrence.identifier}"
        os.mkfifo(path, 0o666)
        pipe = os.open(path, os.O_RDWR | os.O_CLOEXEC)

        def release():
            os.write(pipe, b"\n")
            until(f"the end of {occurrence.identifier}", lambda: not self.is_ready(occurrence))
            os.close(pipe)
            os.unlink(path)
        return release

    def entry(self, occurrence, script='echo "$0" >> "$1"; test ! -p "$1.$0" || read go < "$1.$0"'):
        """A schedule whose action leaves its mark: a line for each time that it is performed."""
        parameters = {"Program": "/bin/sh", "Arguments": ["-c", script, occurrence.identifier,
                                                          self.marks(occurrence.place)],
                      "Acts In User Agent": 1 if occurrence.place == "session" else 0}
        return {**scratch_system.schedule(0, occurrence.date, parameters=parameters),
                "Identifier": occurrence.identifier, "Name": occurrence.identifier}

    def performed(self):
        """How often each action left its mark, by its identifier."""
        counts = collections.Counter()
        for place in ("daemon", "session"):
            with contextlib.suppress(FileNotFoundError), open(self.marks(place), encoding="utf-8") as file:
                counts.update(line.rstrip("\n") for line in file)
        return counts

    def log_size(self):
        with contextlib.suppress(FileNotFoundError):
            return os.stat(self.system.path("var/log/dozely.log")).st_size
        return 0

    def log_since(self, begin):
        with contextlib.suppress(FileNotFoundError), \
                open(self.system.path("var/log/dozely.log"), encoding="utf-8", errors="replace") as log:
            log.seek(begin)
            return log.read()
        return ""

    def leftovers(self):
        """Sentences about files that nobody needs any more."""
        known = {"var/lib/dozely": {"occurrences.db", "occurrences.db-wal", "occurrences.db-shm", "dozelyd.lock",
                                    "performing"},
                 "Library/Preferences": {"com.dozely.plist", "com.dozely.plist.lock"}}
        return [f"{folder}/{name} was left behind" for folder, names in known.items()
                for name in sorted(set(os.listdir(self.system.path(folder))) - names)] + self.left_of_performances()

    def left_of_performances(self):
        """Sentences about what performances have left when all of them have ended, or are about to."""
        with contextlib.suppress(Failure):
            until("the end of all performances", lambda: not self.performing() and not self.performers(), LEFT_LIMIT)
        return ([f"{name} was left behind" for name in self.performing()]
                + [f"process {process} of a performer goes on" for process in self.performers()])

    def store_bytes(self):
        with open(self.system.path(STORE), "rb") as file:
            return file.read()

    def states(self, path=None):
        """What the record on disk says of each occurrence: its state by identifier and date."""
        place = f"file:{path}?mode=rw" if path else f"file:{self.system.path(RECORD)}?mode=ro"
        with contextlib.suppress(sqlite3.Error), contextlib.closing(sqlite3.connect(place, uri=True)) as record:
            return {(identifier, date): state for identifier, date, state in
                    record.execute("SELECT identifier, date, state FROM occurrences")}
        return {}

    def state(self, occurrence, of_killed=False):
        """The same of one, None where there is nothing. With `of_killed` nobody has the record open: a copy is read, so
        that the next daemon finds what the killed one left."""
        path = None
        if of_killed:
            path = self.system.path("run/copy.db")
            for companion in ("", "-wal"):
                shutil.copyfile(self.system.path(RECORD + companion), path + companion)
        return self.states(path).get((occurrence.identifier, nanoseconds(occurrence.date) // 1_000_000))

    def states_by_identifier(self):
        """The same by identifier alone, for schedules that are performed once."""
        return {identifier: state for (identifier, _), state in self.states().items()}

    def is_over(self, occurrence):
        return self.state(occurrence) not in (None, "asked", "begun")


OVER_BY_ITSELF = ("done", "failed", "skipped", "not performed", "removed", "interrupted", "unknown")


def judge(state, performed, may_be_lost=False, is_known=True, can_be_told=True):
    """What is wrong with an occurrence of which the record says that, and that left so many marks; None for nothing. Without
    an excuse it is performed. Of one that was handed to an agent, for example, it is not known how it ends; of one whose
    supervisor was struck nobody can tell that it was performed."""
    if performed > 1:
        return f"it was performed {performed} times"
    if state not in OVER_BY_ITSELF:
        return f"the record says '{state}' of it"
    if state in ("not performed", "skipped", "removed") and performed:
        return f"the record says '{state}' of it, and it was performed"
    if not may_be_lost and (state != "done" or not performed):
        return f"it was lost: the record says '{state}' of it, and it was performed {performed} times"
    if is_known and ((state, performed) == ("done", 0) or (can_be_told and (state, performed) == ("interrupted", 1))):
        return f"the record says '{state}' of it, and it was performed {performed} times"
    return None
