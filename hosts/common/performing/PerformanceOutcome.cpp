// SPDX-License-Identifier: MIT
#include "hosts/common/performing/PerformanceOutcome.h"

#include "DozelyKit/core/files/PropertyList.h"

using namespace dozely;

namespace
{
constexpr QLatin1StringView hasBegunKey("Has Begun");
constexpr QLatin1StringView failureKey("Failure");
constexpr QLatin1StringView exitStatusKey("Exit Status");
constexpr QLatin1StringView endedKey("Ended");
constexpr QLatin1StringView outputKey("Output");
constexpr QLatin1StringView deliveryKey("Delivery");
constexpr QLatin1StringView hasDiedKey("Has Died");
constexpr QLatin1StringView hasRaisedKey("Has Raised");
} // namespace

QString PerformanceOutcome::reason() const
{
    if (!failure.isEmpty() || exitStatus.value_or(0) == 0)
        return failure;
    return *exitStatus > 0 ? QString("its program ended with status %1").arg(*exitStatus)
                           : QString("its program could not be started");
}

QByteArray PerformanceOutcome::toData() const
{
    QVariantMap map{{hasBegunKey, hasBegun},
                    {failureKey, failure},
                    {endedKey, ended},
                    {outputKey, output},
                    {deliveryKey, static_cast<qint64>(delivery)},
                    {hasDiedKey, hasDied},
                    {hasRaisedKey, hasRaised}};
    if (exitStatus)
        map.insert(exitStatusKey, *exitStatus);
    return PropertyList::toData(map, PropertyList::Format::Binary);
}

Result<PerformanceOutcome> PerformanceOutcome::fromData(const QByteArray &data)
{
    const auto list = PropertyList::fromData(data);
    if (!list)
        return list.error();
    const QVariantMap map = list->toMap();
    const QVariant status = map.value(exitStatusKey);
    if (map.value(hasBegunKey).typeId() != QMetaType::Bool ||
        map.value(hasDiedKey).typeId() != QMetaType::Bool ||
        map.value(failureKey).typeId() != QMetaType::QString ||
        map.value(endedKey).typeId() != QMetaType::QDateTime ||
        map.value(outputKey).typeId() != QMetaType::QByteArray ||
        map.value(hasRaisedKey).typeId() != QMetaType::Bool ||
        (status.isValid() && status.typeId() != QMetaType::LongLong))
        return Error{"it is no outcome of an action"};
    const QVariant delivery = map.value(deliveryKey);
    if (delivery.typeId() != QMetaType::LongLong || delivery.toLongLong() < 0 ||
        delivery.toLongLong() > static_cast<qint64>(Delivery::Unknown))
        return Error{"it does not say what became of an action"};
    PerformanceOutcome outcome{map.value(hasBegunKey).toBool(), map.value(failureKey).toString(),
                               status.isValid() ? std::optional<qint64>(status.toLongLong()) : std::nullopt,
                               map.value(endedKey).toDateTime(), map.value(outputKey).toByteArray()};
    outcome.hasRaised = map.value(hasRaisedKey).toBool();
    outcome.delivery = static_cast<Delivery>(delivery.toInt());
    outcome.hasDied = map.value(hasDiedKey).toBool();
    return outcome;
}
