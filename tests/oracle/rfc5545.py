# SPDX-License-Identifier: MIT
"""The examples of RFC 5545, 3.8.5.3 and 3.3.10, with the dates that its text gives. All are in America/New_York.

A year, a month and days stand as "1997 Sep 2 4-6"; what goes on has "..." at its end. Without times of its own an example
has those of its start.
"""
MONTHS = dict((name, number) for number, name in enumerate(
    "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split(), 1))


def days(text):
    """The days of such a text, as (year, month, day)."""
    year = month = None
    for word in text.replace("...", "").split():
        if word in MONTHS:
            month = MONTHS[word]
        elif len(word) == 4 and word.isdigit():
            year = int(word)
        else:
            first, _, last = word.partition("-")
            for day in range(int(first), int(last or first) + 1):
                yield year, month, day


# (rule, start, days[, times of day][, excluded dates])
EXAMPLES = [
    ("FREQ=DAILY;COUNT=10", "19970902T090000", "1997 Sep 2-11"),
    ("FREQ=DAILY;UNTIL=19971224T000000Z", "19970902T090000", "1997 Sep 2-30 Oct 1-31 Nov 1-30 Dec 1-23"),
    ("FREQ=DAILY;INTERVAL=2", "19970902T090000",
     "1997 Sep 2 4 6 8 10 12 14 16 18 20 22 24 26 28 30 Oct 2 4 6 8 10 12 14 16 18 20 22 24 26 28 30 Nov 1 3 ..."),
    ("FREQ=DAILY;INTERVAL=10;COUNT=5", "19970902T090000", "1997 Sep 2 12 22 Oct 2 12"),
    ("FREQ=YEARLY;UNTIL=20000131T140000Z;BYMONTH=1;BYDAY=SU,MO,TU,WE,TH,FR,SA", "19980101T090000",
     "1998 Jan 1-31 1999 Jan 1-31 2000 Jan 1-31"),
    ("FREQ=DAILY;UNTIL=20000131T140000Z;BYMONTH=1", "19980101T090000",
     "1998 Jan 1-31 1999 Jan 1-31 2000 Jan 1-31"),
    ("FREQ=WEEKLY;COUNT=10", "19970902T090000", "1997 Sep 2 9 16 23 30 Oct 7 14 21 28 Nov 4"),
    ("FREQ=WEEKLY;UNTIL=19971224T000000Z", "19970902T090000",
     "1997 Sep 2 9 16 23 30 Oct 7 14 21 28 Nov 4 11 18 25 Dec 2 9 16 23"),
    ("FREQ=WEEKLY;INTERVAL=2;WKST=SU", "19970902T090000",
     "1997 Sep 2 16 30 Oct 14 28 Nov 11 25 Dec 9 23 1998 Jan 6 20 Feb 3 17 ..."),
    ("FREQ=WEEKLY;UNTIL=19971007T000000Z;WKST=SU;BYDAY=TU,TH", "19970902T090000",
     "1997 Sep 2 4 9 11 16 18 23 25 30 Oct 2"),
    ("FREQ=WEEKLY;COUNT=10;WKST=SU;BYDAY=TU,TH", "19970902T090000", "1997 Sep 2 4 9 11 16 18 23 25 30 Oct 2"),
    ("FREQ=WEEKLY;INTERVAL=2;UNTIL=19971224T000000Z;WKST=SU;BYDAY=MO,WE,FR", "19970901T090000",
     "1997 Sep 1 3 5 15 17 19 29 Oct 1 3 13 15 17 27 29 31 Nov 10 12 14 24 26 28 Dec 8 10 12 22"),
    ("FREQ=WEEKLY;INTERVAL=2;COUNT=8;WKST=SU;BYDAY=TU,TH", "19970902T090000", "1997 Sep 2 4 16 18 30 Oct 2 14 16"),
    ("FREQ=MONTHLY;COUNT=10;BYDAY=1FR", "19970905T090000",
     "1997 Sep 5 Oct 3 Nov 7 Dec 5 1998 Jan 2 Feb 6 Mar 6 Apr 3 May 1 Jun 5"),
    ("FREQ=MONTHLY;UNTIL=19971224T000000Z;BYDAY=1FR", "19970905T090000", "1997 Sep 5 Oct 3 Nov 7 Dec 5"),
    ("FREQ=MONTHLY;INTERVAL=2;COUNT=10;BYDAY=1SU,-1SU", "19970907T090000",
     "1997 Sep 7 28 Nov 2 30 1998 Jan 4 25 Mar 1 29 May 3 31"),
    ("FREQ=MONTHLY;COUNT=6;BYDAY=-2MO", "19970922T090000", "1997 Sep 22 Oct 20 Nov 17 Dec 22 1998 Jan 19 Feb 16"),
    ("FREQ=MONTHLY;BYMONTHDAY=-3", "19970928T090000", "1997 Sep 28 Oct 29 Nov 28 Dec 29 1998 Jan 29 Feb 26 ..."),
    ("FREQ=MONTHLY;COUNT=10;BYMONTHDAY=2,15", "19970902T090000",
     "1997 Sep 2 15 Oct 2 15 Nov 2 15 Dec 2 15 1998 Jan 2 15"),
    ("FREQ=MONTHLY;COUNT=10;BYMONTHDAY=1,-1", "19970930T090000",
     "1997 Sep 30 Oct 1 31 Nov 1 30 Dec 1 31 1998 Jan 1 31 Feb 1"),
    ("FREQ=MONTHLY;INTERVAL=18;COUNT=10;BYMONTHDAY=10,11,12,13,14,15", "19970910T090000",
     "1997 Sep 10-15 1999 Mar 10-13"),
    ("FREQ=MONTHLY;INTERVAL=2;BYDAY=TU", "19970902T090000",
     "1997 Sep 2 9 16 23 30 Nov 4 11 18 25 1998 Jan 6 13 20 27 Mar 3 10 17 24 31 ..."),
    ("FREQ=YEARLY;COUNT=10;BYMONTH=6,7", "19970610T090000",
     "1997 Jun 10 Jul 10 1998 Jun 10 Jul 10 1999 Jun 10 Jul 10 2000 Jun 10 Jul 10 2001 Jun 10 Jul 10"),
    ("FREQ=YEARLY;INTERVAL=2;COUNT=10;BYMONTH=1,2,3", "19970310T090000",
     "1997 Mar 10 1999 Jan 10 Feb 10 Mar 10 2001 Jan 10 Feb 10 Mar 10 2003 Jan 10 Feb 10 Mar 10"),
    ("FREQ=YEARLY;INTERVAL=3;COUNT=10;BYYEARDAY=1,100,200", "19970101T090000",
     "1997 Jan 1 Apr 10 Jul 19 2000 Jan 1 Apr 9 Jul 18 2003 Jan 1 Apr 10 Jul 19 2006 Jan 1"),
    ("FREQ=YEARLY;BYDAY=20MO", "19970519T090000", "1997 May 19 1998 May 18 1999 May 17 ..."),
    ("FREQ=YEARLY;BYWEEKNO=20;BYDAY=MO", "19970512T090000", "1997 May 12 1998 May 11 1999 May 17 ..."),
    ("FREQ=YEARLY;BYMONTH=3;BYDAY=TH", "19970313T090000",
     "1997 Mar 13 20 27 1998 Mar 5 12 19 26 1999 Mar 4 11 18 25 ..."),
    ("FREQ=YEARLY;BYDAY=TH;BYMONTH=6,7,8", "19970605T090000",
     "1997 Jun 5 12 19 26 Jul 3 10 17 24 31 Aug 7 14 21 28 1998 Jun 4 11 18 25 Jul 2 9 16 23 30 Aug 6 13 20 27"
     " 1999 Jun 3 10 17 24 Jul 1 8 15 22 29 Aug 5 12 19 26 ..."),
    # Its start is excluded there; here a start that the rule does not give is no occurrence anyway.
    ("FREQ=MONTHLY;BYDAY=FR;BYMONTHDAY=13", "19970902T090000",
     "1998 Feb 13 Mar 13 Nov 13 1999 Aug 13 2000 Oct 13 ...", None, ["1997-09-02T09:00:00"]),
    ("FREQ=MONTHLY;BYDAY=SA;BYMONTHDAY=7,8,9,10,11,12,13", "19970913T090000",
     "1997 Sep 13 Oct 11 Nov 8 Dec 13 1998 Jan 10 Feb 7 Mar 7 Apr 11 May 9 Jun 13 ..."),
    ("FREQ=YEARLY;INTERVAL=4;BYMONTH=11;BYDAY=TU;BYMONTHDAY=2,3,4,5,6,7,8", "19961105T090000",
     "1996 Nov 5 2000 Nov 7 2004 Nov 2 ..."),
    ("FREQ=MONTHLY;COUNT=3;BYDAY=TU,WE,TH;BYSETPOS=3", "19970904T090000", "1997 Sep 4 Oct 7 Nov 6"),
    ("FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-2", "19970929T090000",
     "1997 Sep 29 Oct 30 Nov 27 Dec 30 1998 Jan 29 Feb 26 Mar 30 ..."),
    # The text has UNTIL=19970902T170000Z, 13:00 in New York, and 15:00 among the dates: an acknowledged slip (erratum 3883).
    ("FREQ=HOURLY;INTERVAL=3;UNTIL=19970902T210000Z", "19970902T090000", "1997 Sep 2", "09:00 12:00 15:00"),
    ("FREQ=HOURLY;INTERVAL=3;UNTIL=19970902T170000Z", "19970902T090000", "1997 Sep 2", "09:00 12:00"),
    ("FREQ=MINUTELY;INTERVAL=15;COUNT=6", "19970902T090000", "1997 Sep 2", "09:00 09:15 09:30 09:45 10:00 10:15"),
    ("FREQ=MINUTELY;INTERVAL=90;COUNT=4", "19970902T090000", "1997 Sep 2", "09:00 10:30 12:00 13:30"),
    ("FREQ=DAILY;BYHOUR=9,10,11,12,13,14,15,16;BYMINUTE=0,20,40", "19970902T090000", "1997 Sep 2 3 ...",
     " ".join(f"{hour:02}:{minute:02}" for hour in range(9, 17) for minute in (0, 20, 40))),
    ("FREQ=MINUTELY;INTERVAL=20;BYHOUR=9,10,11,12,13,14,15,16", "19970902T090000", "1997 Sep 2 3 ...",
     " ".join(f"{hour:02}:{minute:02}" for hour in range(9, 17) for minute in (0, 20, 40))),
    ("FREQ=WEEKLY;INTERVAL=2;COUNT=4;BYDAY=TU,SU;WKST=MO", "19970805T090000", "1997 Aug 5 10 19 24"),
    ("FREQ=WEEKLY;INTERVAL=2;COUNT=4;BYDAY=TU,SU;WKST=SU", "19970805T090000", "1997 Aug 5 17 19 31"),
    ("FREQ=MONTHLY;BYMONTHDAY=15,30;COUNT=5", "20070115T090000", "2007 Jan 15 30 Feb 15 Mar 15 30"),
    ("FREQ=YEARLY;INTERVAL=2;BYMONTH=1;BYDAY=SU;BYHOUR=8,9;BYMINUTE=30", "19970105T083000",
     "1997 Jan 5 12 19 26 1999 Jan 3 10 17 24 31 ...", "08:30 09:30"),
]
