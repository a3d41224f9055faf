// SPDX-License-Identifier: MIT
#include "hosts/daemon/AgentWaits.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <algorithm>

using namespace dozely;

using std::chrono::milliseconds;

namespace
{
/// An agent whose socket is gone notices within 10 s and is back 0.1 s later.
constexpr milliseconds timeToComeBack = std::chrono::seconds(15);

/// So long an agent that has answered is taken to be there.
constexpr milliseconds answerHolds = std::chrono::minutes(1);

constexpr milliseconds firstDelay(250);
constexpr milliseconds longestDelay(2000);
/// What has all the time that there is may be a while longer.
constexpr milliseconds longestDelayWithoutHurry(30'000);

/// An agent that takes a connection and does not answer costs the daemon seconds: so much longer it is let
/// be.
constexpr int restForWork = 10;
} // namespace

AgentWaits::AgentWaits(Clock &clock, Scheduler &scheduler)
    : m_clock(clock), m_scheduler(scheduler), m_start(clock.steadyTime()), m_delay(firstDelay)
{
}

AgentWaits::~AgentWaits() = default;

bool AgentWaits::isReachable(quint32 userId)
{
    if (isLetBe(userId))
        return false;
    const auto last = m_lastAnswer.constFind(userId);
    if (last != m_lastAnswer.cend() && m_clock.steadyTime() - *last < answerHolds)
        return true;
    const milliseconds before = m_clock.steadyTime();
    m_scheduler.lateness().beginWait();
    const bool isReached = WDCommunicationCenter::sharedInstance()->pingAgentOfUser(userId);
    m_scheduler.lateness().endWait();
    const milliseconds after = m_clock.steadyTime();
    if (!isReached) {
        noteFailure(userId, after - before);
        return false;
    }
    noteAnswer(userId);
    m_delay = firstDelay;
    for (auto wait = m_waits.cbegin(); wait != m_waits.cend(); ++wait) {
        if (wait->userId == userId)
            m_scheduler.letGo(wait.key());
    }
    return true;
}

void AgentWaits::noteAnswer(quint32 userId)
{
    m_letBeUntil.remove(userId);
    m_everReached += userId;
    m_lastAnswer.insert(userId, m_clock.steadyTime());
}

void AgentWaits::noteFailure(quint32 userId, milliseconds duration)
{
    m_lastAnswer.remove(userId);
    m_letBeUntil.insert(userId, m_clock.steadyTime() + restForWork * duration);
}

bool AgentWaits::isLetBe(quint32 userId) const
{
    return m_clock.steadyTime() < m_letBeUntil.value(userId);
}

std::optional<quint32> AgentWaits::userOf(const Occurrence &occurrence) const
{
    const auto wait = m_waits.constFind(occurrence.key());
    return wait == m_waits.cend() ? std::nullopt : wait->userId;
}

bool AgentWaits::contains(const Occurrence &occurrence) const
{
    return m_waits.contains(occurrence.key());
}

bool AgentWaits::wait(const Occurrence &occurrence, std::optional<quint32> userId,
                      std::optional<milliseconds> allowed)
{
    const QDateTime now = m_clock.currentDate();
    auto wait = m_waits.find(occurrence.key());
    if (wait == m_waits.end()) {
        QDateTime deadline = allowed ? occurrence.moment().addDuration(*allowed) : QDateTime();
        const bool hasJustStarted = m_clock.steadyTime() - m_start < timeToComeBack;
        if (allowed && (hasJustStarted || (userId && m_everReached.contains(*userId))))
            deadline = std::max(deadline, now.addDuration(timeToComeBack));
        wait = m_waits.insert(occurrence.key(), {userId, deadline});
        if (allowed && m_sockets && m_delay > longestDelay) { // what waits already is in no hurry
            m_delay = firstDelay;
            attemptAfter(m_delay);
        }
    }
    wait->userId = userId;
    if (wait->deadline.isValid() && wait->deadline <= now)
        return false;
    m_scheduler.holdBack(wait.key());
    if (!m_sockets) {
        m_sockets =
            std::make_unique<StoreWatcher>(ZDRUnixSocketPort::socketFolder(), RootFolder::path(), m_clock);
        connect(m_sockets.get(), &StoreWatcher::changed, this, &AgentWaits::noticeChange);
        m_delay = firstDelay;
        attemptAfter(m_delay);
    }
    return true;
}

void AgentWaits::end(const Occurrence &occurrence)
{
    m_waits.remove(occurrence.key());
    m_scheduler.letGo(occurrence.key());
    if (m_waits.isEmpty())
        stopWatching();
}

void AgentWaits::stopWatching()
{
    m_sockets.reset();
    ++m_attempt; // the one that was planned is off
}

void AgentWaits::noticeChange()
{
    m_delay = firstDelay;
    attemptAfter(milliseconds(0)); // not from within what watches, which may end with it
}

void AgentWaits::attemptAfter(milliseconds delay)
{
    m_clock.callAfter(delay, this, [this, planned = ++m_attempt] {
        if (planned == m_attempt)
            attempt();
    });
}

void AgentWaits::attempt()
{
    m_waits.removeIf([this](const Waits::iterator &wait) {
        const bool isGone = !m_scheduler.isToBePerformed(wait.key());
        if (isGone)
            m_scheduler.letGo(wait.key());
        return isGone;
    });
    if (m_waits.isEmpty()) {
        stopWatching();
        return;
    }
    const QDateTime now = m_clock.currentDate();
    // One for each agent finds out whether it is there.
    QHash<quint32, OccurrenceRecord::Key> next;
    bool isHurried = false;
    for (auto wait = m_waits.cbegin(); wait != m_waits.cend(); ++wait) {
        isHurried |= wait->deadline.isValid();
        const bool isOver = wait->deadline.isValid() && wait->deadline <= now;
        if (isOver || !wait->userId)
            m_scheduler.letGo(wait.key());
        else if (!isLetBe(*wait->userId) &&
                 (!next.contains(*wait->userId) || wait.key().second < next[*wait->userId].second))
            next[*wait->userId] = wait.key();
    }
    for (const OccurrenceRecord::Key &key : std::as_const(next))
        m_scheduler.letGo(key);
    attemptAfter(m_delay);
    m_delay = std::min(2 * m_delay, isHurried ? longestDelay : longestDelayWithoutHurry);
    Q_EMIT tryAgain();
}
