// SPDX-License-Identifier: MIT
#include "hosts/daemon/CompactSchedules.h"

#include "hosts/daemon/StringPool.h"

#include <QDataStream>
#include <QIODevice>

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

QByteArray CompactSchedules::freeze(const QList<Schedule> &schedules)
{
    QByteArray frozen;
    QDataStream stream(&frozen, QIODevice::WriteOnly);
    stream << static_cast<qint64>(schedules.size());
    for (const Schedule &schedule : schedules) {
        stream << schedule.identifier << schedule.name << schedule.isEnabled << schedule.bundlePath
               << schedule.parameters << schedule.date << schedule.timeZone << schedule.owner.has_value()
               << schedule.owner.value_or(0) << schedule.staysWhenOver << schedule.otherKeys;
    }
    return frozen;
}

QList<Schedule> CompactSchedules::thaw(const QByteArray &frozen)
{
    QDataStream stream(frozen);
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

void CompactSchedules::giveFreeMemoryBack()
{
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}
