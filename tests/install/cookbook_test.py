# SPDX-License-Identifier: MIT
"""Does what docs/cookbook.md says, with a daemon running.

    cookbook_test.py BUILD SOURCE [unittest arguments]

A block that begins with ```sh is run as it stands; what a block ```text behind it shows has to be in its output, …
standing for anything. The machine is a scratch folder in a time zone where it is about noon, so that nothing comes due
meanwhile; sudo and the programs that the page has run are stand-ins.
"""
import contextlib
import datetime
import json
import os
import plistlib
import sqlite3
import subprocess
import sys
import unittest
import zoneinfo
from pathlib import Path

BUILD, SOURCE = sys.argv[1:3]
sys.path.insert(0, str(Path(SOURCE, "scripts")))
from pages import blocks, is_shown, write_stand_ins  # pylint: disable=wrong-import-position
from scratch_system import START_LIMIT, System, scratch  # pylint: disable=wrong-import-position

PAGE = Path(SOURCE, "docs/cookbook.md")
STORE = "Library/Preferences/com.dozely.plist"
RECORD = "var/lib/dozely/occurrences.db"
PROGRAMS = ("/usr/bin/paplay", "/usr/local/bin/backup")
LIMIT = 100.0  # seconds; a clock that nothing has synchronised is not believed for one minute
WEEKDAYS = "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR"


def zone_at_noon():
    """The name of a zone whose clocks show some time after twelve."""
    ahead = 12 - datetime.datetime.now(datetime.timezone.utc).hour
    return f"Etc/GMT{-ahead:+d}"  # whose sign is the other way round


class Machine(System):
    """The one that the page is about."""

    zone = ""

    def lay_out(self, more_plug_ins=()):
        super().lay_out(["PowerOff.plugin", *more_plug_ins])
        self.zone = zone_at_noon()
        self.environment["TZ"] = self.zone
        os.mkdir(self.path("stand-ins"))
        admin = f'exec "{self.path("usr/bin/dozely-admin")}" --root "{self.root}" "$@"\n'
        programs = {os.path.basename(program): 'echo "ran" >>"$0.ran"\n' for program in PROGRAMS}
        write_stand_ins(self.path("stand-ins"), {"sudo": 'exec "$@"\n', "dozely-admin": admin, **programs})

    def program(self, path):
        return self.path("stand-ins/" + os.path.basename(path))

    def run(self, script):
        """Runs a block of the page; what it shows."""
        for program in PROGRAMS:
            script = script.replace(program, self.program(program))
        environment = {**self.environment, "PATH": self.path("stand-ins") + ":" + os.environ["PATH"]}
        done = subprocess.run(["bash", "-eu", "-c", script], env=environment, cwd="/", stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, timeout=60)
        if done.returncode != 0:
            raise AssertionError(f"This step ended with {done.returncode}:\n{script}\n{done.stdout}")
        return done.stdout

    def follow(self):
        """Does all that the page says."""
        output = step = ""
        for language, text in blocks(PAGE):
            if language == "sh":
                step = text
                output = self.run(text)
            elif not is_shown(output, text):
                raise AssertionError(f"This step:\n{step}\nshows\n{output}\ninstead of\n{text}")

    def was_off(self, name, days):
        """So many days pass while the machine is off: schedule and record are as if all had been that much earlier."""
        self.wait_until("the daemon's look", START_LIMIT, self.knows_all)
        self.stop_last()
        with open(self.path(STORE), "rb") as file:
            store = plistlib.load(file)
        entry = next(entry for entry in store["Schedule Array"] if entry["Name"] == name)
        start = datetime.datetime.fromisoformat(entry["Recurrence Rule"]["Local Start"])
        entry["Recurrence Rule"]["Local Start"] = (start - datetime.timedelta(days)).isoformat()
        entry["Date"] -= datetime.timedelta(days)
        self.store([entry])
        with contextlib.closing(sqlite3.connect(self.path(RECORD))) as record, record:
            record.execute("UPDATE calendars SET settled = settled - ?", (days * 24 * 3600 * 1000,))
        self.start_daemon()

    def knows_all(self):
        """Whether the daemon has seen all schedules of the page."""
        log = Path(self.path("var/log/dozely.log")).read_text(encoding="utf-8")
        return f"Schedules: {len(self.schedules())}\n" in log

    def runs(self, program):
        """How often a program was run."""
        mark = Path(self.program(program) + ".ran")
        return len(mark.read_text(encoding="utf-8").splitlines()) if mark.exists() else 0

    def history(self, name):
        """What became of it, newest first."""
        return json.loads(self.run(f'sudo dozely-admin history "{name}" --json'))["occurrences"]

    def schedules(self):
        """The entries of the store by their names."""
        with open(self.path(STORE), "rb") as file:
            return {entry["Name"]: entry for entry in plistlib.load(file)["Schedule Array"]}

    def local(self, date):
        """What the machine's clocks show at a date in JSON."""
        moment = datetime.datetime.fromisoformat(date.replace("Z", "+00:00"))
        return moment.astimezone(zoneinfo.ZoneInfo(self.zone)).replace(tzinfo=None)

    def next(self, name):
        """The moments of the next ten times, by the machine's clocks, and what comes first."""
        answer = json.loads(self.run(f'dozely-admin next "{name}" --json'))["occurrences"]
        return [self.local(occurrence["moment"]) for occurrence in answer], answer[0]


class CookbookTest(unittest.TestCase):
    def setUp(self):
        system = scratch(BUILD, Machine)
        self.machine = system.__enter__()  # pylint: disable=unnecessary-dunder-call
        self.addCleanup(system.__exit__, None, None, None)
        self.machine.lay_out()
        self.machine.start_bus()
        self.machine.start_daemon()
        self.machine.wait_until("the daemon", START_LIMIT, lambda: self.machine.admin("ping", "daemon")[0] == 0)

    def test_whoever_follows_it_has_three_wishes_fulfilled(self):
        self.assertEqual({language for language, _ in blocks(PAGE)}, {"sh", "text"})
        self.machine.follow()
        schedules = self.machine.schedules()
        self.assertEqual(set(schedules), {"Good night", "Wake up", "Backup"})
        for entry in schedules.values():  # they go with the machine's clocks
            self.assertNotIn("Time Zone", entry)
        self.look_at_good_night(schedules["Good night"])
        self.look_at_wake_up(schedules["Wake up"])
        self.look_at_backup(schedules["Backup"])

    def test_of_the_nights_that_were_missed_the_latest_backup_is_made_up_for_once(self):
        machine = self.machine
        machine.follow()
        machine.was_off("Backup", 4)
        machine.wait_until("the backup", LIMIT, lambda: machine.runs("/usr/local/bin/backup") > 0)
        machine.wait_until("its end", LIMIT, lambda: machine.history("Backup")[0]["state"] == "done")
        latest, missed = machine.history("Backup")
        self.assertEqual((missed["state"], missed["count"]), ("missed", 3))
        today = datetime.datetime.now(zoneinfo.ZoneInfo(machine.zone)).date()
        self.assertEqual(machine.local(latest["date"]), datetime.datetime.combine(today, datetime.time(3, 0)))
        machine.stop_last()
        machine.start_daemon()
        machine.wait_until("the daemon", START_LIMIT, lambda: machine.admin("ping", "daemon")[0] == 0)
        self.assertEqual(machine.runs("/usr/local/bin/backup"), 1)

    def look_at_good_night(self, entry):
        self.assertEqual(entry["Recurrence Rule"]["Rule"], "FREQ=DAILY")
        self.assertTrue(entry["Bundle Path"].endswith("/PowerOff.plugin"))
        self.assertEqual(entry["Parameters"], {"Alert": 1, "Delay before alert": 300})
        self.assertNotIn("Missed Policy", entry)

    def look_at_wake_up(self, entry):
        self.assertEqual(entry["Recurrence Rule"]["Rule"], WEEKDAYS)
        parameters = entry["Parameters"]
        self.assertEqual((parameters["Program"], parameters["Arguments"]),
                         (self.machine.program("/usr/bin/paplay"), ["/usr/share/sounds/morning.oga"]))
        self.assertEqual([parameters[key] for key in ("Acts In User Agent", "Needs Wake Up", "Needs Startup")],
                         [1, 1, 1])
        moments, first = self.machine.next("Wake up")
        self.assertEqual((first["wakes"], first["powersOn"]), (True, True))
        self.assertEqual(len(moments), 10)
        for moment, following in zip(moments, moments[1:]):
            self.assertEqual((moment.hour, moment.minute, moment.weekday() < 5), (6, 55, True), moment)
            self.assertEqual((following.date() - moment.date()).days, 3 if moment.weekday() == 4 else 1)

    def look_at_backup(self, entry):
        self.assertEqual(entry["Recurrence Rule"]["Rule"], "FREQ=DAILY")
        self.assertEqual((entry["Missed Policy"], entry["After Action"]), ("run once", "sleep"))
        self.assertNotIn("Missed Limit", entry)
        parameters = entry["Parameters"]
        self.assertEqual((parameters["Acts In User Agent"], parameters["Needs Wake Up"]), (0, 1))
        self.assertNotIn("Needs Startup", parameters)
        moments, first = self.machine.next("Backup")
        self.assertEqual((first["wakes"], first["powersOn"]), (True, False))
        self.assertEqual({(moment.hour, moment.minute) for moment in moments}, {(3, 0)})
        days = [moment.date() for moment in moments]
        self.assertEqual([(day - days[0]).days for day in days], list(range(10)))


if __name__ == "__main__":
    os.umask(0o022)
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
