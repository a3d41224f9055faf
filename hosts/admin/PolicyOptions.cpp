// SPDX-License-Identifier: MIT
#include "hosts/admin/PolicyOptions.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/common/calendar/FriendlyTerms.h"
#include "hosts/common/plugins/Feasibility.h"

using namespace dozely;

namespace
{
void setMissed(Schedule &schedule, const QString &text)
{
    const qsizetype equals = text.indexOf('=');
    const QString name = equals < 0 ? text : text.left(equals);
    const QStringList names{"skip", "run-once", "plug-in", "bundle"};
    if (!names.contains(name) || (equals >= 0 && name != "run-once"))
        refuse(AdminText::tr("--missed is skip, run-once, run-once=LIMIT, plug-in or bundle, not \"%1\".")
                   .arg(text));
    schedule.missedPolicy = SchedulePolicies::missedPolicyNamed(QString(name).replace("run-", "run "));
    schedule.missedLimit.reset();
    if (equals < 0)
        return;
    const auto limit = FriendlyTerms::duration(text.mid(equals + 1));
    if (!limit)
        refuse(AdminText::sentence(AdminText::reason(limit.error())));
    schedule.missedLimit = *limit;
}

void setOverlap(Schedule &schedule, const QString &text)
{
    if (!schedule.recurrence)
        refuse(AdminText::tr("--overlap is of what repeats."));
    schedule.overlapPolicy = SchedulePolicies::overlapPolicyNamed(text);
    if (!schedule.overlapPolicy)
        refuse(AdminText::tr("--overlap is skip or run, not \"%1\".").arg(text));
}

void setAfter(Schedule &schedule, const QString &text, bool isWantedAnyway)
{
    schedule.afterAction = SchedulePolicies::afterActionNamed(text == "power-off" ? "power off" : text);
    if (!schedule.afterAction || text == "power off")
        refuse(AdminText::tr("--after is nothing, sleep or power-off, not \"%1\".").arg(text));
    if (Feasibility::hasIdleAfterAction(schedule) && !isWantedAnyway) {
        refuse(AdminText::tr("--after %1 comes only where the machine was woken or switched on for the "
                             "action; that takes --wake or --power-on.")
                   .arg(text));
    }
}
/// What follows a waking does not stay behind when the waking is taken away.
void checkAfter(const Schedule &schedule, bool isWantedAnyway)
{
    if (!Feasibility::hasIdleAfterAction(schedule) || isWantedAnyway)
        return;
    const bool isSleep = schedule.afterAction == AfterAction::Sleep;
    refuse(AdminText::tr(
               "--after %1 would never come any more, since it follows a waking: say --after nothing, too.")
               .arg(isSleep ? "sleep" : "power-off"));
}
} // namespace

void PolicyOptions::apply(const AdminOptions &options, Schedule &schedule)
{
    if (options.isSet("missed"))
        setMissed(schedule, options.value("missed"));
    if (options.isSet("overlap"))
        setOverlap(schedule, options.value("overlap"));
    if (options.isSet("after"))
        setAfter(schedule, options.value("after"), options.isSet("anyway"));
    else if (options.isSet("no-wake") || options.isSet("no-power-on"))
        checkAfter(schedule, options.isSet("anyway"));
}
