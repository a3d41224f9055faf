// SPDX-License-Identifier: MIT
#include "hosts/daemon/Occurrence.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "hosts/common/orders/OrderPermissions.h"

using namespace dozely;

QDateTime Occurrence::calendarDate() const
{
    return schedule.recurrence ? moment().toTimeZone(schedule.zone())
                               : dozely::calendarDate(moment(), schedule.timeZone);
}

bool Occurrence::skipsOverlap() const
{
    const auto usual = schedule.recurrence ? OverlapPolicy::Skip : OverlapPolicy::Run;
    return !isAskedFor && schedule.overlapPolicy.value_or(usual) == OverlapPolicy::Skip;
}

std::optional<quint32> Occurrence::onlyUser() const
{
    const bool isRoots = !schedule.owner || OrderPermissions::isSystem(schedule.owner, RootFolder::owner());
    return isRoots ? std::nullopt : schedule.owner;
}

QString Occurrence::label() const
{
    return QString("Schedule \"%1\"").arg(logLabel(schedule.name));
}
