# SPDX-License-Identifier: MIT
"""What is done to the hosts. Each attack is bounded in streams, bytes and time."""

import dataclasses
import datetime
import os
import re
import signal
import subprocess
import time

import measuring
import scratch_system
import wire

MIB = 1 << 20
KIB = 1 << 10

LATENCY = 100.0  # ms, the longest wait of who attacks nobody
LATENESS = 50.0  # ms, of an action that is due
MEMORY = 64.0  # MiB above what the host had before
MEMORY_AFTER = 8.0  # MiB, MEMORY_SECONDS later
MEMORY_SECONDS = 30.0
DESCRIPTOR_SECONDS = 15.0  # until the descriptors are as before


@dataclasses.dataclass
class Attack:
    name: str
    what: str
    begin: callable  # what starts it, with the arena; returns a function that gives figures of its own afterwards, or None
    prepare: callable = lambda arena: None  # what is to be ready by then
    seconds: float = 8.0
    short: float = 0.0  # seconds in the short form; 0 leaves it out
    needs_users: bool = True
    outage: float = LATENCY  # ms without any answer, for those who ping
    keeps_stream: bool = False  # whether those who ping keep their streams: what is looked at is not the socket file
    extra: list = dataclasses.field(default_factory=list)  # (figure, limit) of its own
    schedules: callable = lambda arena: ()  # more of them


ping = wire.call("/root", "pong")
introspection = wire.call("/", "Introspect", interface=wire.INTROSPECTABLE)


def nobody(_arena):
    return None


def idle(arena):
    arena.flood(arena.users(10), 64)


def small(users, *options):
    def begin(arena):
        arena.flood(arena.users(users), 64, ping * 64, *options)
    return begin


def large(users, size):
    """Half of the streams send what is dear to read, half what is cheap and so comes faster."""
    def begin(arena):
        arena.flood(arena.users(users), 32, wire.dense(size), "--read")
        arena.flood(arena.users(users), 32, wire.bulky(size), "--read")
    return begin


def slow_messages(arena):
    """Every stream promises 200 KiB, sends half and then a byte now and then; half as many say not even a whole head."""
    message = wire.bulky(200 * KIB)
    for user in arena.users(10):
        started = wire.greeting(user) + message[:100 * KIB]
        arena.flood([user], 32, message[100 * KIB:], "--drip", greeting=started)
        arena.flood([user], 32, message[10:], "--drip", greeting=wire.greeting(user) + message[:10])


def slow_handshakes(arena):
    arena.flood(arena.users(10), 64, b"EXTERNAL 3437", "--drip", greeting=b"\0AUTH ")


def unread(arena):
    arena.flood(arena.users(10), 64, introspection * 16)


def held(arena):
    arena.flood(arena.users(10), 1000)


def connecting(arena):
    arena.flood(arena.users(10), 16, b"", "--again")


# ---- the socket folder


def take_place(pipe, target, prepared):
    """Puts a folder in the place of a socket, as any user may."""
    os.unlink(target)
    os.rename(prepared, target)
    pipe.poll(None)


LINKS = 50_000  # of one file; some file systems bear no more than 65,000


def prepare_folder(pipe, folder, files):
    """Names of few files: a file system makes those much quicker."""
    os.mkdir(folder)
    for i in range(files):
        first = f"{folder}/{i - i % LINKS}"
        if i % LINKS == 0:
            os.close(os.open(first, os.O_CREAT | os.O_WRONLY | os.O_CLOEXEC))
        else:
            os.link(first, f"{folder}/{i}")


def folder_in_place(target, files):
    """A folder with so many files where the target, "daemon_socket" or "agent_socket" of the arena, was."""
    def prepared(arena):
        return os.path.dirname(arena.daemon_socket) + "/prepared"

    def prepare(arena):
        measuring.Child(arena.users(1)[0], prepare_folder, prepared(arena), files).result(60)

    def begin(arena):
        arena.child(arena.users(1)[0], take_place, getattr(arena, target), prepared(arena))
    return {"prepare": prepare, "begin": begin}


# ---- events and orders

SENDERS = 100
GATHERING = 3.0  # seconds, at most, until all of them have reached the receiver


def is_waiting(process):
    with open(f"/proc/{process.pid}/stat", encoding="utf-8") as file:
        return file.read().rpartition(")")[2].split()[0] != "R"


def wait_until_quiet(processes, limit):
    """Until none of the processes has had anything to do for a while, and so waits for somebody else."""
    end, quiet = time.monotonic() + limit, 0
    while quiet < 5 and time.monotonic() < end:
        quiet = quiet + 1 if all(map(is_waiting, processes)) else 0
        time.sleep(0.02)


def events(arena):
    """100 processes of one user send to one receiver that is busy until all are there. They leave the processors to others:
    what is looked at is not the load of 100 programs that start."""
    agent = arena.hosts[1].pid
    admin = [arena.system.path("usr/bin/dozely-admin"), "--root", arena.system.root, "event", "DzAg", "aevt", "oapp"]
    begin = time.monotonic()
    os.kill(agent, signal.SIGSTOP)
    try:
        senders = [subprocess.Popen(["nice", "-n", "19", *admin], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                    stderr=subprocess.PIPE, text=True, cwd="/", **arena.system.as_user())
                   for _ in range(SENDERS)]
        wait_until_quiet(senders, GATHERING)
    finally:
        os.kill(agent, signal.SIGCONT)
    busy = (time.monotonic() - begin) * 1000

    def figures():
        complaints = [sender.communicate(timeout=60)[1].strip() for sender in senders]
        complaints = [complaint for complaint in complaints if complaint]
        return {"held_up_ms": busy, "refused": len(complaints), "untold": sum("-609" in complaint for complaint in complaints),
                "complaints": sorted(set(complaints))}
    return figures


ALLOWED_A_MINUTE = 60
DUE_LATER = datetime.timedelta(days=1)


def run_now(users):
    """Each user has the daemon run a schedule of that user's own, again and again."""
    def marks(arena):
        return arena.system.path("marks/daemon/now")

    def schedules(arena):
        return [scratch_system.schedule(f"now-{user}", scratch_system.utc_now() + DUE_LATER, "Stopwatch.plugin",
                                        {"File": marks(arena), "Acts In User Agent": 0}, owner=user)
                for user in arena.users(users)]

    def begin(arena):
        centre = wire.centre_of(arena.daemon_socket, os.geteuid(), measuring.PATIENCE)
        for user in arena.users(users):
            order = wire.notification(centre, "DaemonMustRunNowEvent", "com.dozely.Admin",
                                      {"Schedule Identifier": f"schedule-now-{user}"})
            arena.flood([user], 16, order, "--read")

        def figures():
            performed = len(measuring.lateness(marks(arena)))
            lines = sum(bool(re.search("DaemonMustRunNow", line)) for line in arena.new_log())
            os.unlink(marks(arena))
            return {"performed": performed, "performed a user": performed / users, "lines about them": lines}
        return figures
    return {"begin": begin, "schedules": schedules}


ATTACKS = [
    Attack("nobody", "Nobody attacks: what the measuring itself finds", nobody, short=2, needs_users=False),
    Attack("idle", "10 users, 64 idle streams each", idle, short=3),
    Attack("small, one user", "1 user, 64 streams of small requests, replies read", small(1, "--read")),
    Attack("small", "10 users, 64 streams of small requests each, replies read", small(10, "--read"), short=4),
    Attack("small, unread, one user", "1 user, 64 streams of small requests, replies never read", small(1)),
    Attack("small, unread", "10 users, 64 streams of small requests each, replies never read", small(10)),
    Attack("4 MiB, one user", "1 user, 64 streams of messages of 4 MiB", large(1, 4 * MIB), seconds=12, short=5),
    Attack("4 MiB", "10 users, 64 streams of messages of 4 MiB each", large(10, 4 * MIB), seconds=12),
    Attack("256 KiB, one user", "1 user, 64 streams of messages of 256 KiB", large(1, 256 * KIB)),
    Attack("256 KiB", "10 users, 64 streams of messages of 256 KiB each", large(10, 256 * KIB), short=4),
    Attack("slow messages", "10 users, 64 streams each that never complete a message", slow_messages, short=3),
    Attack("slow handshakes", "10 users, 64 streams each that never complete their handshake", slow_handshakes,
           seconds=12),
    Attack("unread", "10 users, 64 streams each that ask much and never read", unread),
    Attack("10,000 connections", "10 users, 1,000 connections each, held open", held, short=3),
    Attack("connecting", "10 users that connect without end", connecting),
    Attack("agent's place", "A folder with a file in it in the place of an agent's socket",
           **folder_in_place("agent_socket", 1), seconds=16, short=4),
    Attack("agent's place, full", "A folder with 200,000 files in the place of an agent's socket",
           **folder_in_place("agent_socket", 200_000), seconds=16),
    Attack("daemon's place, full", "A folder with 200,000 files in the place of the daemon's socket",
           **folder_in_place("daemon_socket", 200_000), seconds=16, outage=11_500.0, keeps_stream=True),
    Attack("events", f"{SENDERS} processes send an Apple event to a receiver that is busy", events,
           short=4, needs_users=False, extra=[("untold", 0)]),
    Attack("run now, one user", "1 user orders \"run now\" on 16 streams without end",
           **run_now(1), short=3, extra=[("performed a user", ALLOWED_A_MINUTE)]),
    Attack("run now", "10 users order \"run now\" on 16 streams each without end", **run_now(10),
           extra=[("performed a user", ALLOWED_A_MINUTE)]),
]
