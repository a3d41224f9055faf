// SPDX-License-Identifier: MIT
#include "hosts/daemon/AnticipationPlan.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/plugin/WDPlugIn.h"

#include <algorithm>

using namespace dozely;

namespace
{
/// An agent whose socket is gone notices within 10 s and is back 0.1 s later.
constexpr std::chrono::seconds secondAttemptAfter(12);

/// Each attempt may wait some seconds for an agent that does not answer, so an agent that asks again and
/// again must not have as many as it likes.
constexpr int mostAttempts = 5;

/// Who switches in learns of it in the first fiftieth of the time that is left.
constexpr int looksInTheTimeLeft = 50;
constexpr std::chrono::milliseconds shortestLook = std::chrono::seconds(1);
constexpr std::chrono::milliseconds longestLook = std::chrono::seconds(30);
} // namespace

AnticipationPlan::AnticipationPlan(const Clock &clock, const Scheduler &scheduler)
    : m_clock(clock), m_scheduler(scheduler)
{
}

AnticipationPlan::Key AnticipationPlan::keyOf(const Schedule &schedule)
{
    return {schedule.identifier, schedule.bundlePath, schedule.date};
}

/// In seconds; absent when there is nothing to announce.
std::optional<qint64> AnticipationPlan::leadTime(const Schedule &schedule)
{
    if (!schedule.parameters.contains(ParameterKey::alert))
        return {};
    WDDaemonPlugIn rule;
    rule.setParameters(schedule.parameters);
    const qint64 seconds = rule.timeBeforeSelfAnticipation();
    return seconds > 0 ? std::optional(seconds) : std::nullopt;
}

/// When the schedule's occurrence is to be announced next.
std::optional<QDateTime> AnticipationPlan::momentOf(const Schedule &schedule) const
{
    const auto lead = leadTime(schedule);
    if (!lead || schedule.date <= m_clock.currentDate() || !m_scheduler.isOpen(schedule))
        return {};
    const auto attempts = m_attempts.constFind(keyOf(schedule));
    if (attempts == m_attempts.cend())
        return schedule.date.addSecs(-*lead);
    return attempts->again.isValid() ? std::optional(attempts->again) : std::nullopt;
}

std::optional<QDateTime> AnticipationPlan::nextDate() const
{
    std::optional<QDateTime> next;
    for (const Schedule &schedule : m_scheduler.schedules()) {
        const auto moment = momentOf(schedule);
        if (moment && (!next || *moment < *next))
            next = moment;
    }
    return next;
}

std::optional<Occurrence> AnticipationPlan::next() const
{
    const QDateTime now = m_clock.currentDate();
    const Schedule *next = nullptr;
    for (const Schedule &schedule : m_scheduler.schedules()) {
        const auto moment = momentOf(schedule);
        if (moment && *moment <= now && (!next || schedule.date < next->date))
            next = &schedule;
    }
    return next ? std::optional(Occurrence{*next, next->date}) : std::nullopt;
}

void AnticipationPlan::noteTold(const Occurrence &occurrence, quint32 userId)
{
    Attempts &attempts = m_attempts[keyOf(occurrence.schedule)];
    ++attempts.count;
    attempts.told += userId;
    attempts.again = {};
    m_console = userId;
}

void AnticipationPlan::noteFailed(const Occurrence &occurrence, OrderPermissions::UserId console)
{
    Attempts &attempts = m_attempts[keyOf(occurrence.schedule)];
    m_console = console;
    const bool isFirst = ++attempts.count == 1;
    attempts.again = isFirst ? m_clock.currentDate().addDuration(secondAttemptAfter) : QDateTime();
}

void AnticipationPlan::noteUnwanted(const Occurrence &occurrence)
{
    m_attempts[keyOf(occurrence.schedule)] = {mostAttempts, {}, {}};
}

void AnticipationPlan::noteConsole(OrderPermissions::UserId user)
{
    if (user == m_console)
        return;
    m_console = user;
    for (Attempts &attempts : m_attempts) {
        if (user && attempts.count < mostAttempts && !attempts.told.contains(*user))
            attempts.again = m_clock.currentDate();
    }
}

std::optional<std::chrono::milliseconds> AnticipationPlan::nextLookAtConsole() const
{
    const QDateTime now = m_clock.currentDate();
    std::optional<std::chrono::milliseconds> next;
    for (const Schedule &schedule : m_scheduler.schedules()) {
        const auto attempts = m_attempts.constFind(keyOf(schedule));
        if (attempts == m_attempts.cend() || attempts->count >= mostAttempts || schedule.date <= now ||
            !m_scheduler.isOpen(schedule))
            continue;
        const std::chrono::milliseconds left(now.msecsTo(schedule.date));
        const auto look = std::clamp(left / looksInTheTimeLeft, shortestLook, longestLook);
        next = next ? std::min(*next, look) : look;
    }
    return next;
}

void AnticipationPlan::announceAgain()
{
    for (Attempts &attempts : m_attempts) {
        if (attempts.count < mostAttempts)
            attempts.again = m_clock.currentDate();
    }
}

bool AnticipationPlan::isBeingAnnounced(const Schedule &schedule) const
{
    const auto lead = leadTime(schedule);
    return m_attempts.contains(keyOf(schedule)) ||
           (lead && schedule.date.addSecs(-*lead) <= m_clock.currentDate());
}

QList<Occurrence>
AnticipationPlan::removable(OrderPermissions::UserId peer, OrderPermissions::UserId rootOwner,
                            const QString &bundlePath, const QDateTime &date,
                            const std::function<OrderPermissions::UserId()> &consoleUser) const
{
    QList<Occurrence> announced;
    QList<Occurrence> others;
    for (const Schedule &schedule : m_scheduler.schedules()) {
        if (schedule.date != date || !m_scheduler.isOpen(schedule) || schedule.fullBundlePath() != bundlePath)
            continue;
        const bool isAnnounced = isBeingAnnounced(schedule);
        const QSet<quint32> told = m_attempts.value(keyOf(schedule)).told;
        const auto toldPeer = peer && told.contains(*peer) ? peer : OrderPermissions::UserId();
        if (OrderPermissions::mayRemove(peer, rootOwner, schedule.owner, toldPeer) ||
            (isAnnounced && told.isEmpty() && peer && peer == consoleUser()))
            (isAnnounced ? announced : others) += Occurrence{schedule, schedule.date};
    }
    return announced.isEmpty() ? others : announced;
}

void AnticipationPlan::forgetGone()
{
    QMap<Key, Attempts> current;
    for (const Schedule &schedule : m_scheduler.schedules()) {
        const auto attempts = m_attempts.constFind(keyOf(schedule));
        if (attempts != m_attempts.cend())
            current.insert(attempts.key(), *attempts);
    }
    m_attempts = current;
}
