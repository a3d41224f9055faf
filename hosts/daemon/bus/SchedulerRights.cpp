// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/SchedulerRights.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/common/plugins/ActionPlace.h"
#include "hosts/common/plugins/Feasibility.h"
#include "hosts/daemon/UsersOwnBundle.h"

using namespace dozely;

namespace
{
bool isOfTheSystem(const Schedule &schedule)
{
    const QString folder = RootFolder::join(QString(FixedPath::plugIns) + '/');
    return schedule.fullBundlePath().startsWith(folder);
}

bool usesPower(const Schedule &schedule)
{
    return schedule.isEnabled &&
           (Feasibility::wakesMachine(schedule) ||
            schedule.afterAction.value_or(AfterAction::Nothing) != AfterAction::Nothing);
}
} // namespace

QString SchedulerRights::placeOf(const Schedule &schedule)
{
    if (ActionPlace::isSaidBy(schedule.parameters) || isOfTheSystem(schedule))
        return Feasibility::placeOf(schedule);
    return isUsersOwnBundle(schedule) ? QString("session") : QString();
}

bool SchedulerRights::isOwn(const Schedule &schedule, quint32 user)
{
    return schedule.owner == user && (isOfTheSystem(schedule) || isUsersOwnBundle(schedule)) &&
           placeOf(schedule) == "session";
}

QList<QByteArray> SchedulerRights::needed(const BusCaller &caller, const std::optional<Schedule> &before,
                                          const std::optional<Schedule> &after)
{
    if (caller.isSystem())
        return {};
    for (const auto *schedule : {&before, &after}) {
        if (*schedule && !isOwn(**schedule, caller.user))
            return {SchedulerNames::manageAll};
    }
    QList<QByteArray> actions{SchedulerNames::manageOwn};
    const bool isChanged = before != after;
    if (isChanged && after && usesPower(*after))
        actions += SchedulerNames::wake;
    return actions;
}
