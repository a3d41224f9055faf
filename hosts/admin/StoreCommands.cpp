// SPDX-License-Identifier: MIT
#include "hosts/admin/StoreCommands.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"
#include "hosts/common/plugins/ActionPlace.h"
#include "hosts/common/record/RecordedOutcomes.h"
#include "hosts/common/schedules/ScheduleStore.h"

#include <QFileInfo>

#include <algorithm>

using namespace dozely;

namespace
{
/// In a column of the table.
constexpr qsizetype longestReason = 80;

ScheduleStore::Content readStore()
{
    const QFileInfo store(ScheduleStore::path());
    if (store.exists() && !store.isReadable())
        throw AdminError(ExitStatus::NotPermitted,
                         QString("You may not read %1.").arg(ScheduleStore::path()));
    auto content = ScheduleStore::read();
    if (!content) {
        throw AdminError(ExitStatus::Failed,
                         QString("%1 cannot be used: %2.").arg(ScheduleStore::path(), content.error().text));
    }
    return *std::move(content);
}

/// The folder of the store, or, while that does not exist, the one in which it would be made.
void requireWritableFolder()
{
    QFileInfo folder(QFileInfo(ScheduleStore::path()).path());
    while (!folder.exists() && folder.filePath() != folder.path())
        folder.setFile(folder.path());
    if (!folder.isWritable()) {
        throw AdminError(ExitStatus::NotPermitted,
                         QString("You may not change %1; try it as root.").arg(ScheduleStore::path()));
    }
}

/// "session" or "daemon"; null when the bundle that would decide cannot be read.
QString placeOfAction(const Schedule &schedule)
{
    QVariantMap bundleInfo;
    if (!ActionPlace::isSaidBy(schedule.parameters)) {
        const auto bundle = NSBundle::bundleWithPath(schedule.fullBundlePath());
        if (!bundle)
            return {};
        bundleInfo = bundle->infoDictionary();
    }
    return ActionPlace::actsInUserAgent(schedule.parameters, bundleInfo) ? "session" : "daemon";
}

QStringList tableRow(const Schedule &schedule, const QString &outcome)
{
    const QString place = placeOfAction(schedule);
    return {schedule.name,
            schedule.isEnabled ? "yes" : "no",
            schedule.calendarDate().toString("yyyy-MM-dd HH:mm:ss"),
            schedule.timeZone.isEmpty() ? "UTC" : schedule.timeZone,
            QFileInfo(schedule.bundlePath).completeBaseName(),
            place.isNull() ? "?" : place,
            outcome,
            schedule.owner ? Identity::nameOf(*schedule.owner) : "-",
            schedule.identifier};
}

/// What became of the schedules' occurrences, as far as the caller may know it.
class Outcomes
{
public:
    Outcomes() : m_outcomes(RecordedOutcomes::open()) {}

    /// Why nothing is known; empty when something is, or when the caller simply may not.
    QString fault() const
    {
        const bool mayNot = !m_outcomes && m_outcomes.error().name == RecordedOutcomes::notPermitted;
        return m_outcomes || mayNot ? QString() : m_outcomes.error().text;
    }
    bool areKnown() const { return m_outcomes.ok(); }

    std::optional<RecordedOutcome> of(const Schedule &schedule) const
    {
        const auto found = m_outcomes ? m_outcomes->find(schedule.identifier, schedule.date)
                                      : Result<std::optional<RecordedOutcome>>(m_outcomes.error());
        return found ? *found : std::nullopt;
    }

    /// In one or two words, and why it failed.
    QString nameFor(const Schedule &schedule) const
    {
        if (!areKnown())
            return "?";
        const auto outcome = of(schedule);
        if (!outcome)
            return schedule.isEnabled ? "to come" : "-";
        const bool hasFailed = outcome->exitStatus.value_or(0) != 0;
        const QString reason = !outcome->failure.isEmpty() ? logLabel(outcome->failure, longestReason)
                               : hasFailed                 ? QString("exit %1").arg(*outcome->exitStatus)
                                                           : QString();
        return reason.isEmpty() ? outcome->state : QString("%1 (%2)").arg(outcome->state, reason);
    }

    /// For programs.
    QVariant describe(const Schedule &schedule) const
    {
        const auto outcome = of(schedule);
        if (!outcome)
            return {};
        const auto number = [](std::optional<qint64> value) { return value ? QVariant(*value) : QVariant(); };
        return QVariantMap{{"state", outcome->state},
                           {"isOver", outcome->isOver()},
                           {"begun", outcome->begun.isValid() ? QVariant(outcome->begun) : QVariant()},
                           {"ended", outcome->ended.isValid() ? QVariant(outcome->ended) : QVariant()},
                           {"lateness", number(outcome->lateness)},
                           {"exitStatus", number(outcome->exitStatus)},
                           {"failure", outcome->failure.isEmpty() ? QVariant() : outcome->failure}};
    }

private:
    Result<RecordedOutcomes> m_outcomes;
};

void setEnabled(const AdminOptions &options, bool isEnabled)
{
    Schedule schedule = StoreCommands::find(options.argument(0));
    StoreCommands::change([&](QList<Schedule> &schedules) {
        for (Schedule &candidate : schedules) {
            if (candidate.identifier == schedule.identifier) {
                candidate.isEnabled = isEnabled;
                schedule = candidate;
            }
        }
    });
    ZDRLog("Schedule \"%@\" (%@) was %@ by user %d.", logLabel(schedule.name), logLabel(schedule.identifier),
           QString(isEnabled ? "enabled" : "disabled"), Identity::caller());
    if (options.isSet("json"))
        Output::json({{"schedule", StoreCommands::describe(schedule)}});
    else
        Output::line(
            Output::escaped(QString("\"%1\" is %2.").arg(schedule.name, isEnabled ? "enabled" : "disabled")));
}
} // namespace

Schedule StoreCommands::find(const QString &identifierOrName)
{
    const ScheduleStore::Content content = readStore();
    QList<Schedule> matches;
    for (const Schedule &schedule : content.schedules) {
        if (schedule.identifier == identifierOrName)
            return schedule;
        if (schedule.name == identifierOrName)
            matches += schedule;
    }
    if (matches.isEmpty())
        throw AdminError(ExitStatus::Failed, QString("There is no schedule \"%1\".").arg(identifierOrName));
    if (matches.size() > 1) {
        throw AdminError(ExitStatus::Failed,
                         QString("%1 schedules are named \"%2\"; use an identifier, as \"list\" shows them.")
                             .arg(matches.size())
                             .arg(identifierOrName));
    }
    return matches.constFirst();
}

void StoreCommands::change(const std::function<void(QList<Schedule> &)> &alteration)
{
    requireWritableFolder();
    const auto changed = ScheduleStore::edit([&](QList<Schedule> &schedules) {
        alteration(schedules);
        return true;
    });
    if (!changed)
        throw AdminError(ExitStatus::Failed, changed.error().text + ".");
}

QVariantMap StoreCommands::describe(const Schedule &schedule)
{
    const QString place = placeOfAction(schedule);
    return {{"identifier", schedule.identifier},
            {"name", schedule.name},
            {"isEnabled", schedule.isEnabled},
            {"bundlePath", schedule.bundlePath},
            {"parameters", schedule.parameters},
            {"date", schedule.date},
            {"staysWhenOver", schedule.staysWhenOver},
            {"timeZone", schedule.timeZone.isEmpty() ? "UTC" : schedule.timeZone},
            {"actsIn", place.isNull() ? QVariant() : place},
            {"owner", schedule.owner ? QVariant(*schedule.owner) : QVariant()}};
}

void StoreCommands::list(const AdminOptions &options)
{
    const ScheduleStore::Content content = readStore();
    const Outcomes outcomes;
    if (options.isSet("json")) {
        QVariantList schedules;
        for (const Schedule &schedule : content.schedules) {
            QVariantMap described = describe(schedule);
            described.insert("occurrence", outcomes.describe(schedule));
            schedules += described;
        }
        Output::json({{"schedules", schedules},
                      {"faults", content.faults},
                      {"outcomesAreKnown", outcomes.areKnown()}});
        return;
    }
    QList<QStringList> rows;
    for (const Schedule &schedule : content.schedules)
        rows += tableRow(schedule, outcomes.nameFor(schedule));
    if (rows.isEmpty())
        Output::line("There are no schedules.");
    else
        Output::table(
            {"NAME", "ENABLED", "DATE", "TIME ZONE", "ACTION", "RUNS IN", "STATE", "OWNER", "IDENTIFIER"},
            rows);
    for (const QString &fault : content.faults)
        Output::remark(fault + ".");
    if (!outcomes.fault().isEmpty())
        Output::remark(QString("What became of the schedules cannot be told: %1.").arg(outcomes.fault()));
}

void StoreCommands::remove(const AdminOptions &options)
{
    const Schedule schedule = find(options.argument(0));
    change([&](QList<Schedule> &schedules) {
        schedules.removeIf(
            [&](const Schedule &candidate) { return candidate.identifier == schedule.identifier; });
    });
    ZDRLog("Schedule \"%@\" (%@) was removed by user %d.", logLabel(schedule.name),
           logLabel(schedule.identifier), Identity::caller());
    if (options.isSet("json"))
        Output::json({{"schedule", describe(schedule)}});
    else
        Output::line(Output::escaped(QString("\"%1\" is removed.").arg(schedule.name)));
}

void StoreCommands::enable(const AdminOptions &options)
{
    setEnabled(options, true);
}

void StoreCommands::disable(const AdminOptions &options)
{
    setEnabled(options, false);
}
