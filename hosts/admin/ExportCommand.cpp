// SPDX-License-Identifier: MIT
#include "hosts/admin/ExportCommand.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/CalendarFile.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/StoreCommands.h"

using namespace dozely;

void ExportCommand::run(const AdminOptions &options)
{
    const QString wanted = options.argument(0);
    const QList<Schedule> schedules =
        wanted.isNull() ? StoreCommands::read().schedules : QList<Schedule>{StoreCommands::find(wanted)};
    if (options.isSet("ics")) {
        Output::raw(CalendarFile::of(schedules, Port<Clock>::current()->currentDate()));
        return;
    }
    QVariantList entries;
    for (const Schedule &schedule : schedules)
        entries += schedule.toEntry();
    const QByteArray data = PropertyList::toData(QVariantMap{{"Schedule Array", entries}},
                                                 PropertyList::Format::Xml, PropertyList::ofTheSystem);
    if (data.isNull())
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("A schedule holds what a property list as text cannot carry."));
    Output::raw(data);
}
