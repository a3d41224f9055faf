#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The daemon on the system bus: a real daemon and a real bus with the installed policy, three users, a stand-in for
polkit.

    bus_test.py SCRIPTS BUILD SOURCES CASE

Exit status: 0 when the case holds.
"""
import contextlib
import json
import os
import re
import subprocess
import sys
import time

SCRIPTS, BUILD, SOURCES, CASE = sys.argv[1:5]
HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, SCRIPTS)
from bus_system import ALICE, ALL, BOB, ERROR, OWN, WAKE, BusSystem, become_root  # noqa: E402 pylint: disable=wrong-import-position
from scratch_system import START_LIMIT, scratch  # noqa: E402 pylint: disable=wrong-import-position

become_root()
if CASE == "real_polkit" and "DOZELY_OWN_MOUNTS" not in os.environ:  # its folders are at fixed places
    os.environ["DOZELY_OWN_MOUNTS"] = "1"
    os.execvp("unshare", ["unshare", "--mount", "--propagation", "private", sys.executable, *sys.argv])

COMMAND = "/Library/Application Support/Dozely/PlugIns/Command.plugin"
FAR = "2090-01-01T12:00:00Z"


def wish(name="Water", **more):
    return {"name": name, "bundlePath": COMMAND, "date": FAR, "actsIn": "session",
            "parameters": {"Program": "/usr/bin/touch"}, **more}


def same(found, expected):
    assert found == expected, f"{found!r} instead of {expected!r}"


def each_method(system):
    """As a user and as root, by python3-dbus."""
    system.begin()
    for action in (OWN, WAKE):
        system.answer(ALICE, action, "yes")
    same(system.ask(ALICE, "List"), [])
    identifier = system.ask(ALICE, "Add", wish(repeats={"rule": "FREQ=DAILY;BYHOUR=7;BYMINUTE=0;BYSECOND=0"}, date="",
                                               timeZone="Europe/Paris", missed="run once", missedLimit=3600))
    assert re.fullmatch(r"[0-9a-f-]{36}", identifier), identifier
    got = system.ask(ALICE, "Get", identifier)
    same([got[key] for key in ("identifier", "name", "isEnabled", "owner", "actsIn", "timeZone", "missed", "missedLimit",
                               "mayChange", "staysWhenOver")],
         [identifier, "Water", True, ALICE, "session", "Europe/Paris", "run once", 3600, True, False])
    same(got["repeats"]["inWords"], "every day at 07:00")
    same(got["parameters"], {"Program": "/usr/bin/touch", "Acts In User Agent": 1})
    same(got["date"], got["next"])
    same(system.ask(ALICE, "List"), [got])
    same(system.ask(ALICE, "Change", identifier, {"name": "Plants", "revision": got["revision"]}), None)
    same(system.error(ALICE, "Change", identifier, {"name": "Others", "revision": got["revision"]}), "Changed")
    changed = system.ask(ALICE, "Get", identifier)
    same({**changed, "revision": ""}, {**got, "name": "Plants", "revision": ""})
    coming = system.ask(ALICE, "Next", identifier, "", "", 3)
    same(len(coming), 3)
    same(coming[0], {"identifier": identifier, "name": "Plants", "date": got["next"], "moment": got["next"],
                     "isPostponed": False, "wakes": False, "powersOn": False})
    same(system.ask(ALICE, "Next", "", "", coming[1]["moment"], 10), coming[:2])
    same(system.ask(ALICE, "Skip", identifier, ""), coming[0]["date"])
    same(system.ask(ALICE, "Skip", identifier, coming[2]["date"]), coming[2]["date"])
    moment = system.ask(ALICE, "Postpone", identifier, coming[1]["date"], 60)
    later = system.ask(ALICE, "Next", identifier, "", "", 2)
    same([later[0]["date"], later[0]["moment"], later[0]["isPostponed"]], [coming[1]["date"], moment, True])
    assert later[1]["date"] > coming[2]["date"], later
    same(system.ask(ALICE, "SetEnabled", identifier, False), None)
    same(system.ask(ALICE, "Next", "", "", "", 2), [])
    same(system.ask(ALICE, "SetEnabled", identifier, True), None)
    same({each["state"] for each in system.ask(ALICE, "History", identifier, 10)}, {"removed"})
    same(system.ask(ALICE, "Change", identifier, {"repeats": {}, "date": FAR}), None)
    once = system.ask(ALICE, "Get", identifier)
    same(["repeats" in once, once["date"]], [False, FAR])
    same(system.ask(ALICE, "Remove", identifier), None)
    for method, more in (("Get", []), ("Remove", []), ("SetEnabled", [True]), ("RunNow", []), ("Skip", [""]),
                         ("Postpone", ["", 60]), ("Change", [{"name": "A"}]), ("Next", ["", "", 1])):
        same(system.error(ALICE, method, identifier, *more), "NoSuchSchedule")
    lines = [line for line in system.log_text().splitlines() if identifier in line]
    assert any(f'Schedule "Water" ({identifier}) was added by user {ALICE}.' in line for line in lines), lines
    # Root is asked for nothing, and what is root's acts as root.
    system.polkit("GetQuestions")
    mark = system.path("marks/daemon/now")
    ours = system.ask(0, "Add", wish(actsIn="daemon", parameters={"Program": "/usr/bin/touch", "Arguments": [mark]}))
    same(system.ask(0, "RunNow", ours), None)
    system.wait_until("the action", 60, lambda: os.path.exists(mark))
    system.wait_until("its outcome", 60, lambda: [each["state"] for each in system.ask(0, "History", ours, 10)] == ["done"])
    same(system.polkit("GetQuestions"), [])


def gdbus_and_busctl(system):
    """The tools of a terminal understand what it can do and call it."""
    system.begin()
    system.answer(ALICE, OWN, "yes")
    target = ["com.dozely", "/com/dozely/Scheduler1"]
    gdbus = ["gdbus", "call", "--address", system.bus, "--dest", target[0], "--object-path", target[1], "--method"]
    busctl = ["busctl", "--address=" + system.bus, "call", *target, "com.dozely.Scheduler1"]

    def run(*arguments):
        status, output = system.as_user(ALICE, list(arguments))
        assert status == 0, (arguments, output)
        return output
    shown = run("gdbus", "introspect", "--address", system.bus, "--dest", target[0], "--object-path", target[1])
    for member in ("List(out aa{sv} schedules)", "Postpone(in  s identifier,", "OccurrenceEnded(s identifier,",
                   "readonly a{sv} WakeClock", "PropertiesChanged("):
        assert member in shown, (member, shown)
    assert "/com/dozely/Scheduler1" in run("busctl", "--address=" + system.bus, "tree", "com.dozely")
    method = "com.dozely.Scheduler1."
    dictionary = (f"{{'name': <'Water'>, 'bundlePath': <'{COMMAND}'>, 'date': <'{FAR}'>, 'actsIn': <'session'>, "
                  "'parameters': <{'Program': <'/usr/bin/touch'>}>}")
    first = re.search(r"'([^']*)'", run(*gdbus, method + "Add", dictionary)).group(1)
    second = run(*busctl, "Add", "a{sv}", "5", "name", "s", "Two", "bundlePath", "s", COMMAND, "date", "s", FAR, "actsIn",
                 "s", "session", "parameters", "a{sv}", "1", "Program", "s", "/usr/bin/touch")
    second = re.search(r'"([^"]*)"', second).group(1)
    assert "'Water'" in run(*gdbus, method + "List") and '"Two"' in run(*busctl, "List")
    assert "'Water'" in run(*gdbus, method + "Get", first) and '"Two"' in run(*busctl, "Get", "s", second)
    run(*gdbus, method + "Change", first, "{'name': <'One'>}")
    run(*busctl, "Change", "sa{sv}", second, "1", "name", "s", "Zwei")
    run(*gdbus, method + "SetEnabled", first, "false")
    run(*busctl, "SetEnabled", "sb", first, "true")
    assert "'One'" in run(*gdbus, method + "Next", first, "", "", "5")
    assert '"Zwei"' in run(*busctl, "Next", "sssu", second, "", "", "5")
    assert "2090-01-01T12:01:00Z" in run(*gdbus, method + "Postpone", first, "", "60")
    assert "2090-01-01T12:02:00Z" in run(*busctl, "Postpone", "ssu", second, "", "120")
    assert "2090-01-01T12:00:00Z" in run(*gdbus, method + "Skip", first, "")
    assert "2090-01-01T12:00:00Z" in run(*busctl, "Skip", "ss", second, "")
    assert "'removed'" in run(*gdbus, method + "History", first, "5")
    assert '"removed"' in run(*busctl, "History", "su", second, "5")
    run(*gdbus, method + "RunNow", first)
    run(*busctl, "RunNow", "s", second)
    properties = run("busctl", "--address=" + system.bus, "get-property", *target, "com.dozely.Scheduler1", "Version",
                     "AgentOfConsoleUser", "WakeClock", "NextOccurrence")
    assert re.match(r's "\d+\.\d+\.\d+"\na\{sv\} 3 .*"isAlive" b false.*\na\{sv\} \d', properties), properties
    assert "'NextOccurrence': <@a{sv} {}>" in run(*gdbus, "org.freedesktop.DBus.Properties.GetAll", "com.dozely.Scheduler1")
    run(*gdbus, method + "Remove", first)
    run(*busctl, "Remove", "s", second)
    # Nobody else may be the daemon, or call what is not its interface.
    status, output = system.as_user(ALICE, ["gdbus", "call", "--address", system.bus, "--dest", "org.freedesktop.DBus",
                                            "--object-path", "/org/freedesktop/DBus", "--method",
                                            "org.freedesktop.DBus.RequestName", "com.dozely", "0"])
    assert status != 0 and "AccessDenied" in output, output


def rights(system):
    """Whose a schedule is, and where it acts, decides what polkit is asked for; nothing that a caller says does."""
    system.begin()
    for user in (ALICE, BOB):
        system.answer(user, OWN, "yes")
    own = system.ask(ALICE, "Add", wish())
    same(system.polkit("GetQuestions"), [f"{ALICE} {OWN} 1"])
    same(system.error(ALICE, "Add", wish(parameters={"Program": "/usr/bin/touch", "Needs Wake Up": 1})), "NotAllowed")
    same(system.polkit("GetQuestions"), [f"{ALICE} {OWN} 1", f"{ALICE} {WAKE} 1"])
    folder = system.path("home/mallory/Library/Application Support/Dozely/PlugIns")
    nowhere = wish(parameters={"Program": "/usr/bin/touch", "Acts In User Agent": 0})
    del nowhere["actsIn"]
    for forged in (wish(owner=0), wish(owner=BOB), wish(actsIn="daemon"), nowhere, wish(actsIn="", owner=BOB),
                   wish(owner=""), wish(bundlePath="/tmp/Other.plugin"), wish(bundlePath=folder + "/Other.plugin")):
        same(system.error(ALICE, "Add", forged), "NotAllowed")
        same(system.polkit("GetQuestions"), [f"{ALICE} {ALL} 1"])
    for method, more in (("Remove", []), ("SetEnabled", [False]), ("RunNow", []), ("Skip", [""]), ("Postpone", ["", 60]),
                         ("Change", [{"name": "Mine"}]), ("History", [5])):
        same(system.error(BOB, method, own, *more), "NotAllowed")
        same(system.polkit("GetQuestions"), [f"{BOB} {ALL} 1"])
    for change in ({"owner": BOB}, {"owner": 0}, {"owner": ""}, {"actsIn": "daemon"}, {"bundlePath": "/tmp/Other.plugin"}):
        same(system.error(ALICE, "Change", own, change), "NotAllowed")
        same(system.polkit("GetQuestions"), [f"{ALICE} {ALL} 1"])
    same([each["owner"] for each in system.ask(BOB, "List")], [ALICE])
    same([each["mayChange"] for user in (ALICE, BOB, 0) for each in system.ask(user, "List")], [True, False, True])
    same(system.ask(BOB, "History", "", 5), [])
    # What the bundle puts into the session today stays there, whatever it says tomorrow.
    same(system.ask(ALICE, "Get", system.ask(ALICE, "Add", wish("By bundle", actsIn="")))["parameters"]["Acts In User Agent"], 1)
    # An administrator, who has typed a password, may.
    system.answer(BOB, ALL, "ask")
    system.polkit("GetQuestions")
    process = system.start_as(BOB, ["/usr/bin/python3", system.path("usr/lib/caller.py"), "Add",
                                    json.dumps(wish("Backup", actsIn="daemon"))])
    system.wait_until("the question", 60, lambda: system.polkit("GetOpen"))
    system.polkit("Decide", "true")
    backup = json.loads(process.communicate(timeout=60)[0])
    got = system.ask(BOB, "Get", backup)
    same(["owner" in got, got["actsIn"], got["mayChange"]], [False, "daemon", False])
    # So he may give it to somebody, and take it away again.
    system.answer(BOB, ALL, "yes")
    for owner, place, told in ((ALICE, "session", ALICE), ("", "daemon", None), (BOB, "session", BOB)):
        same(system.ask(BOB, "Change", backup, {"owner": owner, "actsIn": place}), None)
        same([system.ask(0, "Get", backup).get(key) for key in ("owner", "actsIn")], [told, place])
    got = system.ask(BOB, "Get", system.ask(BOB, "Add", wish("Of whoever is there", owner="")))
    same(["owner" in got, got["actsIn"]], [False, "session"])


def a_question_is_open(system):
    """While a person is asked everything goes on; who leaves takes his questions back; there is an end to how many."""
    system.begin()
    for user in (ALICE, BOB):
        system.answer(user, OWN, "yes")
    system.answer(ALICE, ALL, "ask")
    asking = [system.start_as(ALICE, ["/usr/bin/python3", system.path("usr/lib/caller.py"), "Add",
                                      json.dumps(wish(f"Root's {number}", actsIn="daemon"))]) for number in range(10)]
    system.wait_until("the questions", 120, lambda: len(system.polkit("GetOpen")) == 10)
    same(system.error(ALICE, "Add", wish(actsIn="daemon")), "LimitReached")
    system.ask(BOB, "Add", wish("Bob's"))  # who waits for nobody
    for process in asking:
        process.kill()
        process.communicate()
    system.wait_until("that they are taken back", 60, lambda: len(system.polkit("GetCancelled")) == 10)
    same([each["name"] for each in system.ask(ALICE, "List")], ["Bob's"])
    # What changed while the person thought counts as it is then.
    own = system.ask(BOB, "Add", wish("Bob's second"))
    system.answer(BOB, OWN, "ask")
    process = system.start_as(BOB, ["/usr/bin/python3", system.path("usr/lib/caller.py"), "Remove", json.dumps(own)])
    system.wait_until("the question", 60, lambda: system.polkit("GetOpen"))
    same(system.ask(0, "Change", own, {"owner": ALICE}), None)
    system.polkit("GetQuestions")
    system.polkit("Decide", "true")
    same(json.loads(process.communicate(timeout=60)[0])["error"], ERROR + "NotAllowed")
    same(system.polkit("GetQuestions"), [f"{BOB} {ALL} 1"])
    same(system.ask(0, "Get", own)["owner"], ALICE)


def refusals(system):
    """What is wrong is refused with a sentence, and nothing is lost."""
    system.begin()
    for action in (OWN, WAKE):
        system.answer(ALICE, action, "yes")
    identifier = system.ask(ALICE, "Add", wish())
    before = system.store_bytes()
    for wrong in (wish(colour="red"), wish(name=""), wish(name="x" * 501), wish(name="a\u001bb"), wish(name=True),
                  wish(date="tomorrow"), wish(date="2090-01-01T12:00:00"), wish(date="2001-01-01T12:00:00Z"), wish(date=""),
                  wish(timeZone="Mars/Olympus"), wish(repeats={"rule": "FREQ=NEVER"}), wish(repeats={"role": "x"}),
                  wish(bundlePath="Command.plugin"), wish(bundlePath="/a/../b"), wish(missed="maybe"), wish(missedLimit=5),
                  wish(overlap="run"), wish(isEnabled="yes"), wish(anyway="yes"), wish(identifier="x"),
                  wish(actsIn="space"), wish(owner="nobody")):
        same(system.error(ALICE, "Add", wrong), "InvalidSchedule")
    for idle in (wish(after="sleep"), wish(parameters={"Program": "/usr/bin/no-such-program"}), wish(parameters={}),
                 wish(bundlePath="/Library/Application Support/Dozely/PlugIns/None.plugin")):
        same(system.error(ALICE, "Add", idle), "NotFeasible")
    for wrong in ({"identifier": "x"}, {"name": "\n"}, {"repeats": {"rule": 5}}, {"revision": 5}, {"inWords": "x"}):
        same(system.error(ALICE, "Change", identifier, wrong), "InvalidSchedule")
    same(system.error(ALICE, "Postpone", identifier, "", 0), "NotPossible")
    same(system.error(ALICE, "Skip", identifier, "2090-02-02T12:00:00Z"), "NotPossible")
    same(system.error(ALICE, "Skip", identifier, "soon"), "InvalidSchedule")
    same(system.store_bytes(), before)
    system.ask(ALICE, "Add", wish(parameters={"Program": "/usr/bin/no-such-program"}, anyway=True))
    # What only root can look at is not told apart from what is not there.
    os.makedirs(system.path("secret"), mode=0o700)
    for path in (system.path("secret/there"), system.path("secret/not")):
        system.ask(ALICE, "Add", wish(parameters={"Program": path}))
    # Never written over.
    damaged = before[:-20]
    with open(system.path("Library/Preferences/com.dozely.plist"), "wb") as file:
        file.write(damaged)
    for method, arguments in (("Add", [wish()]), ("Remove", [identifier]), ("SetEnabled", [identifier, False]),
                              ("Change", [identifier, {"name": "A"}])):
        same(system.error(ALICE, method, *arguments), "StoreDamaged")
    same(system.store_bytes(), damaged)


def limits(system):
    system.begin()
    system.answer(ALICE, OWN, "yes")
    schedule = {"Identifier": "", "Name": "A", "Is Enabled": True, "Bundle Path": COMMAND, "Time Zone": "UTC",
                "Parameters": {"Program": "/usr/bin/touch", "Acts In User Agent": 1}, "Owner": ALICE}
    import datetime  # pylint: disable=import-outside-toplevel
    date = datetime.datetime(2090, 1, 1)
    system.store([{**schedule, "Identifier": f"a{number}", "Date": date} for number in range(199)])
    system.wait_until("the schedules", 60, lambda: len(system.ask(0, "List")) == 199)
    last = system.ask(ALICE, "Add", wish())
    same(system.error(ALICE, "Add", wish()), "LimitReached")
    same(system.ask(ALICE, "Change", last, {"name": "Changed"}), None)
    assert isinstance(system.ask(0, "Add", wish()), str)
    same(system.ask(0, "Change", "a0", {"owner": 0}), None)

    def large(size):
        return json.loads(system.as_user(ALICE, ["/usr/bin/python3", system.path("usr/lib/caller.py"), "--size", str(size)])[1])
    same(large((1 << 20) + 10)["error"], "org.freedesktop.DBus.Error.LimitsExceeded")
    same(large(200_000)["error"], ERROR + "InvalidSchedule")
    for number in range(1, 11):
        same(system.ask(0, "Remove", f"a{number}"), None)
    answers = [large(120_000) for _ in range(8)]
    same([isinstance(each, str) for each in answers], [True] * 7 + [False])
    same(answers[-1]["error"], ERROR + "LimitReached")


def real_polkit(system):
    """The machine's own polkitd understands the policy, and decides."""
    system.lay_out()
    system.start_bus()
    system.start_real_polkit("""polkit.addRule(function(action, subject) {
        if (subject.user == "nobody" && action.id == "com.dozely.scheduler.manage-own") return polkit.Result.YES;
        if (subject.user == "daemon" && action.id == "com.dozely.scheduler.manage-all") return polkit.Result.YES; });""")
    system.start_daemon()
    system.wait_until("the daemon on the bus", START_LIMIT, lambda: system.owner_of("com.dozely"))
    own = system.ask(ALICE, "Add", wish())
    same(system.ask(ALICE, "Get", own)["mayChange"], True)
    same(system.error(ALICE, "Add", wish(actsIn="daemon")), "NotAllowed")  # nobody could be asked for a password
    same(system.error(ALICE, "Add", wish(parameters={"Program": "/usr/bin/touch", "Needs Wake Up": 1})), "NotAllowed")
    same(system.error(BOB, "Add", wish()), "NotAllowed")
    same(system.ask(BOB, "Change", own, {"actsIn": "daemon"}), None)
    same(system.ask(ALICE, "Get", own)["mayChange"], False)
    same(system.error(ALICE, "Remove", own), "NotAllowed")


def no_polkit(system):
    """Root alone, and a sentence for the others."""
    system.begin(polkit=False)
    answer = system.ask(ALICE, "Add", wish())
    same(answer["error"], ERROR + "NotAllowed")
    assert answer["text"].startswith("Nobody but root may do this here: polkit, "), answer
    own = system.ask(0, "Add", wish(owner=ALICE))
    same(system.ask(ALICE, "Get", own)["mayChange"], False)
    same(system.ask(0, "Remove", own), None)


def buses_come_and_go(system):
    """No bus at first, one that comes, is lost and is back; and a name that somebody else has."""
    system.lay_out()
    system.start_daemon()
    system.wait_until("the daemon", START_LIMIT, lambda: system.admin("ping", "daemon")[0] == 0)
    system.start_bus()
    system.wait_until("the name", START_LIMIT, lambda: system.owner_of("com.dozely"))
    same(system.ask(ALICE, "List"), [])
    system.end("the bus")
    system.processes = [entry for entry in system.processes if entry[0] == "dozelyd"]  # the others went with the bus
    same(system.admin("ping", "daemon")[0], 0)
    system.start_bus()
    system.wait_until("the name", START_LIMIT, lambda: system.owner_of("com.dozely"))
    same(system.ask(ALICE, "List"), [])
    system.end("dozelyd")
    with contextlib.closing(subprocess.Popen(
            ["/usr/bin/python3", "-c", "import dbus, sys; n = dbus.SystemBus().request_name('com.dozely', 4); print(n, "
             "flush=True); sys.stdin.read()"], env=system.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            text=True).stdin) as other:
        system.wait_until("the other one", 60, lambda: system.owner_of("com.dozely"))
        system.start_daemon()
        system.wait_until("the daemon", START_LIMIT, lambda: "another program has it" in system.log_text())
        same(system.admin("ping", "daemon")[0], 0)
        first = system.owner_of("com.dozely")
        other.flush()
    system.wait_until("the name", START_LIMIT, lambda: system.owner_of("com.dozely") not in (None, first))
    same(system.ask(ALICE, "List"), [])


def signals(system):
    """What happens is told to everybody, and what only concerns one is not."""
    system.begin()
    listener = system.start_as(BOB, ["/usr/bin/python3", system.path("usr/lib/caller.py"), "--listen"])

    def hear(signal_name, matches=lambda arguments: True):
        for line in listener.stdout:
            heard = json.loads(line)
            if heard["signal"] == signal_name and matches(heard.get("arguments")):
                return heard.get("arguments")
        raise AssertionError(f"{signal_name} did not come")
    hear("listening")
    # What is put off by another way than this one has another next time, too.
    later = system.ask(0, "Add", wish("Later"))
    same(hear("SchedulesChanged"), [[later]])
    status, output = system.admin("postpone", "Later", "60")
    assert status == 0, output
    same(hear("SchedulesChanged"), [[later]])
    mark = system.path("marks/daemon/told")
    soon = time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(time.time() + 5))
    identifier = system.ask(0, "Add", wish("Told", actsIn="daemon", date=soon, parameters={
        "Program": "/bin/sh", "Arguments": ["-c", f"touch {mark}; exit 3"]}))
    same(hear("SchedulesChanged"), [[identifier]])
    changed = hear("PropertiesChanged", lambda arguments: arguments[1].get("NextOccurrence"))
    same([changed[0], changed[1]["NextOccurrence"]["date"]], ["com.dozely.Scheduler1", soon])
    begun = hear("OccurrenceBegan")
    same([begun[0], begun[1], begun[2]["moment"]], [identifier, soon, soon])
    ended = hear("OccurrenceEnded")
    same([ended[0], ended[1], ended[2]["state"]], [identifier, soon, "failed"])
    assert "exitStatus" not in ended[2] and "failure" not in ended[2], ended
    same(system.ask(0, "History", identifier, 1)[0]["exitStatus"], 3)
    system.store([])  # by another program
    hear("SchedulesChanged", lambda arguments: arguments == [[]])
    listener.kill()
    listener.communicate()


def waking(system):
    """The clock that wakes the machine is tried for whoever may wake it, and its alarm stays as it was."""
    system.begin()
    same(system.error(ALICE, "TestWaking", 0), "NotAllowed")
    same(system.polkit("GetQuestions"), [f"{ALICE} {WAKE} 1"])
    system.answer(ALICE, WAKE, "yes")
    same(system.ask(ALICE, "TestWaking", 0)["outcome"], "no clock")
    os.makedirs(system.path("sys/class/rtc/rtc0"))
    alarm = system.path("sys/class/rtc/rtc0/wakealarm")
    evening = str(int(time.time()) + 8 * 3600)
    for name, text in (("name", "rtc_test"), ("wakealarm", evening)):
        with open(system.path("sys/class/rtc/rtc0/" + name), "w", encoding="ascii") as file:
            file.write(text)

    def armed():
        with open(alarm, encoding="ascii") as file:
            return file.read()
    finding = system.ask(ALICE, "TestWaking", 0)
    same([finding["outcome"], sorted(finding), armed()], ["kept", ["outcome", "sentence"], evening])
    same(system.error(ALICE, "TestWaking", 5), "NotPossible")
    process = system.start_as(ALICE, ["/usr/bin/python3", system.path("usr/lib/caller.py"), "TestWaking", "60"])
    system.wait_until("the alarm", 60, lambda: armed() not in ("", evening))
    assert time.time() < int(armed()) < time.time() + 62, armed()
    for begins in ("true", "false"):
        status, output = system.call(["gdbus", "call", "--address", system.bus, "--dest", "org.freedesktop.login1",
                                      "--object-path", "/org/freedesktop/login1", "--method",
                                      "org.freedesktop.DBus.Mock.EmitSignal", "org.freedesktop.login1.Manager",
                                      "PrepareForSleep", "b", f"[<{begins}>]"])
        assert status == 0, output
    finding = json.loads(process.communicate(timeout=60)[0])
    same([finding["outcome"], sorted(finding), armed()], ["too early", ["back", "outcome", "planned", "sentence"], evening])
    os.remove(alarm)  # one that drops whatever it is given
    os.symlink("/dev/null", alarm)
    finding = system.ask(ALICE, "TestWaking", 60)
    same(finding["outcome"], "dropped")
    assert "rtc0" in finding["sentence"], finding


def flood(system):
    """Who calls as fast as he can keeps others waiting for a moment, and the daemon from nothing."""
    system.begin()
    for user in (ALICE, BOB):
        system.answer(user, OWN, "yes")
    import datetime  # pylint: disable=import-outside-toplevel
    entry = {"Name": "A", "Is Enabled": True, "Bundle Path": COMMAND, "Time Zone": "UTC", "Owner": 0,
             "Parameters": {"Program": "/usr/bin/touch", "Acts In User Agent": 1}, "Date": datetime.datetime(2090, 1, 1)}
    system.store([{**entry, "Identifier": f"a{number}"} for number in range(1000)])
    system.wait_until("the schedules", 60, lambda: len(system.ask(0, "List")) == 1000)
    flooding = [system.start_as(ALICE, ["/usr/bin/python3", system.path("usr/lib/caller.py"), "--flood", "8"]) for _ in range(3)]
    for process in flooding:
        same(process.stdout.readline(), "begun\n")
    times = []
    for _ in range(5):
        status, output = system.as_user(BOB, ["/usr/bin/python3", system.path("usr/lib/caller.py"), "--timed"])
        assert status == 0, output
        times += json.loads(output)
    same(system.admin("ping", "daemon")[0], 0)
    counts = [json.loads(process.communicate(timeout=120)[0]) for process in flooding]
    print("seconds for another user's call:", [round(each, 3) for each in times], counts)
    assert max(times) < 2, times
    assert sum(each["refused"] for each in counts) > 0 and sum(each["served"] for each in counts) > 0, counts
    # A flood of changes neither: each user has his share of the store's time.
    assert isinstance(system.ask(BOB, "Add", wish("Bob's")), str)


def tool(system):
    """dozely-admin, by who may not change the files."""
    system.begin()
    system.answer(ALICE, OWN, "yes")

    def admin(*arguments, user=ALICE):
        return system.as_user(user, [system.path("usr/bin/dozely-admin"), "--root", system.root, *arguments])
    status, output = admin("add", "Water", "--program", "/usr/bin/touch", "--argument", "x", "--in-session", "--every", "day",
                           "--at", "07:00", "--missed", "run-once=1h", "--json")
    assert status == 0, output
    added = json.loads(output.splitlines()[-1])["schedule"]
    got = system.ask(ALICE, "Get", added["identifier"])
    same([got[key] for key in ("owner", "actsIn", "missed", "missedLimit")], [ALICE, "session", "run once", 3600])
    same(got["repeats"]["rule"], added["repeats"]["rule"])
    steps = (["change", "Water", "--name", "Plants", "--at", "08:00"], ["change", "Plants", "--missed", "bundle"],
             ["change", "Plants", "--tell-failure"], ["skip", "Plants"], ["postpone", "Plants", "90"],
             ["disable", "Plants"], ["enable", "Plants"], ["change", "Plants", "--once"])
    for step in steps:
        status, output = admin(*step)
        assert status == 0, (step, output)
    got = system.ask(ALICE, "Get", added["identifier"])
    same([got["name"], "missed" in got, "repeats" in got, got["parameters"]["Tell Failure"], got["isEnabled"]],
         ["Plants", False, False, 1, True])
    status, output = admin("history", "Plants", "--json")
    # Skipped; and postponed, and disabled then.
    same([each["state"] for each in json.loads(output)["occurrences"]], ["removed"] * 2)
    # One screen, of which the daemon tells what a user cannot read himself.
    status, output = admin("status", "--json")
    told = json.loads(output)
    same([status, told["daemon"]["isAlive"], told["schedules"]["count"], told["failures"]], [0, True, 1, []])
    status, output = admin("doctor", "--json")
    found = {check["name"]: check["state"] for check in json.loads(output)["checks"]}
    same([found[name] for name in ("daemon", "bus-name", "socket-folder", "store", "record")],
         ["fine", "fine", "fine", "fine", "unknown"])
    # What a file says, of his own; the second time nothing differs.
    with open(system.path("usr/lib/wanted.yaml"), "w", encoding="utf-8") as wanted:
        wanted.write("schedules:\n- {name: Plants, program: /usr/bin/touch, arguments: [x], actsIn: session, every: day,"
                     " at: \"09:00\"}\n- {name: Cats, program: /usr/bin/touch, actsIn: session, every: 2h}\n")
    os.chmod(system.path("usr/lib/wanted.yaml"), 0o644)
    status, output = admin("apply", system.path("usr/lib/wanted.yaml"))
    same([status, output.count(" is changed."), output.count(" is added.")], [4, 1, 1])
    same(admin("apply", system.path("usr/lib/wanted.yaml")), (0, "Nothing differs."))
    same(admin("remove", "Cats")[0], 0)
    # What takes an administrator, who is not there.
    status, output = admin("add", "Backup", "--program", "/usr/bin/touch", "--in-daemon", "--in", "3600")
    same([status, output], [3, "Dozely Admin: You are not allowed to do this."])
    status, output = admin("remove", "Plants", user=BOB)
    same(status, 3)
    status, output = admin("skip", "Plants", user=BOB)
    same(status, 3)
    same(admin("remove", "Plants")[0], 0)
    same(system.ask(ALICE, "List"), [])
    lines = [line for line in system.log_text().splitlines() if "was added by" in line]
    same(len(lines), 2)
    system.end("dozelyd")
    status, output = admin("add", "Water", "--program", "/usr/bin/touch", "--in", "3600")
    same(status, 3)
    assert "try it as root" in output, output
    status, output = system.admin("add", "Water", "--program", "/usr/bin/touch", "--in", "3600")
    same(status, 0)


def page_program(system):
    """The program of docs/bus.md, run as a user."""
    system.begin()
    system.answer(ALICE, OWN, "yes")
    with open(SOURCES + "/docs/bus.md", encoding="utf-8") as file:
        programs = re.findall(r"```python\n(.*?)```", file.read(), re.DOTALL)
    same(len(programs), 1)
    assert len([line for line in programs[0].splitlines() if line.strip()]) <= 10, "it is no ten-line program any more"
    for count in (1, 2):
        status, output = system.as_user(ALICE, ["/usr/bin/python3", "-c", programs[0]])
        assert status == 0, output
        same(len(output.splitlines()), count)
        same(len(system.ask(ALICE, "List")), count)


def main():
    case = globals()[CASE]
    with scratch(BUILD, BusSystem) as system:
        os.makedirs(system.path("usr/lib"), exist_ok=True)
        with open(HERE + "/caller.py", encoding="utf-8") as source, \
                open(system.path("usr/lib/caller.py"), "w", encoding="utf-8") as target:
            target.write(source.read())
        os.chmod(system.path("usr/lib/caller.py"), 0o644)
        try:
            case(system)
        except BaseException:
            with contextlib.suppress(OSError):
                print("The log:\n" + system.log_text(), file=sys.stderr)
            raise


if __name__ == "__main__":
    main()
