// SPDX-License-Identifier: MIT
#include "hosts/admin/StatusCommand.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/system/machine/ConsoleUser.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DisplayWidth.h"
#include "hosts/admin/Door.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/ScheduleAnswer.h"
#include "hosts/common/orders/Listeners.h"
#include "hosts/common/plugins/Feasibility.h"
#include "hosts/common/record/UpcomingOccurrences.h"
#include "hosts/common/schedules/ScheduleStore.h"

#include <QSet>

#include <algorithm>

using namespace dozely;

namespace
{
constexpr qsizetype linesOfEach = 5;
constexpr int mostSearched = 1000;  // of what comes
constexpr qsizetype searched = 200; // of the record, for what failed

using Mood = Output::Mood;

/// How the system is, as far as the caller may know.
struct Status {
    bool isDaemonThere = Listeners::isDaemonThere();
    std::optional<ConsoleUser::User> console = Port<ConsoleUser>::current()->current();
    QList<quint32> agents = Listeners::agents();
    std::optional<PowerEventScheduler::Alarm> alarm = Port<PowerEventScheduler>::current()->alarm();
    bool isClockSynchronised = Port<Clock>::current()->isSynchronised();
    Result<ScheduleStore::Content> store = ScheduleStore::read();
    Result<QList<RecordedOccurrence>> record = QList<RecordedOccurrence>();
    QList<UpcomingOccurrence> next;

    Status()
    {
        const QDateTime now = Port<Clock>::current()->currentDate();
        QList<RecordedOccurrence> known;
        const auto outcomes = RecordedOutcomes::open();
        if (outcomes) {
            record = outcomes->latest({}, searched);
            const auto toCome = outcomes->toCome(now);
            known = toCome ? *toCome : QList<RecordedOccurrence>();
        } else {
            record = outcomes.error();
            if (record.error().name == RecordedOutcomes::notPermitted)
                askDaemon();
        }
        UpcomingOccurrences upcoming(schedules(), now, known);
        QSet<qsizetype> shown; // one that comes every second would be all that is seen
        for (int i = 0; i < mostSearched && next.size() < linesOfEach; ++i) {
            const auto occurrence = upcoming.next();
            if (!occurrence)
                break;
            if (!shown.contains(occurrence->schedule))
                next += *occurrence;
            shown += occurrence->schedule;
        }
    }

    QList<Schedule> schedules() const { return store ? store->schedules : QList<Schedule>(); }

    qsizetype enabled() const
    {
        const QList<Schedule> all = schedules();
        return std::count_if(all.cbegin(), all.cend(), [](const Schedule &each) { return each.isEnabled; });
    }

    QString nameOf(const QString &identifier) const
    {
        for (const Schedule &schedule : schedules()) {
            if (schedule.identifier == identifier)
                return schedule.name;
        }
        return {};
    }

    QList<RecordedOccurrence> failures() const
    {
        static const QStringList states{"failed",  "not performed", "interrupted",
                                        "unknown", "missed",        "skipped"};
        QList<RecordedOccurrence> failures;
        for (const RecordedOccurrence &each : record ? *record : QList<RecordedOccurrence>()) {
            if (failures.size() < linesOfEach && states.contains(each.outcome.state))
                failures += each;
        }
        return failures;
    }

private:
    /// The caller's own, which the daemon tells.
    void askDaemon()
    {
        try {
            if (Door::isThere())
                record = Door::history({}, searched);
        } catch (const AdminError &error) {
            record = Error{error.sentence()};
        }
    }
};

QString reasonOf(const RecordedOutcome &outcome)
{
    constexpr qsizetype longest = 60;
    const QString state = AdminText::state(outcome.state);
    if (!outcome.failure.isEmpty())
        return QString("%1 (%2)").arg(state, logLabel(AdminText::reason(outcome.failure), longest));
    return outcome.exitStatus.value_or(0) != 0
               ? QString("%1 (%2)").arg(state, AdminText::tr("exit %1").arg(*outcome.exitStatus))
               : state;
}

QString daemonTitle()
{
    return AdminText::tr("Daemon:");
}

QString consoleTitle()
{
    return AdminText::tr("Console:");
}

QString agentsTitle()
{
    return AdminText::tr("Agents:");
}

QString wakeClockTitle()
{
    return AdminText::tr("Wake clock:");
}

QString clockTitle()
{
    return AdminText::tr("Clock:");
}

QString schedulesTitle()
{
    return AdminText::tr("Schedules:");
}

void showFact(const QString &title, const QString &text, std::optional<Mood> mood = {})
{
    const QString shown = Output::escaped(text);
    static const QStringList titles{daemonTitle(),    consoleTitle(), agentsTitle(),
                                    wakeClockTitle(), clockTitle(),   schedulesTitle()};
    Output::line(DisplayWidth::padded(title, DisplayWidth::widest(titles) + 2) +
                 (mood ? Output::coloured(shown, *mood) : shown));
}

void showConsole(const Status &status)
{
    if (!status.console) {
        showFact(consoleTitle(), AdminText::tr("nobody is there"));
        return;
    }
    const bool isThere = status.agents.contains(status.console->userId);
    showFact(
        consoleTitle(),
        (isThere ? AdminText::tr("%1, whose agent is alive") : AdminText::tr("%1, whose agent is not there"))
            .arg(status.console->name),
        isThere ? Mood::Good : Mood::Bad);
}

void showMachine(const Status &status)
{
    QStringList agents;
    for (const quint32 user : status.agents)
        agents += Identity::nameOf(user);
    showFact(agentsTitle(), agents.isEmpty() ? AdminText::tr("none", "agents") : agents.join(", "));
    if (!status.alarm)
        showFact(wakeClockTitle(), AdminText::tr("none that could wake this machine"), Mood::Doubtful);
    else
        showFact(wakeClockTitle(),
                 status.alarm->armedFor.isValid()
                     ? (status.alarm->isOurs ? AdminText::tr("%1, armed for %2")
                                             : AdminText::tr("%1, armed for %2 by another program"))
                           .arg(status.alarm->device, status.alarm->armedFor.toTimeZone(machineTimeZone())
                                                          .toString("yyyy-MM-dd HH:mm:ss"))
                     : AdminText::tr("%1, not armed").arg(status.alarm->device));
    const QString zone = QString::fromUtf8(machineTimeZone().id());
    showFact(clockTitle(),
             (status.isClockSynchronised ? AdminText::tr("synchronised, %1")
                                         : AdminText::tr("not synchronised, %1"))
                 .arg(zone),
             status.isClockSynchronised ? Mood::Good : Mood::Doubtful);
}

void showSchedules(const Status &status)
{
    if (!status.store) {
        showFact(schedulesTitle(), AdminText::reason(status.store.error()), Mood::Bad);
        return;
    }
    const qsizetype faults = status.store->faults.size();
    QString text =
        AdminText::tr("%1, %2 of them enabled").arg(status.store->schedules.size()).arg(status.enabled());
    if (faults > 0)
        text = AdminText::tr("%1; %n entries are none", "entries of the store", static_cast<int>(faults))
                   .arg(text);
    showFact(schedulesTitle(), text, faults > 0 ? std::optional(Mood::Bad) : std::nullopt);
}

void showOccurrences(const Status &status)
{
    const QList<Schedule> schedules = status.schedules();
    QList<QStringList> rows;
    for (const UpcomingOccurrence &each : status.next) {
        const Schedule &schedule = schedules.at(each.schedule);
        rows += {"  " + ScheduleAnswer::inWords(each.moment, schedule), schedule.name,
                 Feasibility::wakesMachine(schedule) ? AdminText::tr("wakes the machine") : ""};
    }
    Output::line("");
    if (rows.isEmpty())
        Output::line(AdminText::tr("Nothing comes."));
    else
        Output::table({AdminText::tr("Next"), "", ""}, rows);
    Output::line("");
    if (!status.record) {
        Output::line(Output::escaped(
            AdminText::tr("What failed cannot be told: %1.").arg(AdminText::reason(status.record.error()))));
        return;
    }
    rows.clear();
    for (const RecordedOccurrence &each : status.failures()) {
        const QString date = each.date.toTimeZone(machineTimeZone()).toString("yyyy-MM-dd HH:mm:ss");
        const QString name = status.nameOf(each.identifier);
        rows += {"  " + date, name.isEmpty() ? each.identifier : name, reasonOf(each.outcome)};
    }
    if (rows.isEmpty())
        Output::line(AdminText::tr("Nothing failed of late."));
    else
        Output::table({AdminText::tr("Last failures"), "", ""}, rows);
}

QVariantMap describe(const Status &status)
{
    QVariantList agents;
    for (const quint32 user : status.agents)
        agents += user;
    QVariantMap wakeClock{{"isSupported", status.alarm.has_value()}};
    if (status.alarm) {
        wakeClock.insert("device", status.alarm->device);
        wakeClock.insert("alarm",
                         status.alarm->armedFor.isValid() ? QVariant(status.alarm->armedFor) : QVariant());
        wakeClock.insert("alarmIsOurs", status.alarm->isOurs);
    }
    const QList<Schedule> schedules = status.schedules();
    QVariantList next;
    for (const UpcomingOccurrence &each : status.next)
        next += QVariantMap{{"identifier", schedules.at(each.schedule).identifier},
                            {"name", schedules.at(each.schedule).name},
                            {"moment", each.moment}};
    QVariantList failures;
    for (const RecordedOccurrence &each : status.failures()) {
        const QString name = status.nameOf(each.identifier);
        const auto exit = each.outcome.exitStatus;
        failures +=
            QVariantMap{{"identifier", each.identifier},
                        {"name", name.isEmpty() ? QVariant() : name},
                        {"date", each.date},
                        {"state", each.outcome.state},
                        {"exitStatus", exit ? QVariant(*exit) : QVariant()},
                        {"failure", each.outcome.failure.isEmpty() ? QVariant() : each.outcome.failure}};
    }
    QVariant console;
    if (status.console)
        console = QVariantMap{{"user", status.console->userId}, {"name", status.console->name}};
    return {{"daemon", QVariantMap{{"isAlive", status.isDaemonThere}}},
            {"console", console},
            {"agents", agents},
            {"wakeClock", wakeClock},
            {"clock", QVariantMap{{"isSynchronised", status.isClockSynchronised},
                                  {"timeZone", QString::fromUtf8(machineTimeZone().id())}}},
            {"schedules", QVariantMap{{"count", schedules.size()},
                                      {"enabled", status.enabled()},
                                      {"faults", status.store ? status.store->faults : QStringList()},
                                      {"failure", status.store ? QVariant() : status.store.error().text}}},
            {"next", next},
            {"failures", status.record ? QVariant(failures) : QVariant()}};
}
} // namespace

void StatusCommand::run(const AdminOptions &options)
{
    const Status status;
    if (options.isSet("json")) {
        Output::json(describe(status));
    } else {
        showFact(daemonTitle(),
                 status.isDaemonThere ? AdminText::tr("is alive") : AdminText::tr("is not there"),
                 status.isDaemonThere ? Mood::Good : Mood::Bad);
        showConsole(status);
        showMachine(status);
        showSchedules(status);
        showOccurrences(status);
    }
    if (!status.isDaemonThere)
        throw AdminError(ExitStatus::Failed, {});
}
