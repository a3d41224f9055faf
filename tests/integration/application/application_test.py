#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The window as a person has it: with a real daemon, a real agent and a real bus, seen and used by the accessibility bus or
by keys alone.

    application_test.py SCRIPTS BUILD SOURCES CASE [LIBRARY [PICTURES]]

LIBRARY is for the cases in CLOCKED the one by which the programs have a clock that the test moves, for "bad_sides" a
configuration side that does what its bundle says. "pictures" writes to the folder PICTURES. Exit status: 0 when the case holds.
"""
import contextlib
import datetime
import os
import plistlib
import shutil
import signal
import subprocess
import sys
import time

SCRIPTS, BUILD, SOURCES, CASE = sys.argv[1:5]
TESTS = SOURCES + "/tests"
sys.path[:0] = [SCRIPTS, TESTS + "/integration/bus", TESTS + "/faults"]
from bus_system import OWN, become_root  # noqa: E402 pylint: disable=wrong-import-position
from desk import DARK_DESKTOP, PROGRAM, Desk  # noqa: E402 pylint: disable=wrong-import-position
from scratch_system import Failure, schedule, scratch  # noqa: E402 pylint: disable=wrong-import-position

become_root()
PICTURES = sys.argv[6] if len(sys.argv) > 6 else None
LIBRARY = sys.argv[5] if len(sys.argv) > 5 else None
CLOCKED = "path", "path_on_wayland", "keyboard", "pictures"
Desk.shim = LIBRARY if CASE in CLOCKED else None
AGENT = "Dozely Agent"
COMMAND = "/Library/Application Support/Dozely/PlugIns/Command.plugin"
PATIENCE = 30  # seconds; only bounds a failure


def on_tuesday(hour, minute, second=0):
    """The day after a desk's first."""
    return datetime.datetime(2026, 3, 17, hour, minute, second)


def marks(path):
    if not os.path.exists(path):
        return 0
    with open(path, encoding="ascii") as file:
        return len(file.readlines())


def see_it_through(desk, person, mark, later):
    """From the applied schedule on: the alert comes, is put off by `later`, the action happens and the history has it."""
    person.see("list item", "Radio, tomorrow 07:15, Run leave-a-mark")
    desk.clock.move(on_tuesday(7, 14))
    person.see("push button", "Cancel", app=AGENT)
    assert person.see("alert", app=AGENT)["description"].startswith("Radio\nWill run on 17 Mar 2026, 07:15"), "no such alert"
    later()
    person.gone("alert", app=AGENT)
    person.see("list item", "Radio, today 07:24.*")
    desk.clock.move(on_tuesday(7, 16))
    desk.clock.move(on_tuesday(7, 23, 30))
    person.see("alert", app=AGENT)  # once more, before the time to which it was put off
    assert marks(mark) == 0, "the action did not wait"
    desk.clock.move(on_tuesday(7, 24, 2))
    desk.wait_until("the action", PATIENCE, lambda: marks(mark) == 1)
    person.gone("alert", app=AGENT)
    person.see("list item", "Radio, tomorrow 07:15.*")


def path(desk, is_wayland=False):
    """First start, a ready wish, changed, applied, its alert, later, done: by the accessibility bus."""
    desk.begin_desk(is_wayland)
    program, mark = desk.mark_program()
    desk.start_agent()
    person = desk.open_window()
    person.see("frame", "Dozely")
    person.see("label", "Nothing is planned yet")
    person.see("push button", "Wake with music", description="Command, for the first time tomorrow 06:55")
    person.press("push button", "Wake with music")
    person.write("text", "Name of the schedule", text="Radio")
    person.write("text", "Program:", text=program)
    person.write("spin button", "Time", text="07:15")
    person.check("check box", "Show an alert before", on=True)
    person.see("label", "Next dates", description="tomorrow 07:15\n.*")
    person.see("list item", "Radio, Run leave-a-mark, not applied yet")
    assert desk.ask(desk.user.pw_uid, "List") == [], "the daemon was told before the person wanted it"
    person.press("push button", "Apply")

    def later():
        person.press("push button", "Later", app=AGENT)
        person.press("menu item", "In 10 minutes", app=AGENT)
    see_it_through(desk, person, mark, later)
    person.press("page tab", "Month")
    person.see("label", "March 2026")
    person.press("page tab", "History")
    for cell in ("today 07:15", "Radio", "done"):
        person.see("table cell", cell)


class Keys:
    """A person's hands on the keyboard, and nowhere else."""

    def __init__(self, desk, person):
        self.desk = desk
        self.person = person

    def press(self, *keys):
        done = self.desk.run_as_user(["xdotool", "key", "--delay", "20", *keys])
        assert done.returncode == 0, done.stderr

    def type(self, text):
        done = self.desk.run_as_user(["xdotool", "type", "--delay", "20", text])
        assert done.returncode == 0, done.stderr

    def go_to(self, role, name, key="Tab"):
        """From field to field until the keys are there."""
        passed = [self.person.focused()]
        while passed[-1][:2] != [role, name]:
            assert len(passed) < 60, f"{name} is not among {[each[:2] for each in passed]}"
            self.press(key)
            with contextlib.suppress(Failure):  # within a date the keys go from the day to the month
                passed.append(self.person.focused(before=passed[-1], limit=0.3))


def keyboard(desk):
    """The same by keys alone; the person only looks by the accessibility bus."""
    desk.begin_desk()
    program, mark = desk.mark_program()
    desk.start_agent()
    person = desk.open_window()
    person.see("push button", "Wake with music")
    keys = Keys(desk, person)
    keys.go_to("push button", "Wake with music")
    keys.press("space")
    person.see("text", "Name of the schedule")
    keys.go_to("text", "Name of the schedule")  # where they are
    keys.type("Radio")
    keys.go_to("text", "Program:")
    keys.press("ctrl+a")
    keys.type(program)
    keys.go_to("spin button", "Time")
    keys.type("0715")
    keys.go_to("check box", "Show an alert before")
    keys.press("space")
    person.see("list item", "Radio, Run leave-a-mark, not applied yet")
    keys.press("ctrl+s")

    def later():
        person.see("push button", "Later", app=AGENT)
        keys.press("alt+Tab")
        person.focused(app=AGENT)
        keys.press("Tab", "Tab", "Return", "Down", "Return")
    see_it_through(desk, person, mark, later)
    keys.press("ctrl+3")
    person.see("table cell", "done")
    keys.go_to("text", "Search the history")
    keys.go_to("table", "History")
    keys.press("Down", "Return")
    person.see("text", "Log", saying=r".*\"Radio\" was handed to the agent.*")


def path_on_wayland(desk):
    """The same where there is no X."""
    path(desk, is_wayland=True)


def make_a_wish(person, program):
    """An action of one's own session, not applied yet."""
    person.press("push button", "Wake with music")
    person.write("text", "Program:", text=program)
    person.see("list item", "Wake with music, Run .*, not applied yet")


def no_daemon(desk):
    """Nobody is there: a plain sentence and a remedy; and all is well once he comes, and told when he goes again."""
    desk.begin_desk(daemon=False)
    person = desk.open_window()
    missing = "The Dozely service is not running: .*systemctl start dozelyd.*"
    person.see("label", missing)
    person.see("label", "Service not running", description=".*systemctl start dozelyd")
    person.press("push button", "Try again")
    person.see("label", missing)
    desk.start_daemon()
    person.see("label", "Service running")
    person.gone("label", missing)
    person.see("push button", "Wake with music")
    desk.end("dozelyd")
    person.see("label", missing)


def no_right(desk):
    """Polkit says no: the window says so and keeps what was wanted, which can be applied once it says yes."""
    desk.begin_desk()
    desk.answer(desk.user.pw_uid, OWN, "no")
    person = desk.open_window()
    make_a_wish(person, "/usr/bin/true")
    person.press("push button", "Apply")
    person.see("label", "This could not be applied: You are not allowed to do this.")
    assert desk.ask(desk.user.pw_uid, "List") == []
    desk.answer(desk.user.pw_uid, OWN, "yes")
    person.press("push button", "Apply")
    person.gone("list item", ".*not applied yet")
    person.gone("label", "This could not be applied.*")
    assert [each["name"] for each in desk.ask(desk.user.pw_uid, "List")] == ["Wake with music"]


def no_polkit(desk):
    """Nobody who could be asked: root alone may, and the window says so."""
    desk.begin_desk(polkit=False)
    person = desk.open_window()
    make_a_wish(person, "/usr/bin/true")
    person.press("push button", "Apply")
    person.see("label", "This could not be applied: Nobody but root may do this here: polkit, .*")
    person.see("list item", "Wake with music, .*not applied yet")


def damaged_store(desk):
    """It is never written over, and the window says so."""
    desk.begin_desk()
    desk.ask(desk.user.pw_uid, "Add", {"name": "Water", "bundlePath": COMMAND, "date": "2090-01-01T12:00:00Z",
                                       "actsIn": "session", "parameters": {"Program": "/usr/bin/true"}})
    person = desk.open_window()
    person.see("list item", "Water.*")
    damaged = desk.store_bytes()[:-20]
    with open(desk.path("Library/Preferences/com.dozely.plist"), "wb") as file:
        file.write(damaged)
    person.write("text", "Name of the schedule", text="Plants")
    person.press("push button", "Apply")
    person.see("label", "This could not be applied: The schedules are damaged, and are not overwritten: .*")
    person.see("list item", "Plants, .*not applied yet")
    assert desk.store_bytes() == damaged
    # A daemon that has never read it knows none, which is not the same as that there is none.
    desk.end("Dozely")
    desk.end("dozelyd")
    desk.start_daemon()
    desk.wait_until("the daemon on the bus", PATIENCE, lambda: desk.owner_of("com.dozely"))
    person = desk.open_window()
    person.see("label", "The schedules cannot be read: The schedules are damaged, and are not overwritten: .*")
    person.gone("label", "Nothing is planned yet")
    assert desk.store_bytes() == damaged
    desk.store([])  # by an administrator
    person.see("label", "Nothing is planned yet")
    person.gone("label", "The schedules cannot be read.*")


def bad_bundle(desk, name, behaviour, **more):
    """A plug-in whose configuration side is LIBRARY, which behaves so; its path."""
    path = f"/Library/Application Support/Dozely/PlugIns/{name}.plugin"
    code = desk.path(path.lstrip("/") + "/Contents/Linux")
    os.makedirs(code)
    shutil.copyfile(LIBRARY, code + "/SettingsPlugIn.so")
    with open(os.path.dirname(code) + "/Info.plist", "wb") as file:
        plistlib.dump({"CFBundleIdentifier": "com.dozely.plugin." + name, "WDPrefPaneModule": "SettingsPlugIn.so",
                       "Behaviour": behaviour, **more}, file)
    return path


def bad_sides(desk):
    """A view that throws, one that never comes, one that crashes, a broken interface file, a bundle that has gone: the
    window says so and goes on."""
    desk.begin_desk()
    bundles = {name: bad_bundle(desk, name, name.lower()) for name in ("Throws", "Hangs", "Crashes", "Works")}
    bundles["Broken"] = bad_bundle(desk, "Broken", "", WDEditNibFile="View")
    resources = desk.path(bundles["Broken"].lstrip("/") + "/Contents/Resources")
    os.makedirs(resources)
    with open(resources + "/View.ui", "w", encoding="utf-8") as file:
        file.write("<ui><widget class=")
    bundles["Gone"] = "/Library/Application Support/Dozely/PlugIns/Gone.plugin"
    date = datetime.datetime(2090, 1, 1)
    desk.store([{**schedule(number, date, f"{name}.plugin", {"Text": "hello"}, desk.user.pw_uid), "Name": name}
                for number, name in enumerate(sorted(bundles))])
    desk.wait_until("the schedules", PATIENCE, lambda: len(desk.ask(desk.user.pw_uid, "List")) == len(bundles))
    person = desk.open_window()
    cannot = "The settings of this action cannot be shown. All else of the schedule can be changed.\n"
    sentences = {"Throws": cannot + ".*There are none today.*", "Hangs": cannot + "It does not come to an end while .*",
                 "Crashes": cannot + "It crashes while it is loaded.", "Broken": cannot + "Broken.plugin has no view",
                 "Gone": "There is no longer an action here: its bundle is missing.*"}
    for name, sentence in sentences.items():
        person.choose("list item", name + ",.*")
        person.see("label", sentence)
    person.choose("list item", "Works,.*")
    person.see("text", ".*", saying="hello")
    person.gone("label", cannot + ".*")
    person.choose("list item", "Gone,.*")
    person.write("text", "Name of the schedule", text="Gone away")
    person.see("list item", "Gone away, .*not applied yet")


def rows(desk):
    """What is opened is written row by row, by a screen reader too."""
    desk.begin_desk()
    items = ["/home/one.ogg", "/home/two.ogg"]
    added = desk.ask(desk.user.pw_uid, "Add", {"name": "Songs", "bundlePath": COMMAND.replace("Command", "Open"),
                                               "actsIn": "session", "date": "2090-01-01T12:00:00Z",
                                               "parameters": {"Items": items}})
    assert isinstance(added, str), added
    person = desk.open_window()
    person.see("list item", "Songs.*")
    person.choose("list item", "/home/two.ogg")
    assert person.read("text", "Chosen row") == "/home/two.ogg", "the field is about another row"
    person.write("text", "Chosen row", text="/home/three.m3u")
    person.see("list item", "/home/three.m3u")
    person.press("push button", "Address")
    person.see("list item", r"\(empty\)")
    person.write("text", "Chosen row", text="https://radio.example/")
    person.see("list item", "Songs, .*, Open one.ogg, …, not applied yet")
    person.press("push button", "Apply")
    person.gone("list item", ".*not applied yet")
    told = desk.ask(desk.user.pw_uid, "List")[0]["parameters"]["Items"]
    assert told == ["/home/one.ogg", "/home/three.m3u", "https://radio.example/"], told


def second_start(desk):
    """The first one's window comes, by what the desktop gave the second start."""
    desk.begin_desk()
    desk.open_window().see("frame", "Dozely")
    window = desk.run_as_user(["xdotool", "search", "--onlyvisible", "--name", "^Dozely"]).stdout.split()[-1]
    begun = int(time.monotonic() * 1000) & 0xffffffff  # as the server counts
    again = [desk.path(PROGRAM), "--root", desk.root]
    desk.start("another window", ["xmessage", "In front"], as_user=True)
    front = ["xdotool", "getactivewindow", "getwindowname"]
    desk.wait_until("another window in front", PATIENCE, lambda: "xmessage" in desk.run_as_user(front).stdout)
    for token, used in (("nonsense", None), (f"desk-1-somebody_TIME{begun}", begun)):
        desk.session_environment["DESKTOP_STARTUP_ID"] = token
        done = desk.run_as_user(again)
        assert done.returncode == 0, done.stderr
        read = ["xprop", "-id", window, "-notype", "_NET_WM_USER_TIME"]
        desk.wait_until(f"the use of {token}", PATIENCE, lambda used=used: used is None or desk.run_as_user(
            read).stdout.strip().endswith(f" = {used}"))
    desk.wait_until("the window in front", PATIENCE, lambda: "Dozely" in desk.run_as_user(front).stdout)


def many(desk):
    """Ten thousand schedules: there within a moment, found by a few letters, changed as ever."""
    desk.begin_desk()
    date = datetime.datetime(2090, 1, 1)
    own = {"Program": "/usr/bin/true", "Acts In User Agent": 1}
    desk.store([{**schedule(number, date + datetime.timedelta(minutes=number), parameters=own, owner=desk.user.pw_uid),
                 "Name": f"Number {number}"} for number in range(10_000)])
    desk.wait_until("the schedules", PATIENCE, lambda: desk.ask(desk.user.pw_uid, "Next", "", "", "", 1))
    begin = time.monotonic()
    person = desk.open_window()
    person.see("list item", "Number 0,.*")
    print(f"shown after {time.monotonic() - begin:.2f} s")
    begin = time.monotonic()
    person.write("text", "Search the schedules", text="number 9876")
    person.see("list item", "Number 9876,.*")
    person.gone("list item", "Number 0,.*")
    print(f"found after {time.monotonic() - begin:.2f} s")
    person.choose("list item", "Number 9876,.*")
    begin = time.monotonic()
    person.write("text", "Name of the schedule", text="Number 9876, changed")
    person.see("list item", "Number 9876, changed, .*not applied yet")
    print(f"changed after {time.monotonic() - begin:.2f} s")
    person.press("page tab", "Month")
    person.press("push button", "Next month")
    person.press("page tab", "Schedules")
    begin = time.monotonic()
    person.write("text", "Search the schedules", text="")
    person.see("list item", "Number 0,.*")
    print(f"all again after {time.monotonic() - begin:.2f} s")


def as_root(desk):
    """Root is sent away with a sentence: what it did on the channel would clear what the daemon has there."""
    desk.lay_out()
    done = subprocess.run([desk.path(PROGRAM)], env={**desk.environment, "QT_QPA_PLATFORM": "offscreen"}, cwd="/",
                          stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=PATIENCE, check=False)
    assert done.returncode == 1, done
    assert "it is for a person's session, not for root; dozely-admin does all of it as root." in done.stderr, done


def session_ends(desk):
    """Nobody is there any more to be asked what shall become of changes."""
    desk.begin_desk()
    person = desk.open_window()
    make_a_wish(person, "/usr/bin/true")
    window = desk.process("Dozely")
    window.send_signal(signal.SIGTERM)
    assert window.wait(PATIENCE) == 0, window.returncode
    desk.end("Dozely")


def planned(user):
    """What somebody may have planned; nothing of it is told to a machine that has no such program."""
    def daily(hour, minute, days="MO,TU,WE,TH,FR,SA,SU"):
        return {"rule": f"FREQ=WEEKLY;BYDAY={days}", "localStart": f"2026-03-16T{hour:02}:{minute:02}:00"}

    def command(program, *arguments, **more):
        return {"bundlePath": COMMAND, "actsIn": "session", "owner": user, "anyway": True,
                "parameters": {"Program": program, "Arguments": list(arguments), **more}}
    workdays = "MO,TU,WE,TH,FR"
    return [
        {"name": "Wake with music", **command("/usr/bin/pw-play", "/usr/share/sounds/freedesktop/stereo/alarm-clock-elapsed.oga",
                                              **{"Needs Wake Up": 1, "Needs Startup": 1}), "repeats": daily(6, 55, workdays)},
        {"name": "Backup at night", **command("/usr/bin/true"), "owner": 0, "actsIn": "daemon", "repeats": daily(3, 0),
         "missed": "run once"},
        {"name": "Stand up and walk a few steps", **command("/usr/bin/true"),
         "repeats": {"rule": "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR;BYHOUR=10,12,14,16;BYMINUTE=0;BYSECOND=0"}},
        {"name": "Fetch the news", **command("/usr/bin/false"), "repeats": daily(7, 30)},
        {"name": "Water the plants", **command("/usr/bin/true"), "repeats": daily(18, 15, "MO,FR")},
        {"name": "Switch off in the evening", "bundlePath": COMMAND.replace("Command", "PowerOff"), "owner": 0,
         "actsIn": "daemon", "parameters": {"Alert": 1, "Delay before alert": 300}, "repeats": daily(22, 0, workdays),
         "anyway": True},
        {"name": "Tax papers", **command("/usr/bin/xdg-open", "/home"), "date": "2026-05-29T16:00:00Z"}]


def photograph(desk, name):
    """Writes what a window of that title shows, without what a window manager has around it."""
    found = desk.run_as_user(["xdotool", "search", "--onlyvisible", "--name", {"alert": "^Command$"}.get(name, "^Dozely")])
    done = desk.run_as_user(["import", "-window", found.stdout.split()[-1], "-strip", "png:-"], text=False)
    assert done.returncode == 0 and len(done.stdout) > 5000, done.stderr
    with open(os.path.join(PICTURES, f"application-{name}.png"), "wb") as image:
        image.write(done.stdout)


def brightest(desk, place):
    """Of what the screen shows there, from 0 to 1."""
    left, top, width, height = place
    done = desk.run_as_user(["import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "-format",
                             "%[fx:maxima]", "info:-"])
    return float(done.stdout)


def pictures(desk):
    """Those of docs/images: application-NAME.png."""
    os.makedirs(PICTURES, exist_ok=True)
    desk.begin_desk()
    desk.start_agent()
    person = desk.open_window()
    person.see("push button", "Something else")
    photograph(desk, "start")
    desk.end("Dozely")
    for wish in planned(desk.user.pw_uid):
        answer = desk.ask(0, "Add", wish)
        assert isinstance(answer, str), answer
    moments = [on_tuesday(*time_of_day) - datetime.timedelta(days=1) for time_of_day in
               ((10, 0), (18, 15))] + [on_tuesday(3, 0), on_tuesday(7, 30)]
    for count, moment in enumerate(moments, 1):
        desk.clock.move(moment)
        desk.wait_until("the action", PATIENCE, lambda count=count: desk.log_text().count(" ended with status ") >= count)
        for hour in (12, 14, 16) if count == 1 else ():  # a long meeting
            stand = next(each["identifier"] for each in desk.ask(0, "List") if "Stand" in each["name"])
            desk.ask(0, "Skip", stand, f"2026-03-16T{hour}:00:00Z")
    looks = {"schedules": {}, "dark": DARK_DESKTOP, "arabic": {"LANG": "ar_EG.UTF-8", "LANGUAGE": "ar"}}
    for name, environment in looks.items():
        desk.write_colours(name == "dark")
        person = desk.open_window(**environment)
        person.choose("list item", "Wake with music,.*")
        person.see("text", ".*", saying="/usr/bin/pw-play")
        photograph(desk, name)
        if name == "dark":
            person.check("check box", "Switched on", on=False)
            person.ready("push button", "Apply")
            photograph(desk, "changed")
            person.press("push button", "Undo")
            assert brightest(desk, person.see("label", "Run pw-play")["place"]) > 0.4, "what is faint cannot be read"
        if name == "schedules":
            for tab, seen in (("Month", "table"), ("History", "table cell")):
                person.press("page tab", tab)
                person.see(seen)
                photograph(desk, tab.lower())
        desk.end("Dozely")
    water = desk.ask(0, "Add", {**planned(desk.user.pw_uid)[4], "name": "Water the plants again", "repeats": {},
                                "date": "2026-03-17T07:45:00Z", "parameters": {"Program": "/usr/bin/true", "Alert": 1,
                                                                               "Delay before alert": 300}})
    assert isinstance(water, str), water
    desk.clock.move(on_tuesday(7, 41))
    person = desk.open_window()
    person.see("push button", "Later", app=AGENT)
    person.ready("push button", "Cancel", app=AGENT)
    photograph(desk, "alert")


def main():
    os.umask(0o022)  # code that others may write is not loaded
    with scratch(BUILD, Desk) as desk:
        begin = time.monotonic()
        try:
            globals()[CASE](desk)
        except BaseException:
            with contextlib.suppress(OSError):
                print("The log:\n" + desk.log_text(), file=sys.stderr)
            raise
        print(f"{CASE}: {time.monotonic() - begin:.1f} s")


if __name__ == "__main__":
    main()
