// SPDX-License-Identifier: MIT
#include "hosts/common/performing/PerformanceOrder.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <QTimeZone>

using namespace dozely;

namespace
{
constexpr QLatin1StringView scheduleKey("Schedule");
constexpr QLatin1StringView scheduleIdentifierKey("Schedule Identifier");
constexpr QLatin1StringView bundlePathKey("Bundle Path");
constexpr QLatin1StringView parametersKey("Parameters");
constexpr QLatin1StringView dateKey("Date");
constexpr QLatin1StringView zoneKey("Time Zone");
constexpr QLatin1StringView placeKey("Place");
constexpr QLatin1StringView placeMarkKey("Place Mark");
constexpr QLatin1StringView limitsKey("Limits");
constexpr QLatin1StringView roleKey("Role");
constexpr QLatin1StringView deedKey("Deed");
constexpr QLatin1StringView consoleUserKey("Console User");
constexpr QLatin1StringView consoleUserNameKey("Console User Name");

constexpr QLatin1StringView daemonRole("daemon");
constexpr QLatin1StringView sessionRole("session");
} // namespace

QByteArray PerformanceOrder::toData() const
{
    QVariantMap map{{scheduleKey, schedule},
                    {bundlePathKey, bundlePath},
                    {parametersKey, parameters},
                    {dateKey, date.toUTC()},
                    {zoneKey, QString::fromUtf8(date.timeZone().id())},
                    {placeKey, place},
                    {placeMarkKey, placeMark},
                    {limitsKey, limits.toMap()},
                    {roleKey, QString(role == Role::Session ? sessionRole : daemonRole)},
                    {deedKey, static_cast<qint64>(deed)},
                    {consoleUserNameKey, consoleUserName}};
    if (!scheduleIdentifier.isEmpty())
        map.insert(scheduleIdentifierKey, scheduleIdentifier);
    if (consoleUser)
        map.insert(consoleUserKey, static_cast<qint64>(*consoleUser));
    return PropertyList::toData(map, PropertyList::Format::Binary, PropertyList::ofTheSystem);
}

Result<PerformanceOrder> PerformanceOrder::fromData(const QByteArray &data)
{
    const auto list = PropertyList::fromData(data, nullptr, PropertyList::ofTheSystem);
    if (!list)
        return list.error();
    const QVariantMap map = list->toMap();
    for (const auto &key : {scheduleKey, bundlePathKey, zoneKey, placeKey, consoleUserNameKey}) {
        if (map.value(key).typeId() != QMetaType::QString)
            return Error{QString("the order has no \"%1\"").arg(key)};
    }
    if (map.value(dateKey).typeId() != QMetaType::QDateTime ||
        map.value(parametersKey).typeId() != QMetaType::QVariantMap)
        return Error{"the order has no date or no parameters"};
    if (map.value(placeMarkKey).typeId() != QMetaType::QByteArray)
        return Error{"the order has no mark of its place"};
    if (map.value(limitsKey).typeId() != QMetaType::QVariantMap)
        return Error{"the order has no limits"};
    const auto limits = ActionLimits::fromMap(map.value(limitsKey).toMap());
    if (!limits)
        return limits.error();
    const QString role = map.value(roleKey).toString();
    if (role != daemonRole && role != sessionRole)
        return Error{"the order does not say who is to act"};
    const QTimeZone zone(map.value(zoneKey).toString().toUtf8());
    if (!zone.isValid())
        return Error{"the order's time zone is not known"};
    const QVariant deed = map.value(deedKey);
    const QVariant user = map.value(consoleUserKey);
    const bool isDeed = deed.typeId() == QMetaType::LongLong && deed.toLongLong() >= 0 &&
                        deed.toLongLong() <= static_cast<qint64>(Deed::Announce);
    if (!isDeed || (user.isValid() && user.typeId() != QMetaType::LongLong))
        return Error{"the order does not say what is to be done"};
    PerformanceOrder order{map.value(scheduleKey).toString(),
                           map.value(bundlePathKey).toString(),
                           map.value(parametersKey).toMap(),
                           map.value(dateKey).toDateTime().toTimeZone(zone),
                           map.value(placeKey).toString(),
                           map.value(placeMarkKey).toByteArray(),
                           *limits};
    order.role = role == sessionRole ? Role::Session : Role::Daemon;
    order.deed = static_cast<Deed>(deed.toInt());
    order.consoleUserName = map.value(consoleUserNameKey).toString();
    order.scheduleIdentifier = map.value(scheduleIdentifierKey).toString();
    if (user.isValid())
        order.consoleUser = static_cast<quint32>(user.toLongLong());
    return order;
}
