// SPDX-License-Identifier: MIT
#include "hosts/daemon/AnticipationPlan.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/plugin/WDPlugIn.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

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

constexpr std::chrono::hours timeToBeTakenBack(1);
} // namespace

AnticipationPlan::AnticipationPlan(const Clock &clock, Scheduler &scheduler)
    : m_clock(clock), m_scheduler(scheduler)
{
    scheduler.addObserver(this);
    schedulesReplaced();
}

AnticipationPlan::~AnticipationPlan()
{
    m_scheduler.removeObserver(this);
}

AnticipationPlan::Key AnticipationPlan::keyOf(const Occurrence &occurrence)
{
    return {occurrence.schedule.identifier, occurrence.schedule.bundlePath,
            occurrence.moment().toMSecsSinceEpoch()};
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

void AnticipationPlan::schedulesReplaced()
{
    m_leads.clear();
    m_planned.clear();
    m_coming.clear();
    m_present.clear();
    m_passed.clear();
    const QList<Schedule> &schedules = m_scheduler.schedules();
    for (qint32 place = 0; place < schedules.size(); ++place) {
        const auto lead = leadTime(schedules.at(place));
        if (!lead)
            continue;
        m_leads.insert(place, *lead);
        replan(place);
    }
}

void AnticipationPlan::scheduleChanged(qint32 place)
{
    if (!m_leads.contains(place))
        return;
    const QString &identifier = m_scheduler.schedules().at(place).identifier;
    auto attempts = m_attempts.lowerBound({identifier, QString(), std::numeric_limits<qint64>::min()});
    while (attempts != m_attempts.end() && std::get<0>(attempts.key()) == identifier)
        attempts = isGone(attempts) ? m_attempts.erase(attempts) : std::next(attempts);
    replan(place);
}

/// When an occurrence is to be announced next.
std::optional<QDateTime> AnticipationPlan::momentOf(const Occurrence &occurrence, qint64 lead) const
{
    const auto attempts = m_attempts.constFind(keyOf(occurrence));
    if (attempts == m_attempts.cend())
        return occurrence.moment().addSecs(-lead);
    return attempts->again.isValid() ? std::optional(attempts->again) : std::nullopt;
}

void AnticipationPlan::replan(qint32 place)
{
    for (const Announcement &former : m_planned.take(place)) {
        m_coming.erase(former);
        m_present.erase(former);
    }
    QList<Announcement> planned;
    for (const Occurrence &occurrence : m_scheduler.pendingOf(place)) {
        if (const auto moment = momentOf(occurrence, m_leads.value(place)))
            planned += {moment->toMSecsSinceEpoch(), occurrence.moment().toMSecsSinceEpoch(), place};
    }
    if (planned.isEmpty())
        return;
    m_coming.insert(planned.cbegin(), planned.cend());
    m_planned.insert(place, planned);
}

/// What was passed over is to be announced after all when the clock was set back.
void AnticipationPlan::lookAtClock()
{
    const qint64 now = m_clock.currentDate().toMSecsSinceEpoch();
    if (now < std::exchange(m_now, now)) {
        m_coming.insert(m_present.cbegin(), m_present.cend());
        m_present.clear();
        for (const qint32 place : std::exchange(m_passed, {}))
            replan(place);
    }
    while (!m_coming.empty() && m_coming.cbegin()->when <= now)
        m_present.insert(m_coming.extract(m_coming.cbegin()).value());
    while (!m_present.empty() && m_present.cbegin()->date <= now) {
        m_passed.insert(m_present.cbegin()->place);
        m_present.erase(m_present.cbegin());
    }
}

std::optional<QDateTime> AnticipationPlan::nextDate()
{
    lookAtClock();
    if (m_present.empty() && m_coming.empty())
        return {};
    const qint64 next = m_present.empty() ? m_coming.cbegin()->when : m_present.cbegin()->when;
    return QDateTime::fromMSecsSinceEpoch(next, Qt::UTC);
}

std::optional<Occurrence> AnticipationPlan::next()
{
    lookAtClock();
    if (m_present.empty())
        return {};
    const Announcement &first = *m_present.cbegin();
    for (const Occurrence &occurrence : m_scheduler.pendingOf(first.place)) {
        if (occurrence.moment().toMSecsSinceEpoch() == first.date)
            return occurrence;
    }
    return {};
}

void AnticipationPlan::noteAttempt(const Occurrence &occurrence, const Attempts &attempts)
{
    m_attempts.insert(keyOf(occurrence), attempts);
    const auto place = m_scheduler.placeOf(occurrence.schedule.identifier);
    if (place && m_leads.contains(*place))
        replan(*place);
}

void AnticipationPlan::noteTold(const Occurrence &occurrence, quint32 userId)
{
    Attempts attempts = m_attempts.value(keyOf(occurrence));
    ++attempts.count;
    attempts.told += userId;
    attempts.again = {};
    m_console = userId;
    noteAttempt(occurrence, attempts);
}

void AnticipationPlan::noteFailed(const Occurrence &occurrence, OrderPermissions::UserId console)
{
    Attempts attempts = m_attempts.value(keyOf(occurrence));
    m_console = console;
    const bool isFirst = ++attempts.count == 1;
    attempts.again = isFirst ? m_clock.currentDate().addDuration(secondAttemptAfter) : QDateTime();
    noteAttempt(occurrence, attempts);
}

void AnticipationPlan::noteUnwanted(const Occurrence &occurrence)
{
    noteAttempt(occurrence, {mostAttempts, {}, {}});
}

void AnticipationPlan::tryAgainNow(const std::function<bool(const Attempts &)> &isWanted)
{
    for (auto attempts = m_attempts.begin(); attempts != m_attempts.end(); ++attempts) {
        if (attempts->count >= mostAttempts || !isWanted(*attempts))
            continue;
        attempts->again = m_clock.currentDate();
        const auto place = m_scheduler.placeOf(std::get<0>(attempts.key()));
        if (place && m_leads.contains(*place))
            replan(*place);
    }
}

void AnticipationPlan::noteConsole(OrderPermissions::UserId user)
{
    if (user == m_console)
        return;
    m_console = user;
    tryAgainNow([&](const Attempts &attempts) { return user && !attempts.told.contains(*user); });
}

void AnticipationPlan::announceAgain()
{
    tryAgainNow([](const Attempts &) { return true; });
}

/// The occurrence that these attempts are about; absent when it is not to come any more.
std::optional<Occurrence> AnticipationPlan::occurrenceOf(const Key &key) const
{
    const auto place = m_scheduler.placeOf(std::get<0>(key));
    for (const Occurrence &occurrence : place ? m_scheduler.pendingOf(*place) : QList<Occurrence>()) {
        if (keyOf(occurrence) == key)
            return occurrence;
    }
    return {};
}

std::optional<std::chrono::milliseconds> AnticipationPlan::nextLookAtConsole() const
{
    const QDateTime now = m_clock.currentDate();
    std::optional<std::chrono::milliseconds> next;
    for (auto attempts = m_attempts.cbegin(); attempts != m_attempts.cend(); ++attempts) {
        const auto occurrence = attempts->count < mostAttempts ? occurrenceOf(attempts.key()) : std::nullopt;
        if (!occurrence || occurrence->moment() <= now)
            continue;
        const std::chrono::milliseconds left(now.msecsTo(occurrence->moment()));
        const auto look = std::clamp(left / looksInTheTimeLeft, shortestLook, longestLook);
        next = next ? std::min(*next, look) : look;
    }
    return next;
}

bool AnticipationPlan::isBeingAnnounced(const Occurrence &occurrence) const
{
    const auto lead = leadTime(occurrence.schedule);
    return m_attempts.contains(keyOf(occurrence)) ||
           (lead && occurrence.moment().addSecs(-*lead) <= m_clock.currentDate());
}

bool AnticipationPlan::mayRemove(const Occurrence &occurrence, OrderPermissions::UserId peer,
                                 OrderPermissions::UserId rootOwner, const ConsoleUserNow &consoleUser) const
{
    const QSet<quint32> told = m_attempts.value(keyOf(occurrence)).told;
    const auto toldPeer = peer && told.contains(*peer) ? peer : OrderPermissions::UserId();
    return OrderPermissions::mayRemove(peer, rootOwner, occurrence.schedule.owner, toldPeer) ||
           (isBeingAnnounced(occurrence) && told.isEmpty() && peer && peer == consoleUser());
}

QList<Occurrence> AnticipationPlan::removable(OrderPermissions::UserId peer,
                                              OrderPermissions::UserId rootOwner, const QString &bundlePath,
                                              const QDateTime &date, const ConsoleUserNow &consoleUser) const
{
    QList<Occurrence> announced;
    QList<Occurrence> others;
    for (const Occurrence &occurrence : m_scheduler.pendingAt(date)) {
        if (occurrence.schedule.fullBundlePath() == bundlePath &&
            mayRemove(occurrence, peer, rootOwner, consoleUser))
            (isBeingAnnounced(occurrence) ? announced : others) += occurrence;
    }
    return announced.isEmpty() ? others : announced;
}

/// Whether its alert may be on a screen.
bool AnticipationPlan::isShown(const QMap<Key, Attempts>::const_iterator &attempts) const
{
    return !attempts->told.isEmpty() &&
           std::get<2>(attempts.key()) > m_clock.currentDate().toMSecsSinceEpoch();
}

QList<AnticipationPlan::Needless> AnticipationPlan::takeNeedless()
{
    using Alert = std::pair<QString, qint64>; // several schedules may have one between them
    const auto alertOf = [](const Key &key) { return Alert(std::get<1>(key), std::get<2>(key)); };
    QMap<Alert, QSet<quint32>> needless;
    QMap<Alert, QSet<quint32>> needed;
    for (auto attempts = m_attempts.cbegin(); attempts != m_attempts.cend();) {
        const Alert alert = alertOf(attempts.key());
        const bool isShown = this->isShown(attempts);
        const bool isLeft = isShown && occurrenceOf(attempts.key());
        if (isShown)
            (isLeft ? needed : needless)[alert] += attempts->told;
        attempts = isShown && !isLeft ? m_attempts.erase(attempts) : std::next(attempts);
    }
    QList<Needless> taken;
    for (auto alert = needless.cbegin(); alert != needless.cend(); ++alert) {
        const auto &[bundlePath, moment] = alert.key();
        const QSet<quint32> told = *alert - needed.value(alert.key());
        if (!told.isEmpty())
            taken += {RootFolder::join(bundlePath), QDateTime::fromMSecsSinceEpoch(moment, Qt::UTC), told};
    }
    return taken;
}

/// What is told of an occurrence whose moment has come may be needed for a while: it may wait for its agent,
/// or be taken back. Who still sees its alert is told first that it is needless.
bool AnticipationPlan::isGone(const QMap<Key, Attempts>::const_iterator &attempts) const
{
    if (isShown(attempts))
        return false;
    const auto &[identifier, bundlePath, moment] = attempts.key();
    const auto place = m_scheduler.placeOf(identifier);
    const Schedule *const schedule = place ? &m_scheduler.schedules().at(*place) : nullptr;
    if (!schedule || schedule->bundlePath != bundlePath)
        return true;
    const qint64 longAgo = m_clock.currentDate().addDuration(-timeToBeTakenBack).toMSecsSinceEpoch();
    const bool mayComeBack = schedule->recurrence && moment > longAgo;
    return !mayComeBack && schedule->date.toMSecsSinceEpoch() != moment && !occurrenceOf(attempts.key());
}

void AnticipationPlan::forgetGone()
{
    m_attempts.removeIf([this](const auto &attempts) { return isGone(attempts); });
}
