// SPDX-License-Identifier: MIT
#include "hosts/daemon/CompactSchedules.h"

#include "hosts/daemon/StringPool.h"

#include <QDataStream>
#include <QIODevice>
#include <QSysInfo>

#include <cstdlib>

// Not in the namespace below, where a list of wall times would not find them.
static QDataStream &operator<<(QDataStream &stream, const WallTime &time)
{
    return stream << time.day << time.time;
}

static QDataStream &operator>>(QDataStream &stream, WallTime &time)
{
    return stream >> time.day >> time.time;
}

namespace
{
/// Nobody else reads it.
constexpr auto thisMachine =
    QSysInfo::ByteOrder == QSysInfo::LittleEndian ? QDataStream::LittleEndian : QDataStream::BigEndian;

template<class Policy>
qint8 numberOf(const std::optional<Policy> &policy)
{
    return policy ? static_cast<qint8>(*policy) : qint8(-1);
}

void freezePolicies(QDataStream &stream, const Schedule &schedule)
{
    stream << numberOf(schedule.missedPolicy)
           << static_cast<qint64>(schedule.missedLimit.value_or(std::chrono::seconds(-1)).count())
           << numberOf(schedule.overlapPolicy) << numberOf(schedule.afterAction);
}

template<class Policy>
std::optional<Policy> policyOf(qint8 number)
{
    return number >= 0 ? std::optional(static_cast<Policy>(number)) : std::nullopt;
}

void thawPolicies(QDataStream &stream, Schedule &schedule)
{
    qint8 missed = 0;
    qint64 limit = 0;
    qint8 overlap = 0;
    qint8 after = 0;
    stream >> missed >> limit >> overlap >> after;
    schedule.missedPolicy = policyOf<MissedPolicy>(missed);
    if (limit >= 0)
        schedule.missedLimit = std::chrono::seconds(limit);
    schedule.overlapPolicy = policyOf<OverlapPolicy>(overlap);
    schedule.afterAction = policyOf<AfterAction>(after);
}

void freezeRecurrence(QDataStream &stream, const SharedRecurrence &recurrence)
{
    stream << recurrence.has_value();
    if (recurrence)
        stream << recurrence->rule << recurrence->localStart << recurrence->extraDates
               << recurrence->excludedDates << recurrence->otherKeys;
}

SharedRecurrence thawRecurrence(QDataStream &stream, StringPool &pool)
{
    bool isThere = false;
    stream >> isThere;
    if (!isThere)
        return {};
    Recurrence recurrence;
    stream >> recurrence.rule >> recurrence.localStart >> recurrence.extraDates >> recurrence.excludedDates >>
        recurrence.otherKeys;
    recurrence.rule = pool.shared(recurrence.rule);
    recurrence.otherKeys = pool.shared(recurrence.otherKeys);
    return recurrence;
}
} // namespace

QByteArray CompactSchedules::freeze(const QList<Schedule> &schedules)
{
    QByteArray frozen;
    QDataStream stream(&frozen, QIODevice::WriteOnly);
    stream.setByteOrder(thisMachine);
    stream << static_cast<qint64>(schedules.size());
    for (const Schedule &schedule : schedules) {
        stream << schedule.identifier << schedule.name << schedule.isEnabled << schedule.bundlePath
               << schedule.parameters << schedule.date << schedule.timeZone << schedule.owner.has_value()
               << schedule.owner.value_or(0) << schedule.staysWhenOver << schedule.otherKeys;
        freezePolicies(stream, schedule);
        freezeRecurrence(stream, schedule.recurrence);
    }
    return frozen;
}

QList<Schedule> CompactSchedules::thaw(const QByteArray &frozen)
{
    QDataStream stream(frozen);
    stream.setByteOrder(thisMachine);
    qint64 count = 0;
    stream >> count;
    QList<Schedule> schedules;
    schedules.reserve(count);
    StringPool pool;
    for (qint64 i = 0; i < count; ++i) {
        Schedule schedule;
        bool hasOwner = false;
        quint32 owner = 0;
        stream >> schedule.identifier >> schedule.name >> schedule.isEnabled >> schedule.bundlePath >>
            schedule.parameters >> schedule.date >> schedule.timeZone >> hasOwner >> owner >>
            schedule.staysWhenOver >> schedule.otherKeys;
        thawPolicies(stream, schedule);
        schedule.recurrence = thawRecurrence(stream, pool);
        if (hasOwner)
            schedule.owner = owner;
        schedule.bundlePath = pool.shared(schedule.bundlePath);
        schedule.timeZone = pool.shared(schedule.timeZone);
        schedule.parameters = pool.shared(schedule.parameters);
        schedule.otherKeys = pool.shared(schedule.otherKeys);
        schedules += std::move(schedule);
    }
    return schedules;
}
