// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrencePerformer.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/common/plugins/ActionPlace.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/ScheduleKeeper.h"

#include <QScopeGuard>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace dozely;

namespace
{
QString couldNotBeReached(quint32 userId)
{
    return QString("the agent of user %1 could not be reached").arg(userId);
}
} // namespace

OccurrencePerformer::OccurrencePerformer(ScheduleKeeper &keeper, Performances &performances,
                                         PlugInAnswers &answers, std::shared_ptr<PinnedConsoleUser> console,
                                         Clock &clock)
    : m_keeper(keeper),
      m_console(std::move(console)),
      m_clock(clock),
      m_answers(answers),
      m_posts(keeper.scheduler(), performances),
      m_actions(keeper, performances, answers),
      m_waits(clock, keeper.scheduler()),
      m_soonDue(keeper.scheduler(), answers, m_actions, m_waits, m_console, clock),
      m_failures(keeper, m_waits, m_console, clock),
      m_sessionOutcomes(keeper, m_failures, clock)
{
    connect(&answers, &PlugInAnswers::answered, this, &OccurrencePerformer::takeAnswers);
    connect(&m_actions, &DaemonActions::failed, &m_failures, &FailureReports::tellSoon);
}

void OccurrencePerformer::decide(const QList<Occurrence> &due)
{
    m_isDeciding = true;
    std::vector<Ready> ready;
    std::vector<Possible> forSessions;
    for (const Occurrence &occurrence : due)
        decideOne(occurrence, ready, forSessions);
    if (ready.empty()) {
        for (const Possible &possible : forSessions) {
            const auto user = reachableUser(possible);
            if (!user)
                continue;
            m_waits.end(possible.due);
            skip(possible.due, possible.missed);
            ready.push_back({possible.occurrence, possible.answers, user});
        }
    }
    m_isDeciding = false;
    begin(std::move(ready));
}

void OccurrencePerformer::decideOne(const Occurrence &occurrence, std::vector<Ready> &ready,
                                    std::vector<Possible> &forSessions)
{
    if (occurrence.mayHaveRun) {
        m_keeper.note(occurrence, OccurrenceState::Skipped);
        tell(occurrence.label() + " was skipped: it may have run before the record was lost");
        return;
    }
    const auto possible = examine(occurrence, Place::AsConfigured, true);
    if (!possible)
        return;
    const bool isAnotherReady = std::any_of(ready.cbegin(), ready.cend(), [&](const Ready &other) {
        return other.occurrence.schedule.identifier == occurrence.schedule.identifier;
    });
    if (possible->isForSession) {
        forSessions.push_back(*possible);
    } else if (occurrence.skipsOverlap() && (isAnotherReady || isGoingOn(occurrence.schedule.identifier))) {
        skip(occurrence, m_keeper.scheduler().dueRun(occurrence), "the action of the one before goes on");
    } else {
        skip(occurrence, possible->missed);
        ready.push_back({possible->occurrence, possible->answers, {}});
    }
}

/// Whether an action of a schedule goes on here, or is about to.
bool OccurrencePerformer::isGoingOn(const QString &identifier) const
{
    return m_actions.isGoingOn(identifier) ||
           std::any_of(m_ready.cbegin(), m_ready.cend(), [&](const Ready &ready) {
               return !ready.user && ready.occurrence.schedule.identifier == identifier;
           });
}

/// Notes that `due`, or what was due with it, is not performed, and why: that they are late, unless told
/// otherwise. One line.
void OccurrencePerformer::skip(const Occurrence &due, const OccurrenceSeries::Run &run, const QString &why)
{
    if (run.count == 0)
        return;
    const auto lateness = m_keeper.scheduler().lateness().of(due).count();
    m_keeper.noteRun(due.schedule, run);
    const QString reason = why.isEmpty() ? QString() : ": " + why;
    if (run.count > 1 || !run.isCountExact)
        tell(QString("%1: %2%3 occurrences from %4 to %5 were missed%6")
                 .arg(due.label(), run.isCountExact ? "" : "at least ", QString::number(run.count),
                      run.first.toString(Qt::ISODate), run.last.toString(Qt::ISODate), reason));
    else
        tell(QString("%1 was skipped%2")
                 .arg(due.label(), why.isEmpty() ? QString(": it is %1 s late").arg(lateness) : reason));
}

/// What is told while something is decided upon waits for the disk.
void OccurrencePerformer::tell(const QString &line)
{
    if (m_isDeciding)
        m_lines += line;
    else
        ZDRLog("%@", line);
}

void OccurrencePerformer::performHandedBack(const Occurrence &occurrence)
{
    if (const auto possible = examine(occurrence, Place::Daemon, false)) {
        m_keeper.noteBegun({{occurrence, ActingPlace::Daemon}});
        m_actions.perform(occurrence, possible->answers.bundleInfo);
    } else if (m_unanswered.contains(occurrence.key())) {
        m_handedBack += occurrence;
    }
}

void OccurrencePerformer::begin(std::vector<Ready> &&ready)
{
    QList<ScheduleKeeper::Beginning> beginnings;
    for (const Ready &one : ready) {
        m_waits.end(one.occurrence);
        beginnings += {one.occurrence, one.user ? ActingPlace::Session : ActingPlace::Daemon};
    }
    if (!beginnings.isEmpty())
        m_keeper.noteBegun(beginnings);
    else if (!m_lines.isEmpty())
        m_keeper.flush();
    for (const QString &line : std::exchange(m_lines, {}))
        ZDRLog("%@", line);
    // What is due by its date goes before what somebody asked for.
    const bool goesAhead = !ready.empty() && !ready.front().occurrence.isAskedFor;
    const auto place = goesAhead
                           ? std::find_if(m_ready.begin(), m_ready.end(),
                                          [](const Ready &other) { return other.occurrence.isAskedFor; })
                           : m_ready.end();
    m_ready.insert(place, std::make_move_iterator(ready.begin()), std::make_move_iterator(ready.end()));
}

void OccurrencePerformer::startNext()
{
    const Ready next = std::move(m_ready.front());
    m_ready.pop_front();
    if (next.user)
        actInUserAgent(next);
    else
        m_actions.perform(next.occurrence, next.answers.bundleInfo);
}

/// The others of that user were not sent; they wait like any whose agent cannot be reached.
void OccurrencePerformer::takeBackThoseFor(quint32 userId)
{
    std::erase_if(m_ready, [&](const Ready &ready) {
        if (ready.user == userId)
            m_keeper.takeBack(ready.occurrence);
        return ready.user == userId;
    });
}

void OccurrencePerformer::prepareSoonDue()
{
    if (!hasMore()) // those that have begun need what was prepared for them
        m_soonDue.prepare();
}

void OccurrencePerformer::takeBack()
{
    for (const Ready &ready : m_ready)
        m_keeper.takeBack(ready.occurrence);
    m_ready.clear();
    m_actions.takeBack();
}

std::optional<OccurrencePerformer::Possible> OccurrencePerformer::examine(const Occurrence &occurrence,
                                                                          Place place, bool mayBeTooLate)
{
    // One that waited for its agent was in time when it began to; how long it may wait is known there.
    const bool hasWaited = m_waits.contains(occurrence);
    const auto known = m_answers.of(occurrence.schedule, PlugInAnswers::Urgency::Due);
    const auto heldUp = waitForAnswers(occurrence.key());
    if (!known) {
        m_keeper.scheduler().holdBack(occurrence.key());
        return {};
    }
    m_unanswered.remove(occurrence.key());
    if (!*known) {
        notPerformed(occurrence, known->error().text);
        return {};
    }
    const PlugInAnswers::Answers &answers = **known;
    const bool isForSession =
        place == Place::AsConfigured &&
        ActionPlace::actsInUserAgent(occurrence.schedule.parameters, answers.bundleInfo);
    if (const auto why = answers.isUsersOwn && isForSession
                             ? std::nullopt
                             : ActionPlace::reasonAgainst(isForSession, answers.bundleInfo)) {
        notPerformed(occurrence, QString("%1 cannot act in the %2: %3")
                                     .arg(logLabel(occurrence.schedule.fullBundlePath()),
                                          QString(isForSession ? "session" : "daemon"), *why));
        return {};
    }
    Possible possible{occurrence, occurrence,
                      answers,    MissedRule::of(occurrence.schedule, answers.bundleInfo, answers.timeOut),
                      {},         isForSession};
    const bool isOnce = possible.rule.policy == MissedPolicy::RunOnce;
    if (!mayBeTooLate || (hasWaited && !isOnce))
        return possible;
    const LatenessJudge::Verdict verdict =
        m_keeper.scheduler().lateness().judge(occurrence, possible.rule, heldUp);
    possible.missed = verdict.missed;
    if (verdict.performed) {
        possible.occurrence = *verdict.performed;
        return possible;
    }
    m_waits.end(occurrence);
    skip(occurrence, verdict.missed);
    return {};
}

/// For how long an occurrence has been waiting for its plug-in's answers.
std::chrono::milliseconds OccurrencePerformer::waitForAnswers(const OccurrenceRecord::Key &key)
{
    const auto now = m_clock.steadyTime();
    const auto since = m_unanswered.find(key);
    if (since != m_unanswered.end())
        return now - *since;
    m_unanswered.insert(key, now);
    return std::chrono::milliseconds(0);
}

void OccurrencePerformer::takeAnswers()
{
    for (auto waiting = m_unanswered.cbegin(); waiting != m_unanswered.cend(); ++waiting)
        m_keeper.scheduler().letGo(waiting.key());
    m_unanswered.removeIf([this](const auto &waiting) {
        return !m_keeper.scheduler().isToBePerformed(waiting.key()); // dropped meanwhile
    });
    for (const Occurrence &occurrence : std::exchange(m_handedBack, {}))
        performHandedBack(occurrence);
    Q_EMIT tryAgain();
}

void OccurrencePerformer::actInUserAgent(const Ready &ready)
{
    const auto user = m_console->pin();
    const auto release = qScopeGuard([this] { m_console->release(); });
    if (!user || user->userId != *ready.user) {
        // The console has changed hands since it was decided upon.
        m_keeper.takeBack(ready.occurrence);
        takeBackThoseFor(*ready.user);
        return;
    }
    const auto start = m_clock.steadyTime();
    const auto delivery =
        m_posts.handOver(ready.occurrence, ready.answers, *user, [this, ready](AgentPosts::Delivery later) {
            noteDelivery(ready, later, std::chrono::milliseconds(0));
        });
    if (delivery)
        noteDelivery(ready, *delivery, m_clock.steadyTime() - start);
}

void OccurrencePerformer::noteDelivery(const Ready &ready, AgentPosts::Delivery delivery,
                                       std::chrono::milliseconds took)
{
    if (delivery == AgentPosts::Delivery::Received) {
        m_waits.noteAnswer(*ready.user);
        m_keeper.note(ready.occurrence, OccurrenceState::Done, *ready.user);
        ZDRLog("%@ was handed to the agent of user %u", ready.occurrence.label(), *ready.user);
        return;
    }
    m_waits.noteFailure(*ready.user, took);
    takeBackThoseFor(*ready.user);
    // Once it was sent nobody knows how far it came, so it is not tried again.
    if (delivery == AgentPosts::Delivery::NotSent)
        waitForAgent(ready);
    else
        noteUnknown(ready.occurrence, *ready.user);
}

/// It is as if nothing had been begun.
void OccurrencePerformer::waitForAgent(const Ready &ready)
{
    m_keeper.takeBack(ready.occurrence);
    const MissedRule rule =
        MissedRule::of(ready.occurrence.schedule, ready.answers.bundleInfo, ready.answers.timeOut);
    const bool isOnce = rule.policy == MissedPolicy::RunOnce && !ready.occurrence.isAskedFor;
    const auto allowed = isOnce ? std::nullopt : LatenessJudge::allowed(ready.occurrence, rule);
    if (!m_waits.wait(ready.occurrence, *ready.user, allowed))
        notPerformed(ready.occurrence, couldNotBeReached(*ready.user));
    else
        ZDRLog("%@ waits for the agent of user %u", ready.occurrence.label(), *ready.user);
}

/// The user at the console whose agent answers. Absent when the occurrence waits for one, or its
/// time is over. It is for its owner alone; one of root's is for whoever is there when it comes due, and does
/// not pass to somebody who logs in later, unless it is to be run once whoever comes.
std::optional<quint32> OccurrencePerformer::reachableUser(const Possible &possible)
{
    const Occurrence &due = possible.due;
    const bool isOnce = possible.rule.policy == MissedPolicy::RunOnce && !due.isAskedFor;
    const auto console = m_console->current();
    const bool waits = m_waits.contains(due);
    const auto owner = due.onlyUser();
    std::optional<quint32> user = owner ? owner : m_waits.userOf(due);
    if (console && (!user || (isOnce && !owner)))
        user = console->userId;
    if (!isOnce && !console && !waits) {
        notPerformed(due, "nobody is logged in");
        return {};
    }
    const bool isThere = console && console->userId == user;
    if (isThere && m_waits.isReachable(*user))
        return user;
    const bool isAnotherThere = console && !isThere;
    const bool isForAnybody = !user || (isOnce && !owner && !console);
    const auto allowed = isOnce ? std::nullopt : LatenessJudge::allowed(due, possible.rule);
    if (!m_waits.wait(due, isForAnybody ? std::nullopt : user, allowed))
        notPerformed(due, !user            ? QString("nobody is logged in")
                          : isAnotherThere ? QString("user %1 is not at the console").arg(*user)
                                           : couldNotBeReached(*user));
    else if (!waits && isForAnybody)
        tell(due.label() + " waits for somebody at the console");
    else if (!waits && (isAnotherThere || !console))
        tell(QString("%1 waits for user %2, who is not at the console")
                 .arg(due.label(), QString::number(*user)));
    else if (!waits)
        tell(QString("%1 waits for the agent of user %2").arg(due.label(), QString::number(*user)));
    return {};
}

/// An agent that was slow and has it all the same may hand it back, as any that it was handed.
void OccurrencePerformer::noteUnknown(const Occurrence &occurrence, quint32 userId)
{
    m_waits.end(occurrence);
    m_keeper.note(occurrence, OccurrenceState::Unknown, userId);
    ZDRLog(
        "%@ was sent to the agent of user %u, which did not answer: it is not known whether it was performed",
        occurrence.label(), userId);
}

void OccurrencePerformer::notPerformed(const Occurrence &occurrence, const QString &why)
{
    m_waits.end(occurrence);
    m_keeper.note(occurrence, OccurrenceState::NotPerformed);
    tell(QString("%1 was not performed: %2").arg(occurrence.label(), why));
    m_failures.tellSoon(occurrence, why);
}
