# SPDX-License-Identifier: MIT
"""What a person does at the desktop, and what has to come of it, by what root sees: the schedules, the record, files."""

import datetime
import json

from emulator import Failure

SESSION_LIMIT = 900.0  # seconds for boot, installation and login; limits only bound a run that fails
ALERT_LIMIT = 900  # seconds until an alert that was put off by ten minutes is there
PANEL, AGENT, ASKER = "xfce4-panel", "Dozely Agent", "polkit-gnome-authentication-agent-1"
TEN_MINUTES = datetime.timedelta(minutes=10)  # from when one says so on
AHEAD = datetime.timedelta(minutes=6)  # long enough to fill in a form on a slow machine
PASSWORD = "one-for-all"  # the administrator's
PLAYED, ARCHIVE = "/home/person/played", "/var/backups/homes.tar.gz"


def must(holds, what):
    if not holds:
        raise Failure(what)


def wait_for_session(session, name):
    """Until somebody is logged in, another time than before."""
    scenario = session.scenario
    former = scenario.facts.pop("session", None)
    scenario.wait_for_fact(name, SESSION_LIMIT, "session")
    must(scenario.facts["session"] != former, "the machine did not start anew")


def open_from_menu(session):
    session.see("toggle button", "Applications", app=PANEL)
    session.press_keys("alt-f1")
    session.see("menu", "Accessories", app=PANEL)
    session.press("menu", "Accessories", app=PANEL)
    session.see("menu item", "Dozely", app=PANEL)
    session.photograph("menu")
    session.press("menu item", "Dozely", app=PANEL)
    session.see("frame", "Dozely")


def schedules(session):
    return {each["name"]: each for each in json.loads(session.run("dozely-admin", "list", "--json"))["schedules"]}


def history(session, name):
    identifier = schedules(session)[name]["identifier"]
    return json.loads(session.run("dozely-admin", "history", identifier, "--json"))["occurrences"]


def soon(session):
    """A minute that is ahead, as one writes it and as a date."""
    date = (session.now() + AHEAD).replace(second=0)
    return date.strftime("%H:%M"), date


def choose_by_keys(session, shown, wanted, *keys):
    """In a list that folds out; such a one is called by what it shows."""
    session.press("combo box", shown)
    session.press_keys(*keys, "ret")
    session.see("combo box", wanted)


def make_weekday_schedule(session):
    session.press("push button", "Something else")
    session.see("list item", "New schedule.*")
    session.write("text", "Name of the schedule", text="Radio")
    session.write("text", "Program:", text="/usr/local/bin/radio")
    choose_by_keys(session, "Once", "On weekdays.*", "down", "down")
    session.check("check box", "Show an alert before", on=True)
    text, date = soon(session)
    session.write("spin button", "Time", text=text)
    session.photograph("weekday-schedule")
    session.press("push button", "Apply")
    session.gone("list item", ".*not applied yet")
    made = schedules(session).get("Radio")
    must(made is not None, "the schedule \"Radio\" is not there")
    must("BYDAY=MO,TU,WE,TH,FR" in json.dumps(made), f"it is for no weekdays: {made}")
    return date


def make_backup(session):
    session.press("push button", "New schedule")
    session.see("list item", "New schedule.*")
    session.write("text", "Name of the schedule", text="Backup")
    session.write("text", "Program:", text="/usr/local/bin/back-up")
    choose_by_keys(session, "Once", "Every day", "down")
    choose_by_keys(session, "Me, in my session", "Administrator.*", "down")
    text, date = soon(session)
    session.write("spin button", "Time", text=text)
    session.photograph("backup")
    session.press("push button", "Apply")
    session.see("password text", app=ASKER)
    session.photograph("password")
    must("Backup" not in schedules(session), "the backup is there before the password")
    session.type(PASSWORD)
    session.press_keys("ret")
    session.gone("password text", app=ASKER)
    session.gone("list item", ".*not applied yet")
    made = schedules(session).get("Backup")
    must(made is not None, "the schedule \"Backup\" is not there")
    return date


def wait_for_archive(session, date):
    wait = int((date - session.now()).total_seconds()) + 120
    session.run("timeout", str(max(wait, 120)), "bash", "-c", f"until [ -s {ARCHIVE} ]; do sleep 0.5; done")
    told = session.run("stat", "--format", "%U %a", ARCHIVE).split()
    must(told == ["root", "600"], f"the backup belongs to {told}")
    must("etc/shadow" in session.run("tar", "--list", "--file", ARCHIVE), "what root alone may read is not in the backup")
    states = [each["state"] for each in history(session, "Backup")]
    must(states and set(states) <= {"done", "begun"}, f"the backup is recorded as {states}")


def put_off(session):
    session.see("push button", "Later", app=AGENT, limit=ALERT_LIMIT)
    session.photograph("alert")
    session.press("push button", "Later", app=AGENT)
    session.press("menu item", "In 10 minutes", app=AGENT)
    session.gone("alert", app=AGENT)


def radio_to_come(session):
    return datetime.datetime.fromisoformat(schedules(session)["Radio"]["next"].replace("Z", "+00:00"))


def walk(session):
    """What was shown, a sentence each."""
    wait_for_session(session, "somebody to be logged in")
    session.photograph("desktop")
    open_from_menu(session)
    session.see("push button", "Wake with music")
    session.photograph("first-start")
    yield "Dozely was started from the menu"
    date = make_weekday_schedule(session)
    yield f"a weekday schedule was made, for {date:%A %H:%M}"
    put_off(session)
    postponed = radio_to_come(session)
    must(date < postponed <= date + TEN_MINUTES, f"it was put off from {date} to {postponed}, not for ten minutes")
    yield f"its alert was put off, to {postponed:%H:%M}"
    backup = make_backup(session)
    wait_for_archive(session, backup)
    yield "a backup was made by root, after one password"
    session.see("push button", "Cancel", app=AGENT, limit=ALERT_LIMIT)
    session.press("push button", "Cancel", app=AGENT)
    session.gone("alert", app=AGENT)
    states = [each["state"] for each in history(session, "Radio")]
    must(states[:1] == ["removed"], f"what was cancelled is recorded as {states}")
    session.run("test", "!", "-e", PLAYED)
    must(radio_to_come(session).date() == date.date() + datetime.timedelta(1), "it does not come again tomorrow")
    yield "its alert was cancelled; nothing was played"
    before = schedules(session)
    session.run("systemctl", "--no-block", "reboot")
    wait_for_session(session, "somebody to be logged in after the restart")
    open_from_menu(session)
    for name in ("Radio", "Backup"):
        session.see("list item", f"{name}, tomorrow.*")
    session.photograph("after-restart")
    after = schedules(session)
    must({name: each["identifier"] for name, each in before.items()} ==
         {name: each["identifier"] for name, each in after.items()}, f"the schedules are others: {sorted(after)}")
    session.run("test", "-s", ARCHIVE)
    yield "all of it is there after a restart"
