// SPDX-License-Identifier: MIT
#include "hosts/daemon/MissedRule.h"

#include "DozelyKit/plugin/Names.h"

#include <algorithm>

using namespace dozely;

namespace
{
constexpr std::chrono::milliseconds shortest = std::chrono::seconds(1);

/// Seconds; absent for what is no such number.
std::optional<std::chrono::seconds> limitIn(const QVariant &value)
{
    bool isNumber = false;
    const qint64 seconds = value.toLongLong(&isNumber);
    return isNumber && seconds >= 0 ? std::optional(std::chrono::seconds(seconds)) : std::nullopt;
}
} // namespace

MissedRule MissedRule::of(const Schedule &schedule, const QVariantMap &bundleInfo, qint32 timeOut)
{
    MissedRule rule{MissedPolicy::PlugIn, schedule.missedLimit, timeOut};
    if (schedule.missedPolicy) {
        rule.policy = *schedule.missedPolicy;
        return rule;
    }
    const auto named =
        SchedulePolicies::missedPolicyNamed(bundleInfo.value(InfoKey::missedPolicy).toString());
    rule.policy = named.value_or(MissedPolicy::PlugIn);
    if (!rule.limit)
        rule.limit = limitIn(bundleInfo.value(InfoKey::missedLimit));
    return rule;
}

std::optional<std::chrono::milliseconds> MissedRule::allowedLateness() const
{
    switch (policy) {
    case MissedPolicy::Skip:
        return shortest;
    case MissedPolicy::RunOnce:
        return limit ? std::optional(std::max<std::chrono::milliseconds>(shortest, *limit)) : std::nullopt;
    case MissedPolicy::PlugIn:
        break;
    }
    return std::max(shortest, std::chrono::milliseconds(-static_cast<qint64>(timeOut) * 1000));
}
