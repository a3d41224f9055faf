// SPDX-License-Identifier: MIT
#include "hosts/application/history/OutcomeWords.h"

#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/application/when/DateInWords.h"
#include "hosts/common/words/OutcomeNames.h"
#include "hosts/common/words/ReasonWords.h"

using namespace dozely;

namespace
{
bool isRun(const HistoryOutcome &outcome)
{
    return outcome.first.isValid() && outcome.first != outcome.date;
}
} // namespace

QString OutcomeWords::when(const HistoryOutcome &outcome, const QDateTime &now, const QLocale &locale)
{
    const QTimeZone zone = machineTimeZone();
    const QString date = DateInWords::of(outcome.date, now, zone, locale);
    return isRun(outcome)
               ? tr("%1 to %2", "two dates").arg(DateInWords::of(outcome.first, now, zone, locale), date)
               : date;
}

QString OutcomeWords::state(const HistoryOutcome &outcome, const QDateTime &now, const QLocale &locale)
{
    const QString name = OutcomeNames::of(outcome.state);
    if (outcome.postponedTo.isValid() && outcome.state == "postponed")
        return tr("put off until %1")
            .arg(DateInWords::of(outcome.postponedTo, now, machineTimeZone(), locale));
    if (!isRun(outcome) || !outcome.count)
        return name;
    const QString count = locale.toString(*outcome.count);
    return outcome.isCountExact ? tr("%1, %2 times", "missed; a number").arg(name, count)
                                : tr("%1, at least %2 times", "missed; a number").arg(name, count);
}

QString OutcomeWords::lateness(const HistoryOutcome &outcome, const QLocale &locale)
{
    constexpr std::chrono::seconds onTime(1);
    if (!outcome.lateness)
        return {};
    const std::chrono::milliseconds late(*outcome.lateness);
    return late < onTime ? tr("on time") : tr("%1 late", "a duration").arg(duration(late, locale));
}

QString OutcomeWords::duration(std::chrono::milliseconds duration, const QLocale &locale)
{
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    const qint64 seconds = std::chrono::duration_cast<std::chrono::seconds>(duration).count();
    const auto number = [&](qint64 value) { return locale.toString(value); };
    if (seconds < minute)
        return tr("%1 s").arg(number(seconds));
    if (seconds < hour)
        return tr("%1 min").arg(number(seconds / minute));
    if (seconds < day)
        return tr("%1 h %2 min").arg(number(seconds / hour), number(seconds % hour / minute));
    return tr("%1 d %2 h", "days and hours").arg(number(seconds / day), number(seconds % day / hour));
}

QString OutcomeWords::failure(const HistoryOutcome &outcome)
{
    if (!outcome.failure.isEmpty())
        return ReasonWords::of(outcome.failure.simplified());
    return outcome.exitStatus.value_or(0) != 0 ? OutcomeNames::ofExit(*outcome.exitStatus) : QString();
}
