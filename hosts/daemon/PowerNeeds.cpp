// SPDX-License-Identifier: MIT
#include "hosts/daemon/PowerNeeds.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/daemon/PlugInAnswers.h"

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
/// A plug-in that could not be asked is tried again so seldom.
constexpr std::chrono::milliseconds betweenTrials = std::chrono::minutes(1);

QDateTime dateOf(qint64 milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
}
} // namespace

PowerNeeds::PowerNeeds(Scheduler &scheduler, const Clock &clock, PlugInAnswers &answers)
    : m_scheduler(scheduler), m_clock(clock), m_answers(answers)
{
    scheduler.addObserver(this);
    schedulesReplaced();
}

PowerNeeds::~PowerNeeds()
{
    m_scheduler.removeObserver(this);
}

void PowerNeeds::schedulesReplaced()
{
    m_needs.clear();
    m_wakes.clear();
    m_powerOns.clear();
    m_changed.clear();
    m_over.clear();
    m_unknown.clear();
    m_failed.clear();
    m_bundles.clear();
    const auto count = static_cast<qint32>(m_scheduler.schedules().size());
    m_isChanged.assign(static_cast<size_t>(count), false);
    for (qint32 place = 0; place < count; ++place)
        scheduleChanged(place);
}

void PowerNeeds::scheduleChanged(qint32 place)
{
    if (m_isChanged[static_cast<size_t>(place)])
        return;
    m_isChanged[static_cast<size_t>(place)] = true;
    m_changed.push_back(place);
}

void PowerNeeds::update()
{
    lookAtClock();
    lookAtBundles();
    const bool isTrial = m_clock.steadyTime() - m_latestTrial >= betweenTrials;
    if (isTrial)
        m_latestTrial = m_clock.steadyTime();
    if (std::exchange(m_hasAnswers, false)) {
        for (const qint32 place : std::as_const(m_unknown))
            scheduleChanged(place);
    }
    if (isTrial) {
        for (const qint32 place : std::as_const(m_failed))
            scheduleChanged(place);
    }
    auto changed = std::exchange(m_changed, {});
    std::sort(changed.begin(), changed.end());
    for (const qint32 place : changed) {
        m_isChanged[static_cast<size_t>(place)] = false;
        askAbout(place);
    }
}

/// What was over is still to come when the clock was set back.
void PowerNeeds::lookAtClock()
{
    const QDateTime now = m_clock.currentDate();
    if (now < std::exchange(m_now, now)) {
        for (const qint32 place : std::exchange(m_over, {}))
            scheduleChanged(place);
    }
}

/// A bundle that is another one now, or can be used now, has to be asked for all its schedules.
void PowerNeeds::lookAtBundles()
{
    QSet<QString> others;
    for (auto bundle = m_bundles.begin(); bundle != m_bundles.end(); ++bundle) {
        const quint64 state = m_answers.stateOf(bundle.key());
        if (state != std::exchange(*bundle, state))
            others += bundle.key();
    }
    if (others.isEmpty())
        return;
    const QList<Schedule> &schedules = m_scheduler.schedules();
    for (qint32 place = 0; place < schedules.size(); ++place) {
        if (others.contains(schedules.at(place).bundlePath))
            scheduleChanged(place);
    }
}

void PowerNeeds::forget(qint32 place)
{
    m_over.remove(place);
    m_unknown.remove(place);
    m_failed.remove(place);
    for (const qint64 date : m_needs.take(place).dates) {
        m_wakes.erase({date, place});
        m_powerOns.erase({date, place});
    }
}

void PowerNeeds::askAbout(qint32 place)
{
    forget(place);
    QList<qint64> dates;
    for (const Occurrence &occurrence : m_scheduler.pendingOf(place)) {
        if (occurrence.moment().addDuration(longestHold) > m_now)
            dates += occurrence.moment().toMSecsSinceEpoch();
        else
            m_over.insert(place);
    }
    if (dates.isEmpty())
        return;
    const Schedule &schedule = m_scheduler.schedules().at(place);
    const auto known = m_answers.of(schedule);
    const bool isUsersOwn = known && *known && (*known)->isUsersOwn;
    if (!isUsersOwn && !m_bundles.contains(schedule.bundlePath))
        m_bundles.insert(schedule.bundlePath, m_answers.stateOf(schedule.bundlePath));
    if (!known || !*known) {
        (known ? m_failed : m_unknown).insert(place);
        return;
    }
    const PlugInAnswers::Answers &answers = **known;
    if (!answers.needsWakeUp && !answers.needsStartup)
        return;
    for (const qint64 date : std::as_const(dates)) {
        if (answers.needsWakeUp)
            m_wakes.insert({date, place});
        if (answers.needsStartup)
            m_powerOns.insert({date, place});
    }
    m_needs.insert(place, {answers.needsWakeUp, answers.needsStartup, answers.bundleInfo, dates});
}

QList<QDateTime> PowerNeeds::next(Need need, const QDateTime &after, qsizetype most) const
{
    const Dates &dates = datesOf(need);
    QList<QDateTime> next;
    auto date = dates.upper_bound({after.toMSecsSinceEpoch(), std::numeric_limits<qint32>::max()});
    while (date != dates.cend() && next.size() < most) {
        next += dateOf(date->first);
        date = dates.upper_bound({date->first, std::numeric_limits<qint32>::max()});
    }
    return next;
}

PowerNeeds::Hold PowerNeeds::holdNow(Need need, std::chrono::seconds lead) const
{
    const qint64 now = m_clock.currentDate().toMSecsSinceEpoch();
    const auto hold = std::chrono::milliseconds(longestHold).count();
    const auto ahead = std::chrono::milliseconds(lead).count();
    const Dates &dates = datesOf(need);
    const auto first = dates.upper_bound({now - hold, std::numeric_limits<qint32>::max()});
    if (first == dates.cend())
        return {};
    if (first->first - ahead > now)
        return {{}, dateOf(first->first - ahead)};
    // The first that is over, or the first that is not yet to be kept awake for.
    qint64 change = first->first + hold;
    const auto later = dates.upper_bound({now + ahead, std::numeric_limits<qint32>::max()});
    if (later != dates.cend())
        change = std::min(change, later->first - ahead);
    return {m_needs.value(first->second).bundleInfo, dateOf(change)};
}
