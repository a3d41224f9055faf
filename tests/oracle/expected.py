# SPDX-License-Identifier: MIT
"""What python3-dateutil and zoneinfo say of a recurrence.

dateutil expands the rule on wall times, zoneinfo turns them into instants. Where the documented meaning of a rule
differs from dateutil's, a function named policy_... below says so and rewrites what dateutil is asked; there is nothing else
in which the two may differ.
"""
import datetime
import types
from datetime import timedelta, timezone

import dateutil.rrule
from dateutil.rrule import rrule

FREQUENCIES = dict((name, number) for number, name in enumerate(
    "YEARLY MONTHLY WEEKLY DAILY HOURLY MINUTELY SECONDLY".split()))
WEEKDAYS = "MO TU WE TH FR SA SU".split()
PERIODS = {"HOURLY": 3600, "MINUTELY": 60, "SECONDLY": 1}
CENTURY = timedelta(days=36525)

# dateutil goes on to the last year that Python knows when a rule gives nothing; merged() sets a nearer one.
dateutil.rrule.datetime = types.SimpleNamespace(**{name: getattr(datetime, name) for name in dir(datetime)
                                                   if not name.startswith("__")})


class Refused(Exception):
    """The rule gives nothing within a century."""


def parse(text):
    """The parts of a rule as a dictionary: numbers, lists of numbers, (ordinal, weekday) for days."""
    parts = {}
    for part in text.split(";"):
        name, _, value = part.partition("=")
        if name == "BYDAY":
            parts[name] = [(int(day[:-2] or 0), WEEKDAYS.index(day[-2:])) for day in value.split(",")]
        elif name == "WKST":
            parts[name] = WEEKDAYS.index(value)
        elif name in ("COUNT", "INTERVAL"):
            parts[name] = int(value)
        elif name.startswith("BY"):
            parts[name] = [int(number) for number in value.split(",")]
        else:
            parts[name] = value
    return parts


def instant(wall, zone):
    """By PEP 495 exactly what is documented: of a repeated time the first, a skipped one later by the gap."""
    return int(wall.replace(tzinfo=zone, fold=0).astimezone(timezone.utc).timestamp())


def shown(moment, zone):
    """What clocks show at an instant."""
    return datetime.datetime.fromtimestamp(moment, zone).replace(tzinfo=None, fold=0)


def week_year(day, weekstart):
    """The year whose week the day is in, by RFC 5545's rule of four days."""
    first = day - timedelta(days=(day.weekday() - weekstart) % 7)
    return (first + timedelta(days=3)).year


def asked_of_dateutil(parts, start, **changed):
    """A dateutil rule of the parts."""
    parts = dict(parts, **changed)
    return rrule(
        FREQUENCIES[parts["FREQ"]], dtstart=start, interval=parts.get("INTERVAL", 1), wkst=parts.get("WKST", 0),
        bysetpos=parts.get("BYSETPOS"), bymonth=parts.get("BYMONTH"), bymonthday=parts.get("BYMONTHDAY"),
        byyearday=parts.get("BYYEARDAY"), byweekno=parts.get("BYWEEKNO"), byhour=parts.get("BYHOUR"),
        byminute=parts.get("BYMINUTE"), bysecond=parts.get("BYSECOND"),
        byweekday=[dateutil.rrule.weekday(day, ordinal) if ordinal else day for ordinal, day in parts["BYDAY"]]
        if parts.get("BYDAY") else None)


def policy_week_number_alone_takes_the_weekday_of_the_start(parts, start):
    """dateutil gives all seven days of the week; RFC 5545 takes from the start what the rule leaves open."""
    if "BYWEEKNO" in parts and not {"BYDAY", "BYMONTHDAY", "BYYEARDAY"} & parts.keys():
        parts["BYDAY"] = [(0, start.weekday())]


def policy_a_leap_second_is_the_last_of_its_minute(parts):
    """RFC 5545, 3.3.12: who knows no leap seconds takes 60 for 59. dateutil refuses it."""
    if "BYSECOND" in parts:
        parts["BYSECOND"] = sorted({min(second, 59) for second in parts["BYSECOND"]})


def policy_days_with_and_without_ordinals_are_alternatives(parts):
    """BYDAY=1MO,TU: the first Monday and every Tuesday. dateutil wants both of one day, which never is."""
    days = parts.get("BYDAY", [])
    if any(ordinal for ordinal, _ in days) and not all(ordinal for ordinal, _ in days):
        return [[day for day in days if day[0]], [day for day in days if not day[0]]]
    return [days]


def policy_positions_are_of_whole_periods(parts, start):
    """BYSETPOS picks from the whole first week, which dateutil begins at the start. A year of BYWEEKNO is its weeks, where
    dateutil takes the days of the calendar year."""
    return "BYSETPOS" in parts and (parts["FREQ"] == "WEEKLY" or "BYWEEKNO" in parts)


def policy_years_of_weeks_are_counted_by_their_weeks(parts):
    """With INTERVAL, days in the first and last week belong to the year of that week; dateutil takes the calendar year."""
    return "BYWEEKNO" in parts and parts.get("INTERVAL", 1) > 1


def policy_weeks_at_the_turn_of_the_year_are_whole(parts):
    """A week that has days in two years is one week. dateutil looks at the December before a first week for BYWEEKNO=1
    alone, not for -52 or -53, and takes the January after a last one of 52 weeks for a 53rd where the year after has other
    weekdays (2011-01-02 is in week 52). It is asked for every day then, and the weeks are counted here."""
    return any(abs(week) in (52, 53) for week in parts.get("BYWEEKNO", []))


def is_in_weeks(day, weeks, weekstart):
    """Whether the number of a day's week, from the start or from the end of its year, is among `weeks`."""
    def first_day(year):
        fourth = datetime.datetime(year, 1, 4)
        return fourth - timedelta(days=(fourth.weekday() - weekstart) % 7)
    year = week_year(day, weekstart)
    week = (day - first_day(year)).days // 7 + 1
    return week in weeks or week - 1 - (first_day(year + 1) - first_day(year)).days // 7 in weeks


def whole_periods(parts, start, last):
    """All that lies in the periods of the rule, from the one of the start on, by period: what BYSETPOS picks from."""
    weekstart = parts.get("WKST", 0)
    interval = parts.get("INTERVAL", 1)
    day_parts = dict(parts)
    for name, value in (("BYHOUR", start.hour), ("BYMINUTE", start.minute), ("BYSECOND", start.second)):
        day_parts.setdefault(name, [value])
    day_parts.pop("BYSETPOS", None)
    if parts["FREQ"] == "WEEKLY":
        day_parts.setdefault("BYDAY", [(0, start.weekday())])
        first = start - timedelta(days=(start.weekday() - weekstart) % 7)
    else:
        first = start - timedelta(days=400)
    first = first.replace(hour=0, minute=0, second=0)
    groups = {}
    for wall in merged(day_parts, first, last + timedelta(days=400), INTERVAL=1):
        if parts["FREQ"] == "WEEKLY":
            period = (wall - first).days // 7
            origin = 0
        else:
            period = week_year(wall, weekstart)
            origin = start.year
        if (period - origin) % interval == 0:
            groups.setdefault(period, []).append(wall)
    return groups


def merged(parts, start, last, **changed):
    """The wall times up to `last` of all alternatives, in order, each once."""
    found = set()
    dateutil.rrule.datetime.MAXYEAR = last.year
    weeks = None
    if policy_weeks_at_the_turn_of_the_year_are_whole(parts):
        weeks = parts["BYWEEKNO"]
        changed = dict(changed, BYWEEKNO=None, BYYEARDAY=parts.get("BYYEARDAY", range(1, 367)))
    for days in policy_days_with_and_without_ordinals_are_alternatives(parts):
        for wall in asked_of_dateutil(parts, start, **dict(changed, BYDAY=days)):
            if wall > last:
                break
            if weeks is None or is_in_weeks(wall, weeks, parts.get("WKST", 0)):
                found.add(wall)
    return sorted(found)


def wall_times(parts, start, last):
    """The wall times that a rule of days or longer gives up to `last`."""
    if policy_positions_are_of_whole_periods(parts, start) or policy_years_of_weeks_are_counted_by_their_weeks(parts):
        walls = []
        for _, group in sorted(whole_periods(parts, start, last).items()):
            picked = group
            if "BYSETPOS" in parts:
                picked = sorted({group[position - (position > 0)] for position in parts["BYSETPOS"]
                                 if -len(group) <= position - (position > 0) < len(group)})
            walls += picked
        return [wall for wall in walls if start <= wall <= last]
    if len(policy_days_with_and_without_ordinals_are_alternatives(parts)) > 1 and "BYSETPOS" in parts:
        groups = {}
        whole = {name: value for name, value in parts.items() if name != "BYSETPOS"}
        for name, value in (("BYHOUR", start.hour), ("BYMINUTE", start.minute), ("BYSECOND", start.second)):
            whole.setdefault(name, [value])
        first = start.replace(day=1, hour=0, minute=0, second=0)
        if parts["FREQ"] == "YEARLY":
            first = first.replace(month=1)
        for wall in merged(whole, first, last + timedelta(days=400)):
            groups.setdefault((wall.year, wall.month if parts["FREQ"] == "MONTHLY" else 0), []).append(wall)
        walls = set()
        for group in groups.values():
            for position in parts["BYSETPOS"]:
                if -len(group) <= position - (position > 0) < len(group):
                    walls.add(group[position - (position > 0)])
        return sorted(wall for wall in walls if start <= wall <= last)
    return merged(parts, start, last)


def passes(parts, wall):
    """Whether the parts that limit an hour or less let a wall time pass."""
    month_days = (wall.replace(day=28) + timedelta(days=4)).replace(day=1) - timedelta(days=1)
    year_day = wall.timetuple().tm_yday
    year_days = datetime.date(wall.year, 12, 31).timetuple().tm_yday
    return (("BYMONTH" not in parts or wall.month in parts["BYMONTH"])
            and ("BYMONTHDAY" not in parts or wall.day in parts["BYMONTHDAY"]
                 or wall.day - month_days.day - 1 in parts["BYMONTHDAY"])
            and ("BYYEARDAY" not in parts or year_day in parts["BYYEARDAY"]
                 or year_day - year_days - 1 in parts["BYYEARDAY"])
            and ("BYDAY" not in parts or (0, wall.weekday()) in parts["BYDAY"])
            and ("BYHOUR" not in parts or wall.hour in parts["BYHOUR"]))


def elapsed(parts, start, zone, after, last):
    """The instants of a rule of hours or shorter: every period of elapsed time, BY parts as clocks show them. The window
    is short, so each second that can be one is looked at."""
    unit = PERIODS[parts["FREQ"]]
    begin = instant(start, zone)
    at_start = shown(begin, zone)
    since = (at_start.minute * 60 + at_start.second) % unit
    origin = begin - since
    step = unit * parts.get("INTERVAL", 1)
    found = []
    first = origin + max(0, (after - origin) // step) * step
    for period in range(first, last + 1, step):
        if "BYSECOND" in parts and unit > 1:
            minutes = range(period, period + unit, 60) if "BYMINUTE" in parts or unit == 60 else \
                [period + since // 60 * 60]
            seconds = [minute + second for minute in minutes for second in range(60)]
        elif "BYMINUTE" in parts and unit == 3600:
            seconds = range(period + since % 60, period + unit, 60)
        else:
            seconds = [period + since]
        group = []
        for moment in seconds:
            wall = shown(moment, zone)
            if (passes(parts, wall) and ("BYMINUTE" not in parts or wall.minute in parts["BYMINUTE"])
                    and ("BYSECOND" not in parts or wall.second in parts["BYSECOND"])):
                group.append(moment)
        if "BYSETPOS" in parts:
            group = sorted({group[position - (position > 0)] for position in parts["BYSETPOS"]
                            if -len(group) <= position - (position > 0) < len(group)})
        found += [moment for moment in group if begin <= moment]
    return [moment for moment in found if after < moment <= last]


def elapsed_by_dateutil(parts, start, zone, last):
    """The same where the clocks are not changed from the start to `last`: dateutil says it on wall times."""
    offset = instant(start, zone) - int(start.replace(tzinfo=timezone.utc).timestamp())
    dateutil.rrule.datetime.MAXYEAR = shown(last, zone).year + 1
    found = []
    for wall in asked_of_dateutil(parts, start):
        moment = int(wall.replace(tzinfo=timezone.utc).timestamp()) + offset
        if moment > last:
            break
        found.append(moment)
    return found


def until_limit(text, zone, is_elapsed):
    """UNTIL as (last wall time, last instant), of which one is None."""
    if text.endswith("Z"):
        moment = datetime.datetime.strptime(text, "%Y%m%dT%H%M%SZ").replace(tzinfo=timezone.utc)
        return None, int(moment.timestamp())
    wall = datetime.datetime.strptime(text if "T" in text else text + "T235959", "%Y%m%dT%H%M%S")
    return (None, instant(wall, zone)) if is_elapsed else (wall, None)


def excluded(wall, zone, exceptions):
    """An excluded date names the wall time of the rule or the one that clocks show instead."""
    return wall in exceptions or shown(instant(wall, zone), zone) in exceptions
