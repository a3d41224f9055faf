// SPDX-License-Identifier: MIT
#include "hosts/admin/ApplyCommand.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/Spread.h"
#include "hosts/admin/StoreCommands.h"
#include "hosts/admin/StructuredFile.h"
#include "hosts/admin/WantedSchedules.h"
#include "hosts/common/plugins/Feasibility.h"

#include <QFile>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

using namespace dozely;

namespace
{
/// What is to become of the store.
struct Plan {
    QList<Schedule> added, changed, removed;
    bool isEmpty() const { return added.isEmpty() && changed.isEmpty() && removed.isEmpty(); }
};

const Schedule *find(const QList<Schedule> &schedules, const QString &identifier)
{
    const auto found = std::find_if(schedules.cbegin(), schedules.cend(),
                                    [&](const Schedule &each) { return each.identifier == identifier; });
    return found == schedules.cend() ? nullptr : &*found;
}

QByteArray contentOf(const QString &path)
{
    QFile file;
    if (path == "-") {
        if (!file.open(stdin, QIODevice::ReadOnly))
            throw AdminError(ExitStatus::Failed, AdminText::tr("The standard input cannot be read."));
    } else {
        file.setFileName(path);
        if (!file.open(QIODevice::ReadOnly))
            throw AdminError(ExitStatus::Failed,
                             AdminText::tr("%1 cannot be read: %2.").arg(path, file.errorString()));
    }
    return file.read(PropertyList::ofTheSystem.size + 1); // one more than is accepted
}

/// What is there as the file has it, which knows nothing of this machine's delay.
QList<Schedule> withoutDelay(QList<Schedule> present, std::chrono::seconds delay)
{
    for (Schedule &schedule : present)
        (void)Spread::apply(-delay, {}, schedule); // one that was never delayed stays as it is, or is another
    return present;
}

QList<Schedule> wantedBy(const AdminOptions &options, QList<Schedule> present)
{
    const QString path = options.argument(0);
    const auto spread = Spread::read(options);
    const auto delay =
        spread ? Spread::ofThisMachine(*spread) : Result<std::chrono::seconds>(std::chrono::seconds(0));
    if (!delay)
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("Nothing can be spread: %1.").arg(AdminText::reason(delay.error())));
    if (spread)
        present = withoutDelay(std::move(present), *delay);
    const auto value = StructuredFile::parse(contentOf(path));
    auto wanted = value ? WantedSchedules::in(*value, present, Port<Clock>::current()->currentDate())
                        : Result<QList<Schedule>>(value.error());
    if (!wanted)
        throw AdminError(
            ExitStatus::Failed,
            AdminText::tr("%1 is not understood: %2.").arg(path, AdminText::reason(wanted.error())));
    if (RootFolder::owner() != static_cast<quint32>(::geteuid())) {
        for (Schedule &schedule : *wanted) // what a user has the daemon add is his
            schedule.owner = schedule.owner.value_or(Identity::caller());
    }
    if (!spread)
        return *wanted;
    for (Schedule &schedule : *wanted) {
        if (const auto moved = Spread::apply(*delay, *spread, schedule); !moved)
            throw AdminError(ExitStatus::Failed, AdminText::tr("\"%1\" cannot be spread: %2.")
                                                     .arg(schedule.name, AdminText::reason(moved.error())));
    }
    return *wanted;
}

Plan planFor(const QList<Schedule> &wanted, const QList<Schedule> &present)
{
    Plan plan;
    for (const Schedule &schedule : wanted) {
        const Schedule *const former = find(present, schedule.identifier);
        if (!former)
            plan.added += schedule;
        else if (*former != schedule)
            plan.changed += schedule;
    }
    for (const Schedule &schedule : present) {
        if (!find(wanted, schedule.identifier))
            plan.removed += schedule;
    }
    return plan;
}

/// Before anything is changed.
void refuseWhatNothingComesOf(const Plan &plan)
{
    for (const Schedule &schedule : plan.added + plan.changed) {
        if (const auto reason = Feasibility::reasonAgainst(schedule))
            throw AdminError(ExitStatus::Failed, AdminText::tr("\"%1\": %2. --anyway has it all the same.")
                                                     .arg(schedule.name, AdminText::reason(*reason)));
    }
}

void log(const QList<Schedule> &schedules, const QString &what)
{
    for (const Schedule &schedule : schedules)
        ZDRLog("Schedule \"%@\" (%@) was %@ by user %d.", logLabel(schedule.name),
               logLabel(schedule.identifier), what, Identity::caller());
}

void carryOut(Plan plan)
{
    const auto by = StoreCommands::change([&](QList<Schedule> &schedules) {
        schedules.removeIf(
            [&](const Schedule &each) { return find(plan.removed, each.identifier) != nullptr; });
        for (Schedule &schedule : schedules) {
            if (const Schedule *const changed = find(plan.changed, schedule.identifier))
                schedule = *changed;
        }
        schedules += plan.added;
    });
    if (by == StoreCommands::ChangedBy::TheDaemon) { // whom one asks for each
        for (Schedule &schedule : plan.added)
            StoreCommands::add(schedule);
        return;
    }
    log(plan.removed, "removed");
    log(plan.changed, "changed");
    log(plan.added, "added");
}

void tell(const Plan &plan, const AdminOptions &options)
{
    const bool isDryRun = options.isSet("dry-run");
    const struct {
        const char *key;
        const QList<Schedule> &schedules;
        QString sentence;
    } all[] = {
        {"removed", plan.removed,
         isDryRun ? AdminText::tr("\"%1\" (%2) would be removed.")
                  : AdminText::tr("\"%1\" (%2) is removed.")},
        {"changed", plan.changed,
         isDryRun ? AdminText::tr("\"%1\" (%2) would be changed.")
                  : AdminText::tr("\"%1\" (%2) is changed.")},
        {"added", plan.added,
         isDryRun ? AdminText::tr("\"%1\" (%2) would be added.") : AdminText::tr("\"%1\" (%2) is added.")}};
    if (options.isSet("json")) {
        QVariantMap answer{{"isDryRun", isDryRun}, {"isChanged", !plan.isEmpty()}};
        for (const auto &part : all) {
            QVariantList described;
            for (const Schedule &schedule : part.schedules)
                described += StoreCommands::describe(schedule);
            answer.insert(part.key, described);
        }
        Output::json(answer);
        return;
    }
    for (const auto &part : all) {
        for (const Schedule &schedule : part.schedules)
            Output::line(Output::escaped(part.sentence.arg(schedule.name, schedule.identifier)));
    }
    if (plan.isEmpty())
        Output::line(AdminText::tr("Nothing differs."));
}
} // namespace

void ApplyCommand::run(const AdminOptions &options)
{
    const QList<Schedule> present = StoreCommands::read().schedules;
    const Plan plan = planFor(wantedBy(options, present), present);
    if (!options.isSet("anyway"))
        refuseWhatNothingComesOf(plan);
    if (!plan.isEmpty() && !options.isSet("dry-run"))
        carryOut(plan);
    tell(plan, options);
    if (!plan.isEmpty())
        throw AdminError(ExitStatus::Changed, {});
}
