# SPDX-License-Identifier: MIT
"""What others see of the hosts while they are attacked, and what the hosts take."""

import contextlib
import json
import multiprocessing
import os
import signal
import socket
import time

import wire

PERIOD = 0.01  # seconds between two pings
PATIENCE = 10.0  # seconds for one ping
KEEN = -10  # the niceness of who measures, where it is allowed: the wait is to be the hosts', not our own

forking = multiprocessing.get_context("fork")


def become(user):
    """That user and no other, where this process may choose."""
    if os.geteuid() == user:
        return
    os.setgroups([])
    os.setresgid(user, user, user)
    os.setresuid(user, user, user)


class Child:
    """A function that runs in a process of its own as some user, and whose result comes back."""

    def __init__(self, user, function, *arguments, keen=False):
        self.name = getattr(function, "__name__", "a child")
        self.ours, theirs = forking.Pipe()
        self.process = forking.Process(target=self.main, args=(theirs, user, function, arguments, keen), daemon=True)
        self.process.start()
        theirs.close()

    def main(self, pipe, user, function, arguments, keen):
        signal.signal(signal.SIGTERM, signal.SIG_DFL)
        self.ours.close()
        if keen:
            with contextlib.suppress(OSError):
                os.setpriority(os.PRIO_PROCESS, 0, KEEN)
        become(user)
        pipe.send(function(pipe, *arguments))

    def result(self, limit):
        """Has the function end, as far as it listens, and returns what it returns."""
        with contextlib.suppress(OSError):
            self.ours.send("end")
        if not self.ours.poll(limit):
            self.process.kill()
            raise TimeoutError(f"{self.name} did not end")
        try:
            result = self.ours.recv()
        except EOFError:
            raise OSError(f"{self.name} failed") from None
        self.process.join(limit)
        return result

    def kill(self):
        self.process.kill()
        self.process.join()


def ping_until_told(pipe, once):
    """Calls `once` again and again. The longest of all, how many failed and why, and the longest time without success."""
    figures = {"count": 0, "failed": 0, "worst_ms": 0.0, "outage_ms": 0.0, "why": ""}
    last_success = time.monotonic()
    while not pipe.poll(PERIOD):
        begin = time.monotonic()
        try:
            once()
        except (OSError, wire.Refused) as failure:
            figures["failed"] += 1
            figures["why"] = figures["why"] or str(failure)
        else:
            figures["outage_ms"] = max(figures["outage_ms"], (time.monotonic() - last_success) * 1000)
            last_success = time.monotonic()
        figures["count"] += 1
        figures["worst_ms"] = max(figures["worst_ms"], (time.monotonic() - begin) * 1000)
    figures["outage_ms"] = max(figures["outage_ms"], (time.monotonic() - last_success) * 1000)
    return figures


class Kept:
    """Pings on one stream for as long as it stays open, and on a new one then."""

    def __init__(self, path, user):
        self.path, self.user, self.stream = path, user, None

    def __call__(self):
        try:
            if self.stream:
                self.stream.answer(wire.call("/root", "pong"))
                return
        except (OSError, wire.Refused):
            self.stream.close()
            self.stream = None
        # A stream that was closed is no failure yet: whoever keeps one opens it anew.
        self.stream = wire.Stream(self.path, self.user, PATIENCE)
        self.stream.answer(wire.call("/root", "pong"))


def fresh(path, user):
    return lambda: wire.ping(path, user, PATIENCE)


class Machine:
    """What the machine itself takes for the same: a process that echoes, attacked by nobody."""

    def __init__(self, path):
        self.path = path
        self.listening = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.listening.bind(path)
        self.listening.listen(16)
        self.server = Child(os.geteuid(), self.serve)

    def serve(self, _pipe):
        while True:
            with self.listening.accept()[0] as stream:
                stream.sendall(stream.recv(256))

    def once(self):
        with socket.socket(socket.AF_UNIX, socket.SOCK_STREAM) as stream:
            stream.settimeout(PATIENCE)
            stream.connect(self.path)
            stream.sendall(b"ping")
            stream.recv(256)

    def close(self):
        self.server.kill()
        self.listening.close()
        os.unlink(self.path)


class Pingers:
    """Three who ping all the time: root, a user who attacks nobody, and one who asks the machine itself."""

    def __init__(self, socket_path, users, machine, is_kept):
        way = Kept if is_kept else fresh
        self.children = {name: Child(user, ping_until_told, way(socket_path, user), keen=True)
                         for name, user in users.items()}
        self.children["machine"] = Child(os.geteuid(), ping_until_told, machine.once, keen=True)

    def results(self):
        return {name: child.result(3 * PATIENCE + 5) for name, child in self.children.items()}

    def kill(self):
        for child in self.children.values():
            child.kill()


# An agent's first look at its own socket, ten seconds after its start, makes the port that it keeps for replies.
OWN_DESCRIPTORS = {"Dozely Agent": 1}


class Host:
    """A process of the system, as /proc shows it."""

    def __init__(self, name, pid):
        self.name, self.pid = name, pid

    def memory(self, what):
        """MiB: "VmRSS", resident now, or "VmHWM", the most since the last forgetting."""
        with open(f"/proc/{self.pid}/status", encoding="utf-8") as status:
            for line in status:
                if line.startswith(what + ":"):
                    return int(line.split()[1]) / 1024
        return 0.0

    def forget_peak(self):
        with open(f"/proc/{self.pid}/clear_refs", "w", encoding="ascii") as file:
            file.write("5")

    def descriptors(self):
        return len(os.listdir(f"/proc/{self.pid}/fd"))

    def processor(self):
        """Seconds that the main thread had a processor so far, and that it could have run but others had them."""
        with open(f"/proc/{self.pid}/schedstat", encoding="ascii") as file:
            return [int(nanoseconds) / 1e9 for nanoseconds in file.read().split()[:2]]


def settle(hosts, before, memory_room, memory_limit, descriptor_limit):
    """Waits, no longer than the limits (seconds), until memory and descriptors are as before. What they are then."""
    begin = time.monotonic()

    def passed():
        return time.monotonic() - begin

    def more_descriptors():
        return max(host.descriptors() - before[host.name][1] - OWN_DESCRIPTORS.get(host.name, 0) for host in hosts)

    def more_memory():
        return max(host.memory("VmRSS") - before[host.name][0] for host in hosts)

    while (descriptors := max(0, more_descriptors())) > 0 and passed() < descriptor_limit:
        time.sleep(0.05)
    descriptor_seconds = passed()
    while (memory := more_memory()) > memory_room and passed() < memory_limit:
        time.sleep(0.05)
    return {"descriptors": descriptors, "descriptor_seconds": descriptor_seconds,
            "memory_after_mib": memory, "memory_seconds": passed()}


def lateness(path):
    """The lateness, in ms, of each action that wrote it to that file."""
    try:
        with open(path, encoding="ascii") as file:
            return [int(line) for line in file]
    except FileNotFoundError:
        return []


def write_json(path, value):
    with open(path, "w", encoding="utf-8") as file:
        json.dump(value, file, indent=1)
