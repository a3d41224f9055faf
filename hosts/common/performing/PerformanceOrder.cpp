// SPDX-License-Identifier: MIT
#include "hosts/common/performing/PerformanceOrder.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <QTimeZone>

using namespace dozely;

namespace
{
constexpr QLatin1StringView scheduleKey("Schedule");
constexpr QLatin1StringView bundlePathKey("Bundle Path");
constexpr QLatin1StringView parametersKey("Parameters");
constexpr QLatin1StringView dateKey("Date");
constexpr QLatin1StringView zoneKey("Time Zone");
constexpr QLatin1StringView placeKey("Place");
constexpr QLatin1StringView longestKey("Longest");
constexpr QLatin1StringView timeToEndKey("Time To End");

std::chrono::seconds secondsIn(const QVariant &value)
{
    return std::chrono::seconds(value.toLongLong());
}

bool isDuration(const QVariant &value)
{
    return value.typeId() == QMetaType::LongLong && value.toLongLong() >= 0;
}
} // namespace

QByteArray PerformanceOrder::toData() const
{
    return PropertyList::toData(QVariantMap{{scheduleKey, schedule},
                                            {bundlePathKey, bundlePath},
                                            {parametersKey, parameters},
                                            {dateKey, date.toUTC()},
                                            {zoneKey, QString::fromUtf8(date.timeZone().id())},
                                            {placeKey, place},
                                            {longestKey, static_cast<qint64>(longest.count())},
                                            {timeToEndKey, static_cast<qint64>(timeToEnd.count())}},
                                PropertyList::Format::Binary, PropertyList::ofTheSystem);
}

Result<PerformanceOrder> PerformanceOrder::fromData(const QByteArray &data)
{
    const auto list = PropertyList::fromData(data, nullptr, PropertyList::ofTheSystem);
    if (!list)
        return list.error();
    const QVariantMap map = list->toMap();
    for (const auto &key : {scheduleKey, bundlePathKey, zoneKey, placeKey}) {
        if (map.value(key).typeId() != QMetaType::QString)
            return Error{QString("the order has no \"%1\"").arg(key)};
    }
    if (map.value(dateKey).typeId() != QMetaType::QDateTime ||
        map.value(parametersKey).typeId() != QMetaType::QVariantMap)
        return Error{"the order has no date or no parameters"};
    if (!isDuration(map.value(longestKey)) || !isDuration(map.value(timeToEndKey)))
        return Error{"the order has no limits"};
    const QTimeZone zone(map.value(zoneKey).toString().toUtf8());
    if (!zone.isValid())
        return Error{"the order's time zone is not known"};
    return PerformanceOrder{
        map.value(scheduleKey).toString(), map.value(bundlePathKey).toString(),
        map.value(parametersKey).toMap(),  map.value(dateKey).toDateTime().toTimeZone(zone),
        map.value(placeKey).toString(),    secondsIn(map.value(longestKey)),
        secondsIn(map.value(timeToEndKey))};
}
