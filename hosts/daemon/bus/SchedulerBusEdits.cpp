// SPDX-License-Identifier: MIT
// The calls that add, change and remove schedules.
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/bus/ScheduleDictionary.h"
#include "hosts/common/bus/ScheduleWish.h"
#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/common/plugins/ActionPlace.h"
#include "hosts/daemon/DaemonController.h"
#include "hosts/daemon/bus/SchedulerBus.h"
#include "hosts/daemon/bus/SchedulerRefusals.h"
#include "hosts/daemon/bus/SchedulerRights.h"

#include <QUuid>

#include <algorithm>

using namespace dozely;

using namespace SchedulerRefusals;

namespace
{
/// Takes "anyway" out of a wish; absent when it is no boolean.
std::optional<bool> takeAnyway(QVariantMap &wish)
{
    const QVariant anyway = wish.take("anyway");
    if (anyway.isValid() && anyway.typeId() != QMetaType::Bool)
        return {};
    return anyway.toBool();
}

/// What acts in the session of who wishes it stays there, whatever the bundle says one day.
void settlePlace(Schedule &schedule, const BusCaller &caller)
{
    if (!caller.isSystem() && schedule.owner == caller.user && !ActionPlace::isSaidBy(schedule.parameters) &&
        SchedulerRights::placeOf(schedule) == "session")
        schedule.parameters.insert(ParameterKey::actsInUserAgent, qint64(1));
}

/// Whose a schedule is of which that was not said: his who wishes it, or, where it acts as root, root's.
void settleOwner(Schedule &schedule, const BusCaller &caller)
{
    if (schedule.owner || caller.isSystem())
        return;
    schedule.owner = caller.user;
    if (SchedulerRights::placeOf(schedule) == "daemon")
        schedule.owner.reset();
}
} // namespace

void SchedulerBus::edit(const Request &request, ScheduleEdits::Wish wish, const QVariantList &values,
                        const QString &verb)
{
    wish.caller = request.caller;
    wish.alter = [this, alter = wish.alter](QList<Schedule> &schedules) {
        if (!m_controller.keeper().scheduler().hasStored(schedules))
            m_news->noteAnyChange(); // by somebody else, and not read yet
        return alter(schedules);
    };
    m_edits.perform(wish, [this, request, values, verb](const Result<ScheduleEdits::Altered> &altered) {
        if (!altered)
            return request.call.refuse(altered.error());
        const Schedule &schedule = altered->after ? *altered->after : *altered->before;
        ZDRLog("Schedule \"%@\" (%@) was %@ by user %d.", logLabel(schedule.name),
               logLabel(schedule.identifier), verb, static_cast<int>(request.caller.user));
        answer(request, values);
    });
}

void SchedulerBus::add(const Request &request)
{
    QVariantMap wish = request.arguments.value(0).toMap();
    const auto anyway = takeAnyway(wish);
    if (!anyway)
        return request.call.refuse(invalid("\"anyway\" is not a boolean."));
    auto made =
        ScheduleWish::made(QUuid::createUuid().toString(QUuid::WithoutBraces), wish, m_clock->currentDate());
    if (!made)
        return request.call.refuse(invalid(made.error().text));
    if (!wish.contains("owner"))
        settleOwner(*made, request.caller);
    settlePlace(*made, request.caller);
    const Schedule schedule = *made;
    const auto alter = [schedule](QList<Schedule> &schedules) -> Result<ScheduleEdits::Altered> {
        schedules += schedule;
        return ScheduleEdits::Altered{{}, schedule};
    };
    edit(request, {{}, alter, !*anyway}, {schedule.identifier}, "added");
}

/// Alters the schedule that the first argument names; an absent one is removed.
void SchedulerBus::alterOne(
    const Request &request, const QString &verb, bool mustBeFeasible,
    const std::function<Result<std::optional<Schedule>>(const Schedule &)> &alterSchedule)
{
    const QString identifier = request.text(0);
    const auto alter = [identifier,
                        alterSchedule](QList<Schedule> &schedules) -> Result<ScheduleEdits::Altered> {
        for (qsizetype i = 0; i < schedules.size(); ++i) {
            if (schedules.at(i).identifier != identifier)
                continue;
            ScheduleEdits::Altered altered{schedules.at(i), {}};
            const auto after = alterSchedule(*altered.before);
            if (!after)
                return after.error();
            altered.after = *after;
            if (altered.after)
                schedules[i] = *altered.after;
            else
                schedules.removeAt(i);
            return altered;
        }
        return noSuchSchedule(identifier);
    };
    edit(request, {{}, alter, mustBeFeasible}, {}, verb);
}

void SchedulerBus::change(const Request &request)
{
    QVariantMap wish = request.arguments.value(1).toMap();
    const auto anyway = takeAnyway(wish);
    const QVariant revision = wish.take("revision");
    if (!anyway)
        return request.call.refuse(invalid("\"anyway\" is not a boolean."));
    if (revision.isValid() && revision.typeId() != QMetaType::QString)
        return request.call.refuse(invalid("\"revision\" is not a text."));
    const QStringList ofAction{"bundlePath", "parameters", "actsIn", "after"};
    const bool isAction = std::any_of(ofAction.cbegin(), ofAction.cend(),
                                      [&](const QString &key) { return wish.contains(key); });
    const auto alter = [this, wish, revision,
                        request](const Schedule &schedule) -> Result<std::optional<Schedule>> {
        if (revision.isValid() && revision.toString() != ScheduleDictionary::revisionOf(schedule))
            return Error{
                QString("\"%1\" was changed by somebody else meanwhile.").arg(logLabel(schedule.name)),
                SchedulerNames::changed};
        auto changed = ScheduleWish::changed(schedule, wish, m_clock->currentDate());
        if (!changed)
            return invalid(changed.error().text);
        settlePlace(*changed, request.caller);
        return std::optional(*changed);
    };
    alterOne(request, "changed", isAction && !*anyway, alter);
}

void SchedulerBus::remove(const Request &request)
{
    alterOne(request, "removed", false,
             [](const Schedule &) -> Result<std::optional<Schedule>> { return std::optional<Schedule>(); });
}

void SchedulerBus::setEnabled(const Request &request)
{
    const bool isEnabled = request.arguments.value(1).toBool();
    alterOne(request, isEnabled ? "enabled" : "disabled", false,
             [isEnabled](Schedule schedule) -> Result<std::optional<Schedule>> {
                 schedule.isEnabled = isEnabled;
                 return std::optional(schedule);
             });
}
