# SPDX-License-Identifier: MIT
"""Daemon and agent, real processes below a scratch folder, whose clock stands still until the test moves it, and that may
be refused a call or be killed at one. What stands between them and the machine is Shim.cpp."""

import collections
import contextlib
import datetime
import mmap
import os
import shutil
import signal
import sqlite3
import subprocess
import time

import scratch_system

LIMIT = 60.0  # seconds; only bounds a failure
STORE = "Library/Preferences/com.dozely.plist"
RECORD = "var/lib/dozely/occurrences.db"

# What FaultPage.h has.
NONE, FAIL, DIE_BEFORE, DIE_AFTER, CUT_SHORT, DISK_FULL = range(6)
SECOND = 1_000_000_000  # in nanoseconds
PAST = SECOND // 1000  # a machine is a little late, and timers are set for a nanosecond after the date
WHOEVER_COMES = -1
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
        next process that begins."""
        self.numbers[COUNTED] = 0
        self.numbers[FIRED] = self.numbers[CALLS] = 0
        self.numbers[TARGET], self.numbers[WAY] = number, way
        self.numbers[COUNTED] = process

    def disarm(self):
        self.numbers[COUNTED] = 0

    def fired(self):
        return self.numbers[FIRED] != 0

    def trace(self):
        """What each counted call was."""
        calls = []
        for i in range(min(self.numbers[CALLS], TRACED_CALLS)):
            place = 8 * TRACE + i * TRACE_LENGTH
            calls.append(bytes(self.memory[place:place + TRACE_LENGTH]).split(b"\0")[0].decode(errors="replace"))
        return calls


class Hosts:
    """A daemon, and an agent if that is wanted, on a system whose bus runs."""

    def __init__(self, system, shim):
        self.system = system
        self.shim = system.path("usr/lib/fault_shim.so")
        shutil.copyfile(shim, self.shim)  # the agent's user need not be able to read the build tree
        os.chmod(self.shim, 0o755)
        self.daemon_page = Page(system.path("run/daemon-page"))
        self.agent_page = Page(system.path("run/agent-page"))
        self.timers = [os.eventfd(0, os.EFD_NONBLOCK | os.EFD_CLOEXEC) for _ in range(TIMERS)]
        self.daemon = self.agent = None
        self.dates = set()
        self.now = scratch_system.utc_now().replace(microsecond=0) + datetime.timedelta(hours=1)
        for page in (self.daemon_page, self.agent_page):
            page.numbers[START] = nanoseconds(self.now) - 86400 * SECOND
        self.move_clock(self.now)

    # ---- the clock

    def move_clock(self, date):
        """It is that date for all of them, and what waits for it goes on."""
        self.now = date
        for page in (self.daemon_page, self.agent_page):
            page.numbers[NOW] = nanoseconds(date) + PAST
        for i, timer in enumerate(self.timers):
            if 0 < self.daemon_page.numbers[DUE + i] <= nanoseconds(date) + PAST:
                os.eventfd_write(timer, 1)

    def waits_for(self, date):
        """Whether the daemon has read the store and has set a timer for that date."""
        return nanoseconds(date) // SECOND in self.awaited()

    def awaited(self):
        """The seconds for which the daemon's timers wait."""
        return {due // SECOND for due in self.daemon_page.numbers[DUE:DUE + TIMERS].tolist()}

    def store(self, occurrences):
        """Writes the store, with a schedule for each."""
        self.dates = {nanoseconds(occurrence.date) // SECOND for occurrence in occurrences}
        self.system.store([self.entry(occurrence) for occurrence in occurrences])

    # ---- the programs

    def environment(self, page):
        return {"LD_PRELOAD": self.shim, "DOZELY_SHIM": page.path}

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

    # ---- what they do

    def marks(self, place):
        return self.system.path(f"marks/{place}/performed")

    def entry(self, occurrence, script='echo "$0" >> "$1"'):
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
        known = {"var/lib/dozely": {"occurrences.db", "occurrences.db-wal", "occurrences.db-shm", "dozelyd.lock"},
                 "Library/Preferences": {"com.dozely.plist", "com.dozely.plist.lock"}}
        return [f"{folder}/{name} was left behind" for folder, names in known.items()
                for name in sorted(set(os.listdir(self.system.path(folder))) - names)]

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


OVER_BY_ITSELF = ("done", "skipped", "not performed", "removed", "interrupted", "unknown")


def judge(state, performed, may_be_lost=False):
    """What is wrong with an occurrence of which the record says that, and that left so many marks; None for nothing. Without
    an excuse it is performed."""
    if performed > 1:
        return f"it was performed {performed} times"
    if state not in OVER_BY_ITSELF:
        return f"the record says '{state}' of it"
    if state in ("not performed", "skipped", "removed") and performed:
        return f"the record says '{state}' of it, and it was performed"
    if not may_be_lost and (state != "done" or not performed):
        return f"it was lost: the record says '{state}' of it, and it was performed {performed} times"
    return None
