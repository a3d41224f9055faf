// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/GuardedFile.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DoctorCheck.h"
#include "hosts/common/plugins/Feasibility.h"
#include "hosts/common/record/RecordedOutcomes.h"
#include "hosts/common/schedules/ScheduleStore.h"

using namespace dozely;

namespace
{
Finding store(const DoctorServices & /*services*/)
{
    const QString path = ScheduleStore::path();
    const auto content = ScheduleStore::read();
    if (!content && content.error().name == GuardedFile::untrusted)
        return Finding::wrong(
            AdminText::tr("The store is not believed: %1.").arg(AdminText::reason(content.error())),
            QString("chown root:root '%1' && chmod 644 '%1'").arg(path));
    if (!content)
        return Finding::wrong(
            AdminText::tr("%1 cannot be used: %2.").arg(path, AdminText::reason(content.error())),
            AdminText::tr("Put back a good one from a backup, or begin anew: mv '%1' '%1.damaged'")
                .arg(path));
    if (!content->faults.isEmpty())
        return Finding::wrong(AdminText::tr("Entries of the store are no schedules: %1.")
                                  .arg(logLabel(content->faults.join("; "), 300)),
                              AdminText::tr("Mend these entries in %1, or remove them").arg(path));
    return Finding::fine(content->exists ? AdminText::tr("The store can be read.")
                                         : AdminText::tr("There is no store yet."));
}

Finding record(const DoctorServices & /*services*/)
{
    const QString path = RootFolder::join("/var/lib/dozely/occurrences.db");
    const auto outcomes = RecordedOutcomes::open();
    const auto latest =
        outcomes ? outcomes->latest({}, 1) : Result<QList<RecordedOccurrence>>(outcomes.error());
    if (latest)
        return Finding::fine(AdminText::tr("The record of occurrences can be read."));
    if (latest.error().name == RecordedOutcomes::notPermitted)
        return Finding::unknown(AdminText::tr("Only root can look into the record of occurrences."));
    return Finding::wrong(
        AdminText::tr("%1 cannot be used: %2.").arg(path, AdminText::reason(latest.error())),
        AdminText::tr("systemctl restart dozelyd, which sets a damaged one aside and begins a new one"));
}

Finding schedules(const DoctorServices & /*services*/)
{
    const auto content = ScheduleStore::read();
    if (!content)
        return Finding::unknown(AdminText::tr("The schedules cannot be looked at."));
    QStringList faults;
    for (const Schedule &schedule : content->schedules) {
        if (!schedule.isEnabled)
            continue;
        if (const auto reason = Feasibility::reasonAgainst(schedule))
            faults += QString("\"%1\": %2").arg(logLabel(schedule.name), AdminText::reason(*reason));
        else if (Feasibility::hasIdleAfterAction(schedule))
            faults += AdminText::tr("\"%1\" is to put the machine to rest afterwards, and does not wake it")
                          .arg(logLabel(schedule.name));
    }
    if (!faults.isEmpty())
        return Finding::wrong(AdminText::tr("Nothing can come of %1.").arg(faults.join("; ")),
                              AdminText::tr("%1, or %2")
                                  .arg("dozely-admin change SCHEDULE ...", "dozely-admin disable SCHEDULE"));
    return Finding::fine(AdminText::tr("Something can come of every schedule that is enabled."));
}
} // namespace

void DoctorChecks::addStore(List &checks)
{
    checks.push_back(std::make_unique<SimpleCheck>("store", store));
    checks.push_back(std::make_unique<SimpleCheck>("record", record));
    checks.push_back(std::make_unique<SimpleCheck>("schedules", schedules));
}
