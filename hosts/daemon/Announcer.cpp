// SPDX-License-Identifier: MIT
#include "hosts/daemon/Announcer.h"

#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/daemon/PinnedConsoleUser.h"

#include <QScopeGuard>

#include <utility>

using namespace dozely;

namespace
{
QString couldNotBeReached(quint32 userId)
{
    return QString("the agent of user %1 could not be reached").arg(userId);
}
} // namespace

Announcer::Announcer(Scheduler &scheduler, Performances &performances, PlugInAnswers &answers,
                     std::shared_ptr<PinnedConsoleUser> console)
    : m_answers(answers), m_console(std::move(console)), m_posts(scheduler, performances)
{
}

Announcer::Announcement Announcer::announce(const Occurrence &occurrence)
{
    const auto notAnnounced = [&](bool isWanted, const QString &why) {
        ZDRLog("%@ was not announced: %@", occurrence.label(), why);
        return Announcement{.isWanted = isWanted};
    };
    const auto known = m_answers.of(occurrence.schedule, PlugInAnswers::Urgency::Due);
    if (!known)
        return {.isKnown = false};
    if (!*known)
        return notAnnounced(false, known->error().text);
    if ((*known)->timeBeforeSelfAnticipation == -1)
        return {.isWanted = false};
    const auto user = m_console->pin();
    const auto release = qScopeGuard([this] { m_console->release(); });
    if (!user)
        return notAnnounced(true, "nobody is logged in");
    const auto delivery = m_posts.announce(
        occurrence, **known, *user, [this, occurrence, userId = user->userId](AgentPosts::Delivery later) {
            if (later == AgentPosts::Delivery::Received)
                return;
            ZDRLog("%@ was not announced: %@", occurrence.label(), couldNotBeReached(userId));
            Q_EMIT failed(occurrence, userId);
        });
    if (delivery && *delivery != AgentPosts::Delivery::Received) {
        (void)notAnnounced(true, couldNotBeReached(user->userId));
        return {.there = user->userId};
    }
    ZDRLog("%@ is announced by the agent of user %u", occurrence.label(), user->userId);
    return {.told = user->userId, .there = user->userId};
}
