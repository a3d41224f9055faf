// SPDX-License-Identifier: MIT
#include "hosts/admin/OutputCommand.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/OccurrenceOptions.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/StoreCommands.h"
#include "hosts/common/record/RecordedOutcomes.h"

using namespace dozely;

namespace
{
[[noreturn]] void fail(const Error &error)
{
    throw AdminError(error.name == RecordedOutcomes::notPermitted ? ExitStatus::NotPermitted
                                                                  : ExitStatus::Failed,
                     AdminText::tr("What an action wrote cannot be told: %1.").arg(AdminText::reason(error)));
}

QVariantMap describe(const Schedule &schedule, const RecordedOutput &found)
{
    const RecordedOutcome &outcome = found.outcome;
    return {{"identifier", schedule.identifier},
            {"date", found.date},
            {"state", outcome.state},
            {"exitStatus", outcome.exitStatus ? QVariant(*outcome.exitStatus) : QVariant()},
            {"failure", outcome.failure.isEmpty() ? QVariant() : outcome.failure},
            {"output", found.output}};
}
} // namespace

void OutputCommand::run(const AdminOptions &options)
{
    const Schedule schedule = StoreCommands::find(options.argument(0));
    const auto date = OccurrenceOptions::read(options, schedule, DateTerms::Towards::Past);
    const auto outcomes = RecordedOutcomes::open();
    if (!outcomes)
        fail(outcomes.error());
    const auto found = outcomes->findOutput(schedule.identifier, date);
    if (!found)
        fail(found.error());
    if (!*found)
        throw AdminError(ExitStatus::Failed, (date ? AdminText::tr("\"%1\" was not performed then.")
                                                   : AdminText::tr("\"%1\" was not performed yet."))
                                                 .arg(schedule.name));
    if (options.isSet("json"))
        Output::json(describe(schedule, **found));
    else
        Output::raw((*found)->output);
}
