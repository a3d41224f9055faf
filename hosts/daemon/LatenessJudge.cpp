// SPDX-License-Identifier: MIT
#include "hosts/daemon/LatenessJudge.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/daemon/Scheduler.h"

#include <algorithm>

using namespace dozely;

namespace
{
/// Time for the daemon, or the machine, to be started again.
constexpr std::chrono::milliseconds shortestTimeOutOfAsked = std::chrono::minutes(5);

/// Waits that follow one another more closely than this are one: the daemon did nothing else in between.
constexpr qint64 longestPause = 1000; // milliseconds

/// Several requests that each take the longest time allowed; not a machine that slept.
constexpr qint64 longestWait = 60'000; // milliseconds

bool isShort(const QDateTime &start, const QDateTime &end)
{
    return start.msecsTo(end) <= longestWait;
}

/// Dates are whole seconds, and nothing begins to wait at the very millisecond.
QDateTime startOfSecond(const QDateTime &date)
{
    return QDateTime::fromSecsSinceEpoch(date.toSecsSinceEpoch(), Qt::UTC);
}
} // namespace

LatenessJudge::LatenessJudge(const Clock &clock, const Scheduler &scheduler)
    : m_clock(clock), m_scheduler(scheduler)
{
}

void LatenessJudge::excuse(const QDateTime &until, std::chrono::milliseconds duration)
{
    m_excusedUntil = until;
    m_excusedFor = duration;
}

std::chrono::seconds LatenessJudge::of(const Occurrence &occurrence) const
{
    return std::chrono::floor<std::chrono::seconds>(
        std::chrono::milliseconds(occurrence.moment().msecsTo(m_clock.currentDate())));
}

void LatenessJudge::beginWait()
{
    if (m_waits++ > 0)
        return;
    const QDateTime now = m_clock.currentDate();
    const bool goesOn = m_wait.end.isValid() && isShort(m_wait.start, m_wait.end) &&
                        std::abs(m_wait.end.msecsTo(now)) <= longestPause;
    m_presentWait = goesOn ? m_wait.start : now;
}

void LatenessJudge::endWait()
{
    if (--m_waits == 0)
        m_wait = {m_presentWait, m_clock.currentDate()};
}

std::optional<std::chrono::milliseconds> LatenessJudge::allowed(const Occurrence &occurrence,
                                                                const MissedRule &rule)
{
    if (!occurrence.isAskedFor)
        return rule.allowedLateness();
    return std::max(shortestTimeOutOfAsked,
                    std::chrono::milliseconds(-static_cast<qint64>(rule.timeOut) * 1000));
}

bool LatenessJudge::isTooLate(const Occurrence &occurrence, qint32 timeOut,
                              std::chrono::milliseconds heldUp) const
{
    return isLaterThan(allowed(occurrence, {MissedPolicy::PlugIn, {}, timeOut}), occurrence, heldUp);
}

bool LatenessJudge::isLaterThan(std::optional<std::chrono::milliseconds> allowed,
                                const Occurrence &occurrence, std::chrono::milliseconds heldUp) const
{
    if (!allowed)
        return false;
    const QDateTime now = m_clock.currentDate();
    const QDateTime &moment = occurrence.moment();
    const bool isExcused = m_wait.end.isValid() && isShort(m_wait.start, m_wait.end) &&
                           moment >= startOfSecond(m_wait.start) && moment < m_wait.end;
    const bool waitsNow = m_waits > 0 && isShort(m_presentWait, now);
    const QDateTime &from = isExcused ? m_wait.end : moment;
    const bool wasHeldUp = m_excusedUntil.isValid() && moment <= m_excusedUntil;
    const auto all = *allowed + heldUp + (wasHeldUp ? m_excusedFor : std::chrono::milliseconds(0));
    return from.msecsTo(waitsNow ? m_presentWait : now) > all.count();
}

/// The last of the dates from `first` on, which is too late, that certainly are: what has an excuse that it
/// has not is judged by itself.
QDateTime LatenessJudge::latestTooLate(const Occurrence &first, std::chrono::milliseconds allowed) const
{
    const QDateTime now = m_clock.currentDate();
    const bool waitsNow = m_waits > 0 && isShort(m_presentWait, now);
    QDateTime latest = (waitsNow ? m_presentWait : now).addMSecs(-allowed.count() - 1);
    if (m_excusedUntil.isValid() && first.date <= m_excusedUntil)
        latest = std::min(latest.addMSecs(-m_excusedFor.count()), m_excusedUntil);
    if (m_wait.end.isValid() && first.date < startOfSecond(m_wait.start))
        latest = std::min(latest, startOfSecond(m_wait.start).addMSecs(-1));
    return std::max(latest, first.date);
}

/// Whether another one of the schedule has come due after `moment`, at which `due` was.
bool LatenessJudge::isSuperseded(const Occurrence &due, const QDateTime &moment) const
{
    const auto place = m_scheduler.placeOf(due.schedule.identifier);
    const QDateTime now = m_clock.currentDate();
    for (const Occurrence &other : place ? m_scheduler.pendingOf(*place) : QList<Occurrence>()) {
        if (other.date == due.date || other.moment() > now)
            continue;
        if ((m_scheduler.isRunOf(other) ? m_scheduler.dueRun(other).last : other.moment()) > moment)
            return true;
    }
    return false;
}

LatenessJudge::Verdict LatenessJudge::judge(const Occurrence &due, const MissedRule &rule,
                                            std::chrono::milliseconds heldUp) const
{
    const auto allowed = LatenessJudge::allowed(due, rule);
    const bool isOnce = rule.policy == MissedPolicy::RunOnce && !due.isAskedFor;
    const OccurrenceSeries::Run run = isOnce ? m_scheduler.dueRun(due) : OccurrenceSeries::Run();
    Occurrence performed = due;
    if (isOnce && m_scheduler.isRunOf(due))
        performed.date = performed.schedule.date = run.last;
    if (isOnce && (isLaterThan(allowed, performed, heldUp) || isSuperseded(due, performed.moment())))
        return {{}, run};
    if (isOnce && performed.date == due.date)
        return {performed};
    if (isOnce)
        return {performed, m_scheduler.runBefore(due, performed.date)};
    if (!isLaterThan(allowed, due, heldUp))
        return {due};
    return {{},
            m_scheduler.isRunOf(due)
                ? m_scheduler.runBefore(due, latestTooLate(due, *allowed + heldUp).addMSecs(1))
                : m_scheduler.dueRun(due)};
}
