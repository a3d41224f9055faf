// SPDX-License-Identifier: MIT
#include "hosts/admin/AddCommand.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/DateOptions.h"
#include "hosts/admin/Feasibility.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/ParameterOptions.h"
#include "hosts/admin/StoreCommands.h"

#include <QDir>
#include <QUuid>

using namespace dozely;

namespace
{
[[noreturn]] void refuse(const QString &sentence)
{
    throw AdminError(ExitStatus::BadUsage, sentence);
}

QString scheduleName(const AdminOptions &options)
{
    QString name = options.argument(0);
    if (name.trimmed().isEmpty())
        refuse("A schedule needs a name.");
    if (name != Output::escaped(name))
        refuse("The name holds control characters.");
    return name;
}

/// The bundle's fixed path: a path as it is, a name as that of an installed bundle.
QString bundlePath(const AdminOptions &options)
{
    if (options.isSet("bundle") == options.isSet("program"))
        refuse("Say what is to be done, by --bundle or by --program.");
    const QString bundle = options.isSet("bundle") ? options.value("bundle") : QString("Command");
    const bool isName = !bundle.contains('/');
    QString path = isName ? QString("%1/%2").arg(FixedPath::plugIns, bundle) : QDir::cleanPath(bundle);
    if (isName && !path.endsWith(".plugin"))
        path += ".plugin";
    if (bundle.isEmpty() || !path.startsWith('/'))
        refuse(QString("\"%1\" is neither the name of a bundle nor an absolute path.").arg(bundle));
    if (!NSBundle::bundleWithPath(RootFolder::join(path)))
        throw AdminError(ExitStatus::Failed,
                         QString("There is no bundle at %1.").arg(RootFolder::join(path)));
    return path;
}

quint32 owner(const AdminOptions &options)
{
    if (!options.isSet("owner"))
        return Identity::caller();
    const auto user = Identity::userNamed(options.value("owner"));
    if (!user)
        throw AdminError(ExitStatus::Failed, QString("There is no user \"%1\".").arg(options.value("owner")));
    return *user;
}
} // namespace

void AddCommand::run(const AdminOptions &options)
{
    const DateOptions::Moment moment = DateOptions::read(options);
    Schedule schedule;
    schedule.identifier = QUuid::createUuid().toString(QUuid::WithoutBraces);
    schedule.name = scheduleName(options);
    schedule.isEnabled = !options.isSet("disabled");
    schedule.staysWhenOver = options.isSet("stays");
    schedule.parameters = ParameterOptions::read(options);
    schedule.date = moment.date;
    schedule.timeZone = moment.timeZone;
    schedule.owner = owner(options);
    schedule.bundlePath = bundlePath(options);
    if (const auto why = options.isSet("anyway") ? std::nullopt : Feasibility::reasonAgainst(schedule)) {
        throw AdminError(ExitStatus::Failed,
                         QString("Nothing could come of it: %1. With --anyway it is added all the same.")
                             .arg(Output::escaped(*why)));
    }
    StoreCommands::change([&](QList<Schedule> &schedules) { schedules += schedule; });

    ZDRLog("Schedule \"%@\" (%@) was added by user %d.", logLabel(schedule.name), schedule.identifier,
           Identity::caller());
    if (!moment.remark.isEmpty())
        Output::remark(moment.remark);
    if (options.isSet("json"))
        Output::json({{"schedule", StoreCommands::describe(schedule)}});
    else
        Output::line(QString("\"%1\" is added as %2, for %3 (%4).")
                         .arg(schedule.name, schedule.identifier,
                              schedule.calendarDate().toString("yyyy-MM-dd HH:mm:ss"), schedule.timeZone));
}
