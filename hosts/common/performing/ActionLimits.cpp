// SPDX-License-Identifier: MIT
#include "hosts/common/performing/ActionLimits.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"

#include <functional>
#include <limits>

using namespace dozely;

namespace
{
/// One limit: its key, the integers that it may have, and its place in the value.
struct Limit {
    QLatin1StringView key;
    qint64 least;
    qint64 most;
    std::function<void(ActionLimits &, qint64)> set;
    std::function<std::optional<qint64>(const ActionLimits &)> get;
};

constexpr qint64 day = 24 * 60 * 60; // seconds

Limit weight(QLatin1StringView key, std::optional<quint64> ProgramLimits::*member)
{
    return {key, 1, 10'000,
            [member](ActionLimits &limits, qint64 value) {
                limits.program.*member = static_cast<quint64>(value);
            },
            [member](const ActionLimits &limits) { return limits.program.*member; }};
}

Limit duration(QLatin1StringView key, qint64 most, std::chrono::seconds ActionLimits::*member)
{
    return {key, 0, most,
            [member](ActionLimits &limits, qint64 value) { limits.*member = std::chrono::seconds(value); },
            [member](const ActionLimits &limits) { return (limits.*member).count(); }};
}

/// The ranges are those of setpriority(2) and systemd.resource-control(5); those of time keep sums of seconds
/// sensible.
const QList<Limit> &allLimits()
{
    static const QList<Limit> limits = [] {
        Limit nice{LimitKey::nice, -20, 19,
                   [](ActionLimits &to, qint64 value) { to.program.nice = static_cast<int>(value); },
                   [](const ActionLimits &of) { return of.program.nice; }};
        Limit memory = weight(LimitKey::memory, &ProgramLimits::memory);
        memory.least = 1 << 20;
        memory.most = std::numeric_limits<qint64>::max();
        return QList<Limit>{nice,
                            weight(LimitKey::cpuWeight, &ProgramLimits::cpuWeight),
                            weight(LimitKey::ioWeight, &ProgramLimits::ioWeight),
                            memory,
                            duration(LimitKey::time, 366 * day, &ActionLimits::longest),
                            duration(LimitKey::timeToEnd, day, &ActionLimits::timeToEnd)};
    }();
    return limits;
}

/// The integer of a property list; nothing for any other type and for what is out of range.
std::optional<qint64> valueOf(const Limit &limit, const QVariant &value)
{
    const int type = value.typeId();
    if (type != QMetaType::LongLong && type != QMetaType::Int)
        return {};
    const qint64 number = value.toLongLong();
    return number >= limit.least && number <= limit.most ? std::optional(number) : std::nullopt;
}

/// Nothing for a key that is not there; a line in the log for a value that is of no use.
std::optional<qint64> readFrom(const QVariantMap &map, const Limit &limit, const QString &whose)
{
    const auto found = map.constFind(limit.key);
    if (found == map.cend())
        return {};
    const auto value = valueOf(limit, *found);
    if (!value)
        ZDRLog("%@: the value of \"%@\" is no integer from %@ to %@ and is not heeded", whose,
               QString(limit.key), QString::number(limit.least), QString::number(limit.most));
    return value;
}
} // namespace

ActionLimits ActionLimits::read(const QString &schedule, const QVariantMap &parameters,
                                const QString &bundlePath, const QVariantMap &info)
{
    ActionLimits limits;
    for (const Limit &limit : allLimits()) {
        const auto given = readFrom(parameters, limit, QString("Schedule \"%1\"").arg(logLabel(schedule)));
        const auto usual = given ? given : readFrom(info, limit, logLabel(bundlePath));
        if (usual)
            limit.set(limits, *usual);
    }
    return limits;
}

QVariantMap ActionLimits::toMap() const
{
    QVariantMap map;
    for (const Limit &limit : allLimits()) {
        if (const auto value = limit.get(*this))
            map.insert(limit.key, *value);
    }
    return map;
}

Result<ActionLimits> ActionLimits::fromMap(const QVariantMap &map)
{
    ActionLimits limits;
    for (const Limit &limit : allLimits()) {
        const auto found = map.constFind(limit.key);
        const auto value = found == map.cend() ? std::nullopt : valueOf(limit, *found);
        if (found != map.cend() && !value)
            return Error{QString("\"%1\" is no limit").arg(limit.key)};
        if (value)
            limit.set(limits, *value);
    }
    return limits;
}
