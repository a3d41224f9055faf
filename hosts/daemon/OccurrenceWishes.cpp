// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceWishes.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/OrderReceiver.h"
#include "hosts/common/orders/OrderRefusal.h"
#include "hosts/daemon/ScheduleKeeper.h"

#include <QTimeZone>

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
using enum OrderRefusal::Kind;

QString textOf(const QDateTime &date)
{
    return date.toUTC().toString(Qt::ISODate);
}

QString senderOf(const ReceivedOrder &order)
{
    return order.peer ? QString("user %1").arg(*order.peer) : QString("an unknown user");
}

/// Occurrences are dated with whole seconds.
QDateTime wholeSecond(const QDateTime &date)
{
    const qint64 milliseconds = date.toMSecsSinceEpoch();
    return QDateTime::fromSecsSinceEpoch((milliseconds + 999) / 1000, Qt::UTC);
}
} // namespace

OccurrenceWishes::OccurrenceWishes(ScheduleKeeper &keeper, const AnticipationPlan &anticipation,
                                   const Clock &clock, AnticipationPlan::ConsoleUserNow consoleUser)
    : m_keeper(keeper), m_anticipation(anticipation), m_clock(clock), m_consoleUser(std::move(consoleUser))
{
}

/// What an order is about and its sender may decide upon; never nothing.
QList<Occurrence> OccurrenceWishes::meant(const ReceivedOrder &order, bool mayBeAhead) const
{
    const QVariant date = order.userInfo.value(OrderKey::date);
    if (date.isValid() && (date.typeId() != QMetaType::QDateTime || !date.toDateTime().isValid()))
        throw OrderRefusal(Impossible, "it names something that is no date");
    const QString identifier = order.userInfo.value(OrderKey::scheduleIdentifier).toString();
    if (identifier.isEmpty()) {
        QList<Occurrence> occurrences = m_anticipation.removable(
            order.peer, RootFolder::owner(), order.userInfo.value(OrderKey::bundlePath).toString(),
            date.toDateTime().toUTC(), m_consoleUser);
        if (occurrences.isEmpty())
            throw OrderRefusal(NotPermitted, "there is no such occurrence for that user to decide upon");
        return occurrences;
    }
    const Occurrence occurrence = meantOf(identifier, date, mayBeAhead);
    if (!m_anticipation.mayRemove(occurrence, order.peer, RootFolder::owner(), m_consoleUser))
        throw OrderRefusal(NotPermitted,
                           QString("schedule %1 belongs to another user").arg(logLabel(identifier)));
    return {occurrence};
}

/// The next one to come, or the one with this date, or that is performed at it.
Occurrence OccurrenceWishes::meantOf(const QString &identifier, const QVariant &date, bool mayBeAhead) const
{
    const Scheduler &scheduler = m_keeper.scheduler();
    const auto place = scheduler.placeOf(identifier);
    if (!place)
        throw OrderRefusal(Impossible, QString("there is no schedule %1").arg(logLabel(identifier)));
    const QList<Occurrence> pending = scheduler.pendingOf(*place);
    if (!date.isValid()) {
        if (pending.isEmpty())
            throw OrderRefusal(Impossible,
                               QString("schedule %1 has nothing to come").arg(logLabel(identifier)));
        return pending.first();
    }
    const QDateTime wanted = date.toDateTime().toUTC();
    for (const Occurrence &occurrence : pending) {
        if (occurrence.date == wanted || occurrence.moment() == wanted)
            return occurrence;
    }
    Schedule schedule = scheduler.schedules().at(*place);
    if (!scheduler.gives(*place, wanted))
        throw OrderRefusal(Impossible, QString("schedule %1 has no occurrence at %2 that is to come")
                                           .arg(logLabel(identifier), textOf(wanted)));
    if (!mayBeAhead)
        throw OrderRefusal(Impossible, QString("the occurrence at %1 is not the next one of schedule %2")
                                           .arg(textOf(wanted), logLabel(identifier)));
    schedule.date = wanted;
    return {schedule, wanted};
}

void OccurrenceWishes::skip(const ReceivedOrder &order)
{
    const bool isWholeDay = order.userInfo.value(OrderKey::wholeDay).toBool();
    for (const Occurrence &occurrence : meant(order, true)) {
        if (isWholeDay)
            skipDayOf(occurrence, senderOf(order));
        else
            skipOne(occurrence, m_clock.currentDate(), senderOf(order));
    }
}

/// What the schedule has to come on that day, in its own zone: the current one with those after it, and what
/// was postponed to that day.
void OccurrenceWishes::skipDayOf(const Occurrence &occurrence, const QString &sender)
{
    const Scheduler &scheduler = m_keeper.scheduler();
    const QTimeZone zone = occurrence.schedule.zone();
    const QDate day = occurrence.moment().toTimeZone(zone).date();
    const QDateTime end = day.addDays(1).startOfDay(zone).toUTC().addMSecs(-1);
    QList<Occurrence> others;
    if (const auto place = scheduler.placeOf(occurrence.schedule.identifier))
        others = scheduler.pendingOf(*place);
    skipOne(occurrence, end, sender);
    for (const Occurrence &other : std::as_const(others)) {
        if (other.date != occurrence.date && other.moment() <= end)
            skipOne(other, end, sender);
    }
}

void OccurrenceWishes::skipOne(const Occurrence &occurrence, const QDateTime &upTo, const QString &sender)
{
    const QString &identifier = occurrence.schedule.identifier;
    const auto ahead = m_keeper.scheduler().record().datesBetween(
        identifier, m_clock.currentDate(), QDateTime({9999, 12, 31}, {23, 59, 59}, Qt::UTC));
    if (ahead.size() >= mostAhead)
        throw OrderRefusal(Impossible, QString("%1 occurrences of schedule %2 are decided upon already")
                                           .arg(QString::number(mostAhead), logLabel(identifier)));
    const OccurrenceSeries::Run run = m_keeper.scheduler().runUpTo(occurrence, upTo);
    if (const auto noted = m_keeper.noteRemoved(occurrence, upTo); !noted)
        throw OrderRefusal(Impossible, noted.error().text);
    if (run.count > 1)
        ZDRLog("%@: %lld occurrences from %@ to %@ are skipped at the wish of %@", occurrence.label(),
               static_cast<qlonglong>(run.count), textOf(run.first), textOf(run.last), sender);
    else
        ZDRLog("%@: the occurrence at %@ is skipped at the wish of %@", occurrence.label(),
               textOf(occurrence.moment()), sender);
}

void OccurrenceWishes::postpone(const ReceivedOrder &order)
{
    bool isNumber = false;
    const qint64 delay = order.userInfo.value(OrderKey::delay).toLongLong(&isNumber);
    if (!isNumber || delay < 1 || delay > longestDelay)
        throw OrderRefusal(Impossible,
                           QString("an occurrence is postponed by 1 to %1 seconds").arg(longestDelay));
    for (const Occurrence &occurrence : meant(order, false))
        postponeOne(occurrence, delay, senderOf(order));
}

/// Of several that are due the latest is performed later, the others are missed.
QDateTime OccurrenceWishes::postponeOne(const Occurrence &occurrence, qint64 delay, const QString &sender)
{
    Scheduler &scheduler = m_keeper.scheduler();
    const OccurrenceSeries::Run run = scheduler.dueRun(occurrence);
    Occurrence latest = occurrence;
    latest.date = run.last;
    const QDateTime to = wholeSecond(std::max(latest.moment(), m_clock.currentDate()).addSecs(delay));
    const OccurrenceSeries::Run earlier = scheduler.runBefore(occurrence, run.last);
    if (const auto noted = m_keeper.notePostponed(latest, to); !noted)
        throw OrderRefusal(Impossible, noted.error().text);
    if (earlier.count > 0) {
        m_keeper.noteRun(occurrence.schedule, earlier);
        m_keeper.flush();
        ZDRLog("%@: %lld occurrences from %@ to %@ were missed", occurrence.label(),
               static_cast<qlonglong>(earlier.count), textOf(earlier.first), textOf(earlier.last));
    }
    ZDRLog("%@: the occurrence at %@ is postponed to %@ at the wish of %@", occurrence.label(),
           textOf(latest.moment()), textOf(to), sender);
    return to;
}

Result<QDateTime> OccurrenceWishes::skipOf(const QString &identifier, const std::optional<QDateTime> &date,
                                           const QString &who)
{
    try {
        const Occurrence occurrence = meantOf(identifier, date ? QVariant(*date) : QVariant(), true);
        skipOne(occurrence, m_clock.currentDate(), who);
        return occurrence.date;
    } catch (const OrderRefusal &refusal) {
        return Error{refusal.reason()};
    }
}

Result<QDateTime> OccurrenceWishes::postponeOf(const QString &identifier,
                                               const std::optional<QDateTime> &date,
                                               std::chrono::seconds delay, const QString &who)
{
    try {
        if (delay.count() < 1 || delay.count() > longestDelay)
            return Error{QString("an occurrence is postponed by 1 to %1 seconds").arg(longestDelay)};
        return postponeOne(meantOf(identifier, date ? QVariant(*date) : QVariant(), false), delay.count(),
                           who);
    } catch (const OrderRefusal &refusal) {
        return Error{refusal.reason()};
    }
}

bool OccurrenceWishes::isObeyed(const QString &identifier, const std::optional<QDateTime> &date,
                                quint32 user) const
{
    try {
        return m_anticipation.mayRemove(meantOf(identifier, date ? QVariant(*date) : QVariant(), true), user,
                                        RootFolder::owner(), m_consoleUser);
    } catch (const OrderRefusal &) {
        return false;
    }
}
