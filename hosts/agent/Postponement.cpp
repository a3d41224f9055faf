// SPDX-License-Identifier: MIT
#include "hosts/agent/Postponement.h"

#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/plugin/Names.h"

#include <algorithm>
#include <chrono>

using namespace dozely;

namespace
{
/// From the date on, in seconds. Nobody who says "in ten minutes" wants it earlier than it was to be.
qint64 delayOf(Postponement choice, std::chrono::milliseconds remaining)
{
    using namespace std::chrono_literals;
    const std::chrono::seconds wanted = choice == Postponement::Hour ? 1h : 10min;
    const auto left = std::chrono::floor<std::chrono::seconds>(std::max(remaining, 0ms));
    return (left < wanted ? wanted - left : wanted).count();
}
} // namespace

NSNotification Postponements::order(Postponement choice, const QString &bundlePath, const QDateTime &date,
                                    const QDateTime &now)
{
    const bool isSkipped = choice == Postponement::SkipToday;
    QVariantMap occurrence{{OrderKey::bundlePath, bundlePath}, {OrderKey::date, date}};
    if (isSkipped)
        occurrence.insert(OrderKey::wholeDay, true);
    else
        occurrence.insert(OrderKey::delay, delayOf(choice, std::chrono::milliseconds(now.msecsTo(date))));
    return NSNotification(isSkipped ? OrderName::daemonMustSkip : OrderName::daemonMustPostpone,
                          QString(OrderSender::daemon), occurrence);
}
