// SPDX-License-Identifier: MIT
#include "hosts/admin/StoreCommands.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/Door.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"
#include "hosts/common/calendar/RuleWords.h"
#include "hosts/common/plugins/Feasibility.h"
#include "hosts/common/schedules/ScheduleStore.h"

#include <QFileInfo>

#include <algorithm>

using namespace dozely;

namespace
{
/// The folder of the store, or, while that does not exist, the one in which it would be made.
bool isFolderWritable()
{
    QFileInfo folder(QFileInfo(ScheduleStore::path()).path());
    while (!folder.exists() && folder.filePath() != folder.path())
        folder.setFile(folder.path());
    return folder.isWritable();
}

/// Whether the file is to be changed; else the daemon changes it.
bool mayChangeFile()
{
    if (isFolderWritable())
        return true;
    if (Door::isThere())
        return false;
    throw AdminError(ExitStatus::NotPermitted,
                     AdminText::tr("You may not change %1; try it as root.").arg(ScheduleStore::path()));
}

/// Asks the daemon for what an alteration makes of the schedules.
void askDaemon(const std::function<void(QList<Schedule> &)> &alteration)
{
    const QList<Schedule> before = StoreCommands::read().schedules;
    QList<Schedule> after = before;
    alteration(after);
    const auto in = [](const QList<Schedule> &schedules, const QString &identifier) {
        return std::find_if(schedules.cbegin(), schedules.cend(),
                            [&](const Schedule &schedule) { return schedule.identifier == identifier; });
    };
    for (const Schedule &schedule : before) {
        const auto altered = in(after, schedule.identifier);
        if (altered == after.cend())
            Door::remove(schedule.identifier);
        else if (*altered != schedule)
            Door::change(schedule, *altered);
    }
}

/// Null for what goes with the machine's zone.
QVariant timeZoneOf(const Schedule &schedule)
{
    if (!schedule.timeZone.isEmpty())
        return schedule.timeZone;
    return schedule.recurrence ? QVariant() : QVariant("UTC");
}

/// Null for what takes place once.
QVariant repetition(const Schedule &schedule)
{
    if (!schedule.recurrence)
        return {};
    const QVariantMap stored = schedule.recurrence->toDictionary();
    return QVariantMap{{"rule", stored["Rule"]},
                       {"localStart", stored["Local Start"]},
                       {"extraDates", stored.value("Extra Dates", QVariantList())},
                       {"excludedDates", stored.value("Excluded Dates", QVariantList())},
                       {"inWords", RuleWords::of(*schedule.recurrence)}};
}

template<class Policy>
QVariant nameOf(const std::optional<Policy> &policy)
{
    return policy ? QVariant(SchedulePolicies::nameOf(*policy)) : QVariant();
}

void setEnabled(const AdminOptions &options, bool isEnabled)
{
    Schedule schedule = StoreCommands::find(options.argument(0));
    const auto by = StoreCommands::change([&](QList<Schedule> &schedules) {
        for (Schedule &candidate : schedules) {
            if (candidate.identifier == schedule.identifier) {
                candidate.isEnabled = isEnabled;
                schedule = candidate;
            }
        }
    });
    if (by == StoreCommands::ChangedBy::ThisTool)
        ZDRLog("Schedule \"%@\" (%@) was %@ by user %d.", logLabel(schedule.name),
               logLabel(schedule.identifier), QString(isEnabled ? "enabled" : "disabled"),
               Identity::caller());
    if (options.isSet("json"))
        Output::json({{"schedule", StoreCommands::describe(schedule)}});
    else
        Output::line(Output::escaped(
            (isEnabled ? AdminText::tr("\"%1\" is enabled.") : AdminText::tr("\"%1\" is disabled."))
                .arg(schedule.name)));
}
} // namespace

ScheduleStore::Content StoreCommands::read()
{
    const QFileInfo store(ScheduleStore::path());
    if (store.exists() && !store.isReadable())
        throw AdminError(ExitStatus::NotPermitted,
                         AdminText::tr("You may not read %1.").arg(ScheduleStore::path()));
    auto content = ScheduleStore::read();
    if (!content) {
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("%1 cannot be used: %2.")
                             .arg(ScheduleStore::path(), AdminText::reason(content.error())));
    }
    return *std::move(content);
}

Schedule StoreCommands::find(const QString &identifierOrName)
{
    const ScheduleStore::Content content = read();
    QList<Schedule> matches;
    for (const Schedule &schedule : content.schedules) {
        if (schedule.identifier == identifierOrName)
            return schedule;
        if (schedule.name == identifierOrName)
            matches += schedule;
    }
    if (matches.isEmpty())
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("There is no schedule \"%1\".").arg(identifierOrName));
    if (matches.size() > 1) {
        throw AdminError(
            ExitStatus::Failed,
            AdminText::tr("%n schedule(s) are named \"%1\"; use an identifier, as \"list\" shows them.",
                          nullptr, static_cast<int>(matches.size()))
                .arg(identifierOrName));
    }
    return matches.constFirst();
}

StoreCommands::ChangedBy StoreCommands::change(const std::function<void(QList<Schedule> &)> &alteration)
{
    if (!mayChangeFile()) {
        askDaemon(alteration);
        return ChangedBy::TheDaemon;
    }
    const auto changed = ScheduleStore::edit([&](QList<Schedule> &schedules) {
        alteration(schedules);
        return true;
    });
    if (!changed)
        throw AdminError(ExitStatus::Failed, AdminText::sentence(AdminText::reason(changed.error())));
    return ChangedBy::ThisTool;
}

StoreCommands::ChangedBy StoreCommands::add(Schedule &schedule)
{
    if (!mayChangeFile()) {
        schedule.identifier = Door::add(schedule);
        return ChangedBy::TheDaemon;
    }
    return change([&](QList<Schedule> &schedules) { schedules += schedule; });
}

QVariantMap StoreCommands::describe(const Schedule &schedule)
{
    const QString place = Feasibility::placeOf(schedule);
    return {
        {"identifier", schedule.identifier},
        {"name", schedule.name},
        {"isEnabled", schedule.isEnabled},
        {"bundlePath", schedule.bundlePath},
        {"parameters", schedule.parameters},
        {"date", schedule.date},
        {"staysWhenOver", schedule.staysWhenOver},
        {"timeZone", timeZoneOf(schedule)},
        {"repeats", repetition(schedule)},
        {"missed", nameOf(schedule.missedPolicy)},
        {"missedLimit", schedule.missedLimit ? QVariant(qint64(schedule.missedLimit->count())) : QVariant()},
        {"overlap", nameOf(schedule.overlapPolicy)},
        {"after", nameOf(schedule.afterAction)},
        {"actsIn", place.isNull() ? QVariant() : place},
        {"owner", schedule.owner ? QVariant(*schedule.owner) : QVariant()}};
}

void StoreCommands::remove(const AdminOptions &options)
{
    const Schedule schedule = find(options.argument(0));
    const auto by = change([&](QList<Schedule> &schedules) {
        schedules.removeIf(
            [&](const Schedule &candidate) { return candidate.identifier == schedule.identifier; });
    });
    if (by == ChangedBy::ThisTool)
        ZDRLog("Schedule \"%@\" (%@) was removed by user %d.", logLabel(schedule.name),
               logLabel(schedule.identifier), Identity::caller());
    if (options.isSet("json"))
        Output::json({{"schedule", describe(schedule)}});
    else
        Output::line(Output::escaped(AdminText::tr("\"%1\" is removed.").arg(schedule.name)));
}

void StoreCommands::enable(const AdminOptions &options)
{
    setEnabled(options, true);
}

void StoreCommands::disable(const AdminOptions &options)
{
    setEnabled(options, false);
}
