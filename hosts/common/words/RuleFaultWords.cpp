// SPDX-License-Identifier: MIT
#include "hosts/common/words/RuleFaultWords.h"

#include "hosts/common/calendar/RuleFault.h"

using namespace dozely;

namespace
{
/// What a part may look like; empty for a part of which there is nothing to show.
QString exampleOf(const QString &part)
{
    for (const QString example :
         {"FREQ=WEEKLY", "INTERVAL=2", "COUNT=10", "UNTIL=20260314T065500Z", "WKST=MO", "BYSECOND=0,30",
          "BYMINUTE=0,30", "BYHOUR=6,18", "BYDAY=MO,2TU,-1FR", "BYMONTHDAY=1,15,-1", "BYYEARDAY=1,-1",
          "BYWEEKNO=1,52", "BYMONTH=1,12", "BYSETPOS=1,-1"}) {
        if (example.startsWith(part + '='))
            return example;
    }
    return {};
}
} // namespace

QString RuleFaultWords::of(const Error &error)
{
    const QString code = QString::fromLatin1(error.name).section(' ', 0, 0);
    const QString about = QString::fromLatin1(error.name).section(' ', 1);
    const auto is = [&code](const char *fault) { return code == QLatin1StringView(fault); };
    if (is(RuleFault::characters))
        return tr("The rule has blanks or other characters that no rule has.");
    if (is(RuleFault::emptyPart))
        return tr("The rule has an empty part.");
    if (is(RuleFault::unknownPart))
        return tr("The rule has a part that is not known: %1.").arg(about);
    if (is(RuleFault::twice))
        return tr("The rule has %1 twice.").arg(about);
    if (is(RuleFault::noValue))
        return tr("%1 of the rule has no value.").arg(about);
    if (is(RuleFault::value))
        return tr("In the rule, %1 has no meaning. An example: %2")
            .arg(about, exampleOf(about.section('=', 0, 0)));
    if (is(RuleFault::calendar))
        return tr("The rule has %1: no other calendars than the Gregorian are supported.").arg(about);
    if (is(RuleFault::noFrequency))
        return tr("The rule has no FREQ.");
    if (is(RuleFault::countAndUntil))
        return tr("The rule has both COUNT and UNTIL.");
    if (is(RuleFault::numberedDays))
        return tr("A number in BYDAY needs FREQ=MONTHLY or FREQ=YEARLY.");
    if (is(RuleFault::numberedDaysInWeeks))
        return tr("A number in BYDAY cannot be beside BYWEEKNO.");
    if (is(RuleFault::monthDays))
        return tr("BYMONTHDAY cannot be beside FREQ=WEEKLY.");
    if (is(RuleFault::yearDays))
        return tr("BYYEARDAY cannot be beside FREQ=DAILY, WEEKLY or MONTHLY.");
    if (is(RuleFault::weeks))
        return tr("BYWEEKNO needs FREQ=YEARLY.");
    if (is(RuleFault::positions))
        return tr("BYSETPOS needs another BY part.");
    if (is(RuleFault::noDate))
        return tr("The rule gives no date within 100 years from its start.");
    if (is(RuleFault::tooLargeCount))
        return tr("The rule's COUNT is too large to be counted.");
    return tr("The rule cannot be used: %1.").arg(error.text);
}
