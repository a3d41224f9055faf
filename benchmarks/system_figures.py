# SPDX-License-Identifier: MIT
"""Figures of a whole system: how long the daemon takes to start, how late actions begin, what it needs while idle."""

import contextlib
import datetime
import os
import select
import shutil
import statistics
import subprocess
import time

from Xlib import X, display, error

import scratch_system
from scratch_system import schedule, utc_now

STARTS = 20  # of the daemon
OCCURRENCES = 20  # one a second
CROWD = 1000  # actions due in one second
CROWD_LIMIT = 120  # seconds for all of them; only bounds a failure
DEEDS = ("hang", "crash", "fork", "memory", "output")  # of benchmarks/plugin/Neighbour.cpp
IDLE = {1000: 12, 10000: 20}  # schedules of an idle daemon, and the MiB that it is to need at most
WINDOW = scratch_system.APPLICATION + "/Contents/Linux/Dozely"
WINDOW_SCHEDULES = 1000
WINDOW_STARTS = 11  # of which the first does not count
WINDOW_LIMIT = 30  # seconds to appear; only bounds a failure
LIST_SHADES = 20  # more than the empty list has
ALERTS = 4
ALERT_LEAD = 3  # seconds before the action
AGENT_AT_REST = 2.5  # seconds after which an agent has given back what it does not need
AT_REST = 65  # seconds after which a daemon is idle: in its first minute it looks at a clock that nothing keeps right


def start(system):
    """From starting the daemon to its socket answering."""
    socket = system.path(scratch_system.SOCKETS + "/dozelyd")
    taken = []
    for _ in range(STARTS):
        if os.path.exists(socket):
            os.unlink(socket)
        begin = time.monotonic()
        process = system.start_daemon()
        while not os.path.exists(socket):
            if process.poll() is not None:
                raise scratch_system.Failure(f"dozelyd ended with status {process.returncode}")
            time.sleep(0.0005)
        taken.append((time.monotonic() - begin) * 1000)
        system.stop_last()
    return {"what": "start of the daemon to published, median", "value": statistics.median(taken), "unit": "ms",
            "reach": 150, "detail": f"{STARTS} starts, longest {max(taken):.0f} ms"}


def marks(path):
    """What stopwatches wrote so far: milliseconds from the due time to the start of the action."""
    if not os.path.exists(path):
        return []
    with open(path, encoding="ascii") as file:
        return [float(line) for line in file]


def stopwatches(place, marks_file, dates):
    """Schedules whose actions write down how late they begin."""
    parameters = {"File": marks_file, "Acts In User Agent": place == "session"}
    return [schedule(f"stopwatch-{i}", date, "Stopwatch.plugin", parameters) for i, date in enumerate(dates)]


def soon(seconds):
    return utc_now().replace(microsecond=0) + datetime.timedelta(seconds=seconds)


def series(system, name, place, others=lambda date, number: []):
    """One occurrence a second, each beside what `others` gives; how late the action began."""
    path = system.path(f"marks/{place}/{name}")
    first = soon(4)
    dates = [first + datetime.timedelta(seconds=i) for i in range(OCCURRENCES)]
    beside = [other for number, date in enumerate(dates) for other in others(date, number)]
    system.store(beside + stopwatches(place, path, dates))
    system.wait_until(f"the last occurrence of \"{name}\"", OCCURRENCES + 20,
                      lambda: len(marks(path)) == OCCURRENCES)
    return marks(path)


def lateness(system):
    """From the due time to the start of the action, by place."""
    for place in ("daemon", "session"):
        late = series(system, "lateness", place)
        yield {"what": f"due time to start of the action in the {place}, median", "value": statistics.median(late),
               "unit": "ms", "reach": 5, "detail": f"{OCCURRENCES} occurrences, latest {max(late):.0f} ms"}


def neighbours(system):
    """What an action that misbehaves does to the lateness of another that is due at the same time."""
    alone = series(system, "alone", "daemon")
    beside = {}
    for deed in DEEDS:
        beside[deed] = series(system, deed, "daemon", lambda date, number, deed=deed: [
            schedule(f"neighbour-{number}", date, "Neighbour.plugin", {"Deed": deed})])
    for what, of in (("median", statistics.median), ("latest", max)):
        worst = max(of(late) - of(alone) for late in beside.values())
        each = ", ".join(f"{deed} {of(late):.0f}" for deed, late in beside.items())
        yield {"what": f"an action beside one that misbehaves, later than alone by: {what} of {OCCURRENCES}",
               "value": worst, "unit": "ms", "reach": 20, "detail": f"alone {of(alone):.0f} ms, beside {each} ms"}


def crowd(system):
    """Many actions of the daemon, all due in the same second."""
    path = system.path("marks/daemon/crowd")
    system.store(stopwatches("daemon", path, [soon(10)] * CROWD))
    deadline = time.monotonic() + CROWD_LIMIT
    while len(marks(path)) < CROWD and time.monotonic() < deadline:
        time.sleep(0.2)
    late = marks(path)
    what = f"{CROWD} actions due in one second"
    yield {"what": f"{what}: not performed", "value": CROWD - len(late), "unit": "", "reach": 0,
           "detail": f"of those that were, the median began after {statistics.median(late or [0]):.0f} ms"}
    yield {"what": f"{what}: the last began after", "value": max(late, default=0) / 1000, "unit": "s", "reach": 5,
           "detail": ""}


def switches(pid):
    """Voluntary context switches so far, by thread."""
    counts = {}
    for task in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{task}/status") as file:
            counts[task] = sum(int(line.split()[1]) for line in file if line.startswith("voluntary"))
    return counts


def switches_since(before, pid):
    """Those of all threads that are there; one that ended since is not counted, and one that began is from its start."""
    return sum(count - before.get(task, 0) for task, count in switches(pid).items())


def shared_libraries(pid):
    with open(f"/proc/{pid}/maps") as file:
        return len({line.split()[-1] for line in file if ".so" in line.rpartition("/")[2]})


def resident(pid):
    """MiB that are resident, and how many of them are the process's own."""
    with open(f"/proc/{pid}/status") as file:
        fields = dict(line.split(":", 1) for line in file)
    return int(fields["VmRSS"].split()[0]) / 1024, int(fields["RssAnon"].split()[0]) / 1024


def idle(build, seconds):
    """Daemons with many schedules that are not due soon, each in a system of its own, all watched at the same time."""
    with contextlib.ExitStack() as stack:
        pids = {}
        for count in IDLE:
            system = stack.enter_context(scratch_system.scratch(build))
            system.lay_out()
            system.start_bus()
            system.start_hosts()
            tomorrow = utc_now() + datetime.timedelta(days=1)
            system.store([schedule(i, tomorrow + datetime.timedelta(minutes=i)) for i in range(count)])
            pids[count] = system.process("dozelyd").pid
        time.sleep(AT_REST)
        before = {count: switches(pid) for count, pid in pids.items()}
        time.sleep(seconds)
        for count, pid in pids.items():
            what = f"idle daemon with {count} schedules over {seconds} s"
            memory, own = resident(pid)
            yield {"what": f"{what}: resident memory", "value": memory, "unit": "MiB", "reach": IDLE[count],
                   "detail": f"of which {own:.1f} MiB its own, the rest pages of shared libraries"}
            yield {"what": f"{what}: voluntary context switches", "value": switches_since(before[count], pid) / seconds,
                   "unit": "/s", "reach": 0.15, "detail": ""}
        yield {"what": "shared libraries in the daemon", "value": shared_libraries(pid), "unit": "", "reach": 30,
               "detail": ""}


def start_display(system):
    """A display without a screen for the session; nothing where there is no such server."""
    reading, writing = os.pipe()
    with open(reading, encoding="ascii") as numbers:
        system.start("the virtual display",
                     ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"],
                     pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writing)
        system.session_environment["DISPLAY"] = ":" + numbers.readline().strip()


def alert(build):
    """The agent's own window, seen from another process: from the time at which an action is to be announced until
    the window has faded in, which takes 200 ms by itself; and what it adds to the agent."""
    with scratch_system.scratch(build) as system:
        system.lay_out()
        system.start_bus()
        start_display(system)
        system.start_hosts()
        # The user need not be able to read the build tree.
        shutil.copy(build / "benchmarks" / "window_watch", system.path("usr/lib/window_watch"))
        watch = system.start("the watch", [system.path("usr/lib/window_watch"), "Command"],
                             as_user=True, stdout=subprocess.PIPE)
        os.read(watch.stdout.fileno(), 100)  # it watches
        agent = system.process("Dozely Agent").pid
        before, own = resident(agent)  # it has just started, and given nothing back yet
        time.sleep(AGENT_AT_REST)
        at_rest, _ = resident(agent)
        parameters = {"Program": "/bin/true", "Alert": 1, "Delay before alert": ALERT_LEAD}
        first = soon(3)
        dates = [first + datetime.timedelta(seconds=(ALERT_LEAD + 1) * i) for i in range(ALERTS)]
        system.store([schedule(i, date + datetime.timedelta(seconds=ALERT_LEAD), parameters=parameters)
                      for i, date in enumerate(dates)])
        taken = []
        deadline = time.monotonic() + ALERTS * (ALERT_LEAD + 1) + 6
        while len(taken) < ALERTS and select.select([watch.stdout], [], [], max(0, deadline - time.monotonic()))[0]:
            seen = float(os.read(watch.stdout.fileno(), 100).split()[0])
            taken.append(min(late for late in (seen - date.replace(tzinfo=datetime.timezone.utc).timestamp() * 1000
                                               for date in dates) if late > 0))
        if not taken:
            raise scratch_system.Failure("no alert was seen")
        after, own_after = resident(agent)
        yield {"what": "time of an alert to its window seen in full, longest", "value": max(taken), "unit": "ms",
               "reach": 250, "detail": f"{len(taken)} of {ALERTS} alerts seen, median {statistics.median(taken):.0f} "
                                       "ms, of which 200 ms fade in"}
        yield {"what": "the agent with an alert: resident memory beyond that of one just started",
               "value": after - before, "unit": "MiB", "reach": 8,
               "detail": f"{before:.1f} MiB then, {at_rest:.1f} at rest, {after:.1f} with an alert; its own memory "
                         f"grows by {own_after - own:.1f} MiB"}


def look(window):
    """The picture of a part of the window's list of schedules, below its first rows."""
    return bytes(window.get_image(20, 200, 280, 300, X.ZPixmap, 0xFFFFFFFF).data)


def shown_after(begin, root, process):
    """Milliseconds from `begin` to the window's first frame, and to the one that has the list of schedules."""
    mapped = None
    while True:
        if process.poll() is not None or time.monotonic() - begin > WINDOW_LIMIT:
            raise scratch_system.Failure("the window did not appear")
        for window in root.query_tree().children:
            try:
                if window.get_attributes().map_state != X.IsViewable or window.get_geometry().width < 600:
                    continue
                mapped = mapped or (time.monotonic() - begin) * 1000
                if len(set(look(window))) > LIST_SHADES:
                    return mapped, (time.monotonic() - begin) * 1000
            except error.XError:
                pass  # it went, or is not as large yet
        time.sleep(0.001)


def run_time(pid):
    """Milliseconds of processor time of all its threads so far."""
    total = 0
    for task in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{task}/schedstat") as file:
            total += int(file.read().split()[0])
    return total / 1e6


def settled(pid):
    """Waits until a program has nothing more to do."""
    used = None
    while (now := processor_time(pid)) != used:
        used = now
        time.sleep(2)


def processor_time(pid):
    """Ticks of it and of the processes that it waited for."""
    with open(f"/proc/{pid}/stat") as file:
        return [int(field) for field in file.read().rpartition(")")[2].split()[11:15]]


def application(build, seconds):
    """The window of a person with 1,000 schedules of his own, on a display without a window manager."""
    with scratch_system.scratch(build) as system:
        system.lay_out(["PowerOff.plugin", "Sleep.plugin", "Script.plugin"])
        home = system.path(system.user.pw_dir.lstrip("/"))
        os.makedirs(home, exist_ok=True)
        os.chown(home, system.user.pw_uid, system.user.pw_gid)
        system.start_bus()
        start_display(system)
        system.session_environment["DBUS_SESSION_BUS_ADDRESS"] = system.bus  # else the toolkit looks for one for 3 s
        tomorrow = utc_now() + datetime.timedelta(days=1)
        system.store([schedule(i, tomorrow + datetime.timedelta(minutes=i), owner=system.user.pw_uid,
                               parameters={"Program": "/usr/bin/true", "Acts In User Agent": 1})
                      for i in range(WINDOW_SCHEDULES)])
        system.start_hosts()
        root = display.Display(system.session_environment["DISPLAY"]).screen().root
        first, whole, work = [], [], []
        for number in range(WINDOW_STARTS):
            begin = time.monotonic()
            window = system.start("Dozely", [system.path(WINDOW), "--root", system.root], as_user=True)
            times = shown_after(begin, root, window)
            if number > 0:  # the first one has to be read from the disk
                first.append(times[0])
                whole.append(times[1])
                work.append(run_time(window.pid))
            if number < WINDOW_STARTS - 1:
                system.stop_last()
        yield {"what": f"start of the window with {WINDOW_SCHEDULES} schedules to its list shown, median",
               "value": statistics.median(whole), "unit": "ms", "reach": 150,
               "detail": f"{len(whole)} starts, longest {max(whole):.0f} ms; mapped after {statistics.median(first):.0f} ms, "
                         f"processor time {statistics.median(work):.0f} ms"}
        shutil.copy(build / "benchmarks" / "bare_window", system.path("usr/lib/bare_window"))
        bare = system.start("a bare window", [system.path("usr/lib/bare_window")], as_user=True)
        for process in (bare, window):
            settled(process.pid)
        memory, own = resident(window.pid)
        bare_memory, bare_own = resident(bare.pid)
        yield {"what": "the window: resident memory beyond a bare one of the toolkit", "value": memory - bare_memory,
               "unit": "MiB", "reach": 60, "detail": f"{memory:.1f} against {bare_memory:.1f} MiB, of its own "
                                                     f"{own:.1f} against {bare_own:.1f}"}
        before, used = switches(window.pid), processor_time(window.pid)
        time.sleep(seconds)
        yield {"what": f"the idle window over {seconds} s: voluntary context switches",
               "value": switches_since(before, window.pid) / seconds, "unit": "/s", "reach": 0.1,
               "detail": f"processor time {sum(processor_time(window.pid)) - sum(used)} ticks"}


def figures(build, idle_seconds):
    with scratch_system.scratch(build) as system:
        system.lay_out(["Stopwatch.plugin", "Neighbour.plugin"])
        system.start_bus()
        yield start(system)
        system.start_hosts()
        yield from lateness(system)
        yield from crowd(system)
        yield from neighbours(system)
    yield from alert(build)
    yield from application(build, idle_seconds)
    yield from idle(build, idle_seconds)
