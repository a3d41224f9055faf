// SPDX-License-Identifier: MIT
#include "hosts/admin/ScheduleOptions.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DateOptions.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/ParameterOptions.h"
#include "hosts/admin/PolicyOptions.h"
#include "hosts/admin/RecurrenceOptions.h"
#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/common/plugins/Feasibility.h"
#include "hosts/common/record/UpcomingOccurrences.h"

#include <QDir>

#include <algorithm>

using namespace dozely;

namespace
{
bool isAnySet(const AdminOptions &options, const QStringList &names)
{
    return std::any_of(names.cbegin(), names.cend(),
                       [&](const QString &name) { return options.isSet(name); });
}

/// The bundle's fixed path: a path as it is, a name as that of an installed bundle.
QString bundlePath(const QString &bundle)
{
    const bool isName = !bundle.contains('/');
    QString path = isName ? QString("%1/%2").arg(FixedPath::plugIns, bundle) : QDir::cleanPath(bundle);
    if (isName && !path.endsWith(".plugin"))
        path += ".plugin";
    if (bundle.isEmpty() || !path.startsWith('/'))
        refuse(AdminText::tr("\"%1\" is neither the name of a bundle nor an absolute path.").arg(bundle));
    if (!NSBundle::bundleWithPath(RootFolder::join(path)))
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("There is no bundle at %1.").arg(RootFolder::join(path)));
    return path;
}

quint32 userNamed(const QString &name)
{
    const auto user = Identity::userNamed(name);
    if (!user)
        throw AdminError(ExitStatus::Failed, AdminText::tr("There is no user \"%1\".").arg(name));
    return *user;
}

/// From now on it takes place once.
QStringList applyOnce(const AdminOptions &options, Schedule &schedule)
{
    DateOptions::Moment moment{schedule.date, schedule.timeZone, {}};
    if (options.isSet("date") || options.isSet("in")) {
        const bool hasZone = !schedule.timeZone.isEmpty();
        moment = DateOptions::read(options, hasZone ? schedule.timeZone : DateOptions::machineZone());
    } else if (options.isSet("time-zone")) {
        refuse(AdminText::tr(
            "With --time-zone say --date, too: in another zone the same time is another moment."));
    } else if (schedule.recurrence) { // the next one is the one that is left
        const auto next = UpcomingOccurrences::ofOne(schedule).next();
        if (!next)
            throw AdminError(ExitStatus::Failed,
                             AdminText::tr("\"%1\" is over: say --date, too.").arg(schedule.name));
        moment.date = next->date;
        moment.timeZone = QString::fromUtf8(schedule.zone().id());
    }
    schedule.date = moment.date;
    schedule.timeZone = moment.timeZone;
    schedule.recurrence.reset();
    schedule.overlapPolicy.reset();
    return moment.remark.isEmpty() ? QStringList() : QStringList{moment.remark};
}

/// The zone of what repeats: none where it is to go with the machine.
void applyZone(const AdminOptions &options, Schedule &schedule)
{
    if (!options.isSet("time-zone"))
        return;
    const bool isMachines = options.value("time-zone") == "machine";
    schedule.timeZone = isMachines ? QString() : QString::fromUtf8(DateOptions::zone(options, {}).id());
}

QStringList applyRecurrence(const AdminOptions &options, Schedule &schedule)
{
    RecurrenceOptions::Former former{schedule.recurrence, {}};
    if (!schedule.recurrence && schedule.date.isValid())
        former.time = schedule.calendarDate().time();
    applyZone(options, schedule);
    const QTimeZone zone = schedule.timeZone.isEmpty() ? machineTimeZone() : schedule.zone();
    QStringList remarks;
    if (RecurrenceOptions::areSet(options) || options.isSet("time-zone")) {
        const auto made = RecurrenceOptions::read(options, former, zone);
        schedule.recurrence = made.recurrence;
        remarks = made.remarks;
    }
    Recurrence recurrence = *schedule.recurrence;
    RecurrenceOptions::takeBackExceptions(options, recurrence, zone);
    recurrence.excludedDates += RecurrenceOptions::exceptions(options, recurrence, zone);
    if (recurrence.excludedDates.size() > Recurrence::maximumDates)
        refuse(AdminText::tr("There can be at most %1 exceptions.").arg(Recurrence::maximumDates));
    schedule.recurrence = recurrence;
    const auto series = OccurrenceSeries::of(*schedule.recurrence, zone);
    const auto first = series ? series->first() : std::nullopt;
    if (!first)
        refuse(AdminText::tr("With these exceptions nothing is left of it."));
    schedule.date = *first;
    return remarks;
}
} // namespace

QString ScheduleOptions::name(const QString &text)
{
    if (text.trimmed().isEmpty())
        refuse(AdminText::tr("A schedule needs a name."));
    if (text != Output::escaped(text))
        refuse(AdminText::tr("The name holds control characters."));
    return text;
}

bool ScheduleOptions::nameAction(const AdminOptions &options)
{
    return isAnySet(options, {"bundle", "program", "argument", "parameters", "in-default"}) ||
           isAnySet(options, {"parameter", "no-parameter", "alert", "no-alert", "in-daemon", "in-session"}) ||
           isAnySet(options,
                    {"wake", "no-wake", "power-on", "no-power-on", "tell-failure", "no-tell-failure"});
}

void ScheduleOptions::applyAction(const AdminOptions &options, Schedule &schedule)
{
    const bool isNew = schedule.bundlePath.isEmpty();
    const bool isOne = options.isSet("bundle") != options.isSet("program");
    const bool isBoth = options.isSet("bundle") && options.isSet("program");
    if (isBoth || (isNew && !isOne))
        refuse(AdminText::tr("Say what is to be done, by --bundle or by --program."));
    schedule.parameters = ParameterOptions::read(options, schedule.parameters);
    if (isOne)
        schedule.bundlePath = bundlePath(options.isSet("bundle") ? options.value("bundle") : "Command");
    if (const auto why = options.isSet("anyway") ? std::nullopt : Feasibility::reasonAgainst(schedule)) {
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("Nothing could come of it: %1. With --anyway it is done all the same.")
                             .arg(Output::escaped(AdminText::reason(*why))));
    }
}

bool ScheduleOptions::nameTime(const AdminOptions &options)
{
    return RecurrenceOptions::areSet(options) ||
           isAnySet(options, {"date", "in", "time-zone", "once", "except", "no-except"});
}

QStringList ScheduleOptions::applyTime(const AdminOptions &options, Schedule &schedule)
{
    const bool isDate = isAnySet(options, {"date", "in"});
    const bool isOnce = isDate || options.isSet("once");
    const bool isRepeating = RecurrenceOptions::areSet(options);
    if (isDate && isRepeating)
        refuse(
            AdminText::tr("--date and --in are for what takes place once; what repeats begins by --from."));
    if (isOnce && isRepeating)
        refuse(AdminText::tr("It takes place once, or it repeats: --once goes with --date and --in alone."));
    if (!isOnce && (isRepeating || schedule.recurrence))
        return applyRecurrence(options, schedule);
    for (const QString option : {"except", "no-except"}) {
        if (options.isSet(option))
            refuse(AdminText::tr("--%1 is of what repeats.").arg(option));
    }
    if (!schedule.date.isValid() && !isDate)
        refuse(AdminText::tr("Say when, by --date or --in, or how often, by --every or --rule."));
    return applyOnce(options, schedule);
}

void ScheduleOptions::applyRest(const AdminOptions &options, Schedule &schedule)
{
    if (options.isSaid("disabled", "enabled"))
        schedule.isEnabled = false;
    if (options.isSet("enabled"))
        schedule.isEnabled = true;
    if (options.isSaid("stays", "no-stays"))
        schedule.staysWhenOver = true;
    if (options.isSet("no-stays"))
        schedule.staysWhenOver = false;
    if (options.isSet("owner"))
        schedule.owner = userNamed(options.value("owner"));
    PolicyOptions::apply(options, schedule);
}
