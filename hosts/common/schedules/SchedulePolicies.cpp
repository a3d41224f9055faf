// SPDX-License-Identifier: MIT
#include "hosts/common/schedules/SchedulePolicies.h"

#include <array>
#include <utility>

namespace
{
template<class Value, std::size_t size>
using Names = std::array<std::pair<Value, const char *>, size>;

constexpr Names<MissedPolicy, 3> missedPolicies{
    {{MissedPolicy::PlugIn, "plug-in"}, {MissedPolicy::Skip, "skip"}, {MissedPolicy::RunOnce, "run once"}}};
constexpr Names<OverlapPolicy, 2> overlapPolicies{
    {{OverlapPolicy::Skip, "skip"}, {OverlapPolicy::Run, "run"}}};
constexpr Names<AfterAction, 3> afterActions{
    {{AfterAction::Nothing, "nothing"}, {AfterAction::Sleep, "sleep"}, {AfterAction::PowerOff, "power off"}}};

template<class Value, std::size_t size>
QString nameIn(const Names<Value, size> &names, Value value)
{
    for (const auto &[known, name] : names) {
        if (known == value)
            return name;
    }
    return {};
}

template<class Value, std::size_t size>
std::optional<Value> valueIn(const Names<Value, size> &names, const QString &wanted)
{
    for (const auto &[value, name] : names) {
        if (wanted == name)
            return value;
    }
    return {};
}
} // namespace

QString SchedulePolicies::nameOf(MissedPolicy policy)
{
    return nameIn(missedPolicies, policy);
}

QString SchedulePolicies::nameOf(OverlapPolicy policy)
{
    return nameIn(overlapPolicies, policy);
}

QString SchedulePolicies::nameOf(AfterAction action)
{
    return nameIn(afterActions, action);
}

std::optional<MissedPolicy> SchedulePolicies::missedPolicyNamed(const QString &name)
{
    return valueIn(missedPolicies, name);
}

std::optional<OverlapPolicy> SchedulePolicies::overlapPolicyNamed(const QString &name)
{
    return valueIn(overlapPolicies, name);
}

std::optional<AfterAction> SchedulePolicies::afterActionNamed(const QString &name)
{
    return valueIn(afterActions, name);
}
