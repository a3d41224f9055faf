// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/ScheduleEdits.h"

#include "DozelyKit/core/files/GuardedFile.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "hosts/common/bus/ScheduleWish.h"
#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/common/plugins/Feasibility.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "hosts/daemon/UsersOwnBundle.h"
#include "hosts/daemon/bus/PolkitAuthority.h"
#include "hosts/daemon/bus/SchedulerRights.h"

using namespace dozely;

namespace
{
constexpr std::chrono::seconds lockLimit(5);
constexpr std::chrono::milliseconds betweenAttempts(50);

/// What one user has in the store that is not more than his share.
Result<void> checkShare(const QList<Schedule> &schedules, const ScheduleEdits::Altered &altered)
{
    const auto &owner = altered.after ? altered.after->owner : std::nullopt;
    if (!owner || BusCaller{{}, *owner}.isSystem())
        return {};
    qsizetype count = 0;
    qsizetype bytes = 0;
    for (const Schedule &schedule : schedules) {
        if (schedule.owner == owner) {
            ++count;
            bytes += ScheduleWish::sizeOf(schedule).value_or(0);
        }
    }
    const bool isNew = !altered.before || altered.before->owner != owner;
    if (isNew && count > ScheduleEdits::mostOfAUser)
        return Error{QString("A user may have %1 schedules.").arg(ScheduleEdits::mostOfAUser),
                     SchedulerNames::limitReached};
    if (bytes > ScheduleEdits::mostBytesOfAUser && altered.before != altered.after)
        return Error{
            QString("The schedules of a user may have %1 bytes in all.").arg(ScheduleEdits::mostBytesOfAUser),
            SchedulerNames::limitReached};
    return {};
}

Error notFeasible(const QString &sentence)
{
    return {sentence + SchedulerNames::anywayHint, SchedulerNames::notFeasible};
}

Result<void> checkFeasible(const Schedule &schedule, bool isOfAdministrator)
{
    if (Feasibility::hasIdleAfterAction(schedule))
        return notFeasible(
            "What is to follow comes only where the machine was woken or switched on for the action.");
    if (isUsersOwnBundle(schedule))
        return {}; // of which nothing is read here
    const auto why = Feasibility::reasonAgainst(
        schedule, isOfAdministrator ? Feasibility::Sight::Everything : Feasibility::Sight::WhatAllMaySee);
    if (!why)
        return {};
    return notFeasible(QString("Nothing could come of it: %1.").arg(logLabel(*why)));
}
} // namespace

Error ScheduleEdits::onBus(const Error &error)
{
    if (error.name == ScheduleStore::damaged || error.name == GuardedFile::untrusted)
        return {QString("The schedules are damaged, and are not overwritten: %1.").arg(error.text),
                SchedulerNames::storeDamaged};
    return {error.text + '.', SchedulerNames::notPossible};
}

/// What came of one look at the store.
struct ScheduleEdits::Attempt {
    Result<Altered> altered = Altered{};
    QByteArray missing = {}; ///< A right.

    /// Whether the store is to be written.
    bool look(const Job &job, QList<Schedule> &schedules)
    {
        altered = job.wish.alter(schedules);
        if (!altered)
            return false;
        const bool isAdministrator =
            job.wish.caller.isSystem() || job.granted.contains(SchedulerNames::manageAll);
        for (const QByteArray &action :
             SchedulerRights::needed(job.wish.caller, altered->before, altered->after)) {
            if (isAdministrator || job.granted.contains(action))
                continue;
            missing = action;
            return false;
        }
        Result<void> checked = checkShare(schedules, *altered);
        if (checked && job.wish.mustBeFeasible && altered->after)
            checked = checkFeasible(*altered->after, isAdministrator);
        if (!checked)
            altered = checked.error();
        return checked.ok();
    }
};

ScheduleEdits::ScheduleEdits(Clock &clock, PolkitAuthority &authority)
    : m_clock(clock), m_authority(authority)
{
}

void ScheduleEdits::perform(const Wish &wish, const Done &done)
{
    const auto job = std::make_shared<Job>(Job{wish, done});
    job->deadline = m_clock.steadyTime() + lockLimit;
    attempt(job);
}

void ScheduleEdits::attempt(const std::shared_ptr<Job> &job)
{
    Attempt attempt;
    const auto edited =
        ScheduleStore::edit([&](QList<Schedule> &schedules) { return attempt.look(*job, schedules); },
                            std::chrono::milliseconds(0));
    if (!edited && edited.error().name == GuardedFile::busy && m_clock.steadyTime() < job->deadline) {
        m_clock.callAfter(betweenAttempts, this, [this, job] { this->attempt(job); });
        return;
    }
    if (!edited)
        return job->done(onBus(edited.error()));
    if (!attempt.missing.isEmpty())
        return askFor(attempt.missing, job);
    if (*edited) {
        const Altered &altered = *attempt.altered;
        Q_EMIT this->edited(altered.after ? altered.after->identifier : altered.before->identifier);
    }
    job->done(attempt.altered);
}

void ScheduleEdits::askFor(const QByteArray &action, const std::shared_ptr<Job> &job)
{
    m_authority.ask(job->wish.caller, action, [this, action, job](const Result<void> &allowed) {
        if (!allowed)
            return job->done(allowed.error());
        job->granted.insert(action);
        const auto begin = m_clock.steadyTime();
        job->deadline = begin + lockLimit;
        attempt(job);
        Q_EMIT wentOn(job->wish.caller.user, m_clock.steadyTime() - begin);
    });
}
