# SPDX-License-Identifier: MIT
"""One round of the kills: something comes due, something is asked for, the tool changes the store, and one of them all is
killed at a random moment. Then everything has to come to its end."""

import contextlib
import datetime
import json
import os
import plistlib
import select
import signal
import subprocess
import time

import controlled

VICTIMS = ("daemon", "supervisor", "actor", "program", "tool", "agent")
OF_AN_ACTION = ("supervisor", "actor", "program")
APART = datetime.timedelta(seconds=5)
BY_HAND = datetime.timedelta(days=3000)  # a date that never comes: it is run by hand
BEFORE = datetime.timedelta(seconds=1)  # by then an action in the daemon is made ready and not due yet
LONGEST_DELAY = {"daemon": 0.12, "supervisor": 0.05, "actor": 0.05, "program": 0.05, "tool": 0.06, "agent": 0.12}  # seconds until the kill
NEVER_ASKED = "never asked for"
KEPT = 12  # schedules that are over and stay in the store

# Leaves its mark early or late in a life of some milliseconds, so that kills find it alive, before and after.
ACTION = 'sleep {before}; echo "$0" >> "$1"; exec sleep {after}'


class Schedule:
    """One that the tool was to add. It is performed once at most: at its date, or by hand."""

    def __init__(self, name, place, date):
        self.name = name
        self.place = place
        self.date = date  # None: by hand
        self.identifier = None  # not known to be in the store
        self.was_asked = False
        self.verdict = None  # the state in the record, when all was over


class Tool:
    """A process of the administration tool."""

    def __init__(self, hosts, what, schedule, *arguments):
        self.what = what
        self.schedule = schedule
        self.was_killed = False
        system = hosts.system
        self.process = subprocess.Popen(
            [system.path("usr/bin/dozely-admin"), "--root", system.root, *arguments, "--json"], cwd="/",
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
            env={**system.environment, **hosts.environment(hosts.daemon_page)})

    def end(self):
        """Its exit status and what it answered."""
        output, errors = self.process.communicate(timeout=controlled.LIMIT)
        acknowledged = self.process.returncode == 0
        return acknowledged, json.loads(output) if acknowledged else errors.strip()


class Rounds:
    """The rounds on one system, one after the other."""

    def __init__(self, hosts, random):
        self.hosts = hosts
        self.random = random
        self.number = 0
        self.schedules = {}  # by name; all that may be in the store
        self.expected = set()  # the names of those that are
        self.next_date = hosts.now
        self.kills = dict.fromkeys(VICTIMS, 0)
        self.states = {}
        self.verdicts = {}  # all there ever were: name to state
        self.broken = []

    def count(self):
        return sum(self.kills.values())

    def complain(self, sentence):
        self.broken.append(f"round {self.number}: {sentence}")

    # ---- what happens

    def begin(self):
        """The store has one schedule for the daemon to wait for."""
        acknowledged, answer = self.add(by_hand=True).end()
        if not acknowledged:
            raise controlled.Failure(f"nothing could be added: {answer}")
        self.look_into_store({}, [])

    def add(self, by_hand):
        schedule = Schedule(f"{self.number}-{len(self.verdicts) + len(self.schedules)}",
                            self.random.choice(("daemon", "session")), None if by_hand else self.next_date)
        self.schedules[schedule.name] = schedule
        before, after = (self.random.choice((0, 0.01, 0.04)) for _ in range(2))
        date = schedule.date or self.hosts.now + BY_HAND
        return Tool(self.hosts, "add", schedule, "add", schedule.name, "--in-" + schedule.place,
                    "--date", f"{date:%Y-%m-%d %H:%M:%S}", "--time-zone", "UTC", "--program", "/bin/sh",
                    *(f"--argument={part}" for part in ("-c", ACTION.format(before=before, after=after), schedule.name,
                                                       self.hosts.marks(schedule.place))))

    def start_tools(self):
        """What the tool does while things come due: adds what the next round has, removes what is over, runs by hand."""
        tools = [self.add(by_hand=self.random.random() < 0.3) for _ in range(self.random.choice((1, 1, 2)))]
        over = [self.schedules[name] for name in sorted(self.expected) if self.schedules[name].verdict]
        for schedule in self.random.sample(over, min(2, max(0, len(over) - KEPT))):
            tools.append(Tool(self.hosts, "remove", schedule, "remove", schedule.identifier))
        for name in sorted(self.expected):
            schedule = self.schedules[name]
            if schedule.date is None and not schedule.was_asked:
                schedule.was_asked = True
                tools.append(Tool(self.hosts, "run", schedule, "run", schedule.identifier))
                break
        return tools

    def processes(self, victim):
        """The processes of that kind, with the names of their schedules: None where nobody knows."""
        performers = self.hosts.performers()
        supervisors = {process for process, parent in performers.items() if parent not in performers}
        actors = {process for process, parent in performers.items() if parent in supervisors}
        # One that has lost its parents is its supervisor's, or nobody's.
        hosts = supervisors | actors | {self.hosts.agent.pid}
        programs = {process: name for process, (parent, name) in self.programs(performers).items()
                    if name or parent in hosts}
        if victim == "program":
            return list(programs.items())
        return [(process, None) for process in (supervisors if victim == "supervisor" else actors)]

    def programs(self, performers):
        """What may be the program of an action: its parent, and the name of its schedule, None where it does not say so."""
        found = {}
        for process in set(map(int, filter(str.isdigit, os.listdir("/proc")))) - performers.keys():
            with contextlib.suppress(OSError), open(f"/proc/{process}/cmdline", "rb") as line, \
                    open(f"/proc/{process}/stat", encoding="utf-8", errors="replace") as stat:
                arguments = line.read().decode(errors="replace").split("\0")
                parent = int(stat.read().rpartition(")")[2].split()[1])
                if arguments[:2] == ["/bin/sh", "-c"] and len(arguments) > 4 and arguments[4].startswith(self.hosts.system.root):
                    found[process] = parent, arguments[3]
                elif arguments[:1] == ["sleep"]:
                    found[process] = parent, None  # a shell that became its last program: any may be lost
        return found

    def kill_process(self, victim, tools, active):
        """Kills a process of an action. The names that may be lost by that; nothing when there was none."""
        def is_there():
            states = self.hosts.states_by_identifier()
            refused = {tool.schedule.name for tool in tools if tool.process.poll() not in (None, 0)}
            return self.processes(victim) or all(
                schedule.name in refused or states.get(schedule.identifier) in controlled.OVER_BY_ITSELF
                for schedule in active)
        there = controlled.until(f"a process to kill ({victim})", is_there)
        if there is True:
            return set()
        process, name = self.random.choice(there)
        with contextlib.suppress(ProcessLookupError):
            descriptor = os.pidfd_open(process)
            try:
                time.sleep(self.random.uniform(0, LONGEST_DELAY[victim]))
                signal.pidfd_send_signal(descriptor, signal.SIGKILL)
                select.select([descriptor], [], [], controlled.LIMIT)  # it has ended
                self.kills[victim] += 1
                return {name} if name else {schedule.name for schedule in active}
            finally:
                os.close(descriptor)
        return set()

    def kill(self, victim, tools, active):
        """Kills the victim at a random moment from now. The names that may be lost."""
        if victim in OF_AN_ACTION:
            return self.kill_process(victim, tools, active)
        time.sleep(self.random.uniform(0, LONGEST_DELAY[victim]))
        if victim == "tool":
            tool = self.random.choice(tools)
            if tool.process.poll() is None:
                controlled.Hosts.kill(tool.process)
                tool.was_killed = True
                self.kills["tool"] += 1
            return set()
        self.kill_host(victim)
        if self.random.random() < 0.2:  # and once more while it starts
            time.sleep(self.random.uniform(0, LONGEST_DELAY[victim]))
            self.kill_host(victim)
        return {schedule.name for schedule in active if victim == "agent" and schedule.place == "session"}

    def kill_host(self, victim):
        if victim == "daemon":
            controlled.Hosts.kill(self.hosts.daemon)
            self.hosts.start_daemon()
        else:
            controlled.Hosts.kill(self.hosts.agent)
            self.hosts.start_agent()
        self.kills[victim] += 1

    def go(self, victim):
        """One round."""
        self.number += 1
        date, self.next_date = self.next_date, self.next_date + APART
        tools = self.start_tools()
        active = [self.schedules[name] for name in sorted(self.expected)
                  if self.schedules[name].date == date or (self.schedules[name].was_asked
                                                           and not self.schedules[name].verdict)]
        may_be_lost = self.make_ready(date, victim, tools, active) if self.random.random() < 0.5 else None
        self.hosts.move_clock(date)
        if may_be_lost is None:
            may_be_lost = self.kill(victim, tools, active)
        asked = self.end_tools(tools)
        self.wait_for_outcomes(active, asked)
        for schedule in active:
            self.judge(schedule, victim, may_be_lost, asked)

    def make_ready(self, date, victim, tools, active):
        """The clock stands before the date, where performers are made ready. In half of all cases the victim is killed by then:
        the names that may be lost, of which none is due yet. Otherwise nothing."""
        due = [schedule for schedule in active if schedule.date == date and schedule.place == "daemon"]
        self.hosts.move_clock(date - BEFORE)
        if self.random.random() < 0.5:
            controlled.until("all performers", lambda: all(self.is_ready(schedule) for schedule in due))
        has_victim = victim in ("daemon", "agent") or (victim in ("supervisor", "actor") and due)
        if not has_victim or self.random.random() < 0.5:
            return None
        may_be_lost = self.kill(victim, tools, active)
        controlled.until("all performers without an action to end", self.has_each_its_actor)
        return may_be_lost - {schedule.name for schedule in active if schedule.date == date}

    def has_each_its_actor(self):
        performers = self.hosts.performers()
        return all(parent in performers or process in performers.values() for process, parent in performers.items())

    def is_ready(self, schedule):
        return self.hosts.is_ready(controlled.Occurrence(schedule.identifier, schedule.date, schedule.place))

    # ---- what came of it

    def end_tools(self, tools):
        """Waits for them, and compares what they said with the store. What was acknowledged to be run: the schedules."""
        answers = {}
        for tool in tools:
            acknowledged, answer = tool.end()
            answers[tool] = acknowledged
            # Without a daemon nothing can be run, and with one that is killed nobody knows.
            if not acknowledged and not tool.was_killed and tool.what != "run":
                self.complain(f"{tool.what} of {tool.schedule.name} failed: {answer}")
        self.look_into_store(answers, tools)
        return {tool.schedule.name for tool in tools if tool.what == "run" and answers[tool]}

    def look_into_store(self, answers, tools):
        """What was acknowledged is there or gone, what was killed is one or the other, and all else is as it was."""
        entries = plistlib.loads(self.hosts.store_bytes())["Schedule Array"]
        there = {entry["Name"]: entry["Identifier"] for entry in entries}
        if len(there) != len(entries):
            self.complain("the store has a schedule twice")
        wanted, unsure = set(self.expected), set()
        if not tools:
            wanted = set(self.schedules)
        for tool in tools:
            name = tool.schedule.name
            if tool.what in ("add", "remove") and tool.was_killed and not answers[tool]:
                unsure.add(name)
            elif tool.what == "add":
                wanted.add(name)
            elif tool.what == "remove":
                wanted.discard(name)
        for name in sorted(wanted - there.keys() - unsure):
            self.complain(f"schedule {name} is lost from the store")
        for name in sorted(there.keys() - wanted - unsure):
            self.complain(f"schedule {name} is in the store and should not be")
        self.expected = set(there)
        for name in [name for name in self.schedules if name not in there]:
            self.verdicts[name] = self.schedules.pop(name).verdict
        for name, identifier in there.items():
            if name in self.schedules:
                self.schedules[name].identifier = identifier

    def wait_for_outcomes(self, active, asked):
        def open_ones():
            self.states = self.hosts.states_by_identifier()
            return [schedule.name for schedule in active
                    if not self.is_settled(schedule, asked) and schedule.name in self.schedules]
        try:
            controlled.until("all outcomes", lambda: not open_ones())
        except controlled.Failure:
            raise controlled.Failure(f"nothing becomes of {', '.join(open_ones())}") from None

    def is_settled(self, schedule, asked):
        state = self.states.get(schedule.identifier)
        was_never_taken = schedule.date is None and schedule.name not in asked and state is None
        return was_never_taken or state in controlled.OVER_BY_ITSELF

    def judge(self, schedule, victim, may_be_lost, asked):
        performed = self.hosts.performed()[schedule.name]
        state = self.hosts.states_by_identifier().get(schedule.identifier)  # after the mark: begun is on disk before
        if state is None and schedule.date is None and schedule.name not in asked:
            schedule.verdict = NEVER_ASKED
            if performed:
                self.complain(f"{schedule.name} was performed, and there is no record of it")
            return
        is_excused = schedule.name in may_be_lost or (victim == "daemon" and state == "interrupted")
        if state == "done" and not is_excused:
            with contextlib.suppress(controlled.Failure):
                controlled.until("the mark", lambda: self.hosts.performed()[schedule.name])
        wrong = controlled.judge(state, self.hosts.performed()[schedule.name], is_excused, schedule.place == "daemon",
                                 victim != "supervisor")
        if wrong:
            self.complain(f"{schedule.name} ({schedule.place}, {victim} killed): {wrong}")
        schedule.verdict = state

    def end(self):
        """At the end: one change that nobody kills, and nothing is left of those that were."""
        acknowledged, answer = self.add(by_hand=True).end()
        if not acknowledged:
            self.complain(f"nothing can be added any more: {answer}")
        self.hosts.wait_for_agent()  # one that begins knows nothing of SIGTERM yet
        self.broken += self.hosts.stop() + self.hosts.leftovers()
        self.verdicts |= {name: schedule.verdict for name, schedule in self.schedules.items()}
        for name, count in self.hosts.performed().items():
            state = self.verdicts[name]  # a tool that was killed may have been obeyed a moment later
            if count > 1 or state in ("not performed", "skipped"):
                self.complain(f"{name}: it was performed {count} times, and the record says '{state}'")
