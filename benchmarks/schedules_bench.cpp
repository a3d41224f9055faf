// SPDX-License-Identifier: MIT
//
// What schedules that repeat cost the daemon: its start with 10,000 of them, until it knows every next
// occurrence, and one occurrence among few and among many, without the disk.
#include "Bench.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "hosts/daemon/AnticipationPlan.h"
#include "hosts/daemon/ScheduleKeeper.h"

#include <QDir>
#include <QTemporaryDir>

#include <cstdlib>

using namespace dozely;

namespace
{
constexpr int many = 10'000;
constexpr int starts = 5;

/// As people have them: on some days of the week, announced, since a year ago.
QList<Schedule> schedules(int count)
{
    static const QStringList rules{"FREQ=DAILY", "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR",
                                   "FREQ=MONTHLY;BYDAY=-1SU", "FREQ=HOURLY;INTERVAL=2"};
    const QDateTime today(QDateTime::currentDateTimeUtc().date(), QTime(0, 0), Qt::UTC);
    QList<Schedule> schedules;
    for (int i = 0; i < count; ++i) {
        Schedule schedule;
        schedule.identifier = QString("schedule-%1").arg(i);
        schedule.name = QString("Schedule %1").arg(i);
        schedule.bundlePath = "/Library/Application Support/Dozely/PlugIns/Command.plugin";
        schedule.parameters = {{"Program", "/bin/true"}, {"Alert", 1LL}, {"Delay before alert", 60LL}};
        schedule.timeZone = i % 2 ? QString("Europe/Paris") : QString();
        schedule.date = today.addYears(-1).addSecs(i);
        schedule.recurrence = Recurrence{
            rules[i % rules.size()], WallTime::of(schedule.date.toTimeZone(schedule.zone())), {}, {}, {}};
        schedules += schedule;
    }
    return schedules;
}

/// A clock that stands where it is put.
class PutClock : public Clock
{
public:
    QDateTime currentDate() const override { return date; }
    std::chrono::milliseconds steadyTime() const override { return {}; }
    std::chrono::milliseconds bootTime() const override { return {}; }
    bool isSynchronised() const override { return true; }
    void callAfter(std::chrono::milliseconds, QObject *, std::function<void()>) override {}
    bool acquire(QSemaphore &, std::chrono::milliseconds) override { return false; }
    std::unique_ptr<AbsoluteTimer> makeAbsoluteTimer() override { return {}; }

    QDateTime date = QDateTime::currentDateTimeUtc();
};

/// A daemon's rules with so many schedules, none of which is due.
class Rules
{
public:
    explicit Rules(int count)
    {
        QList<Schedule> list = schedules(count);
        OccurrenceRecord record;
        for (const Schedule &schedule : list)
            record.restoreCalendar(schedule.identifier, {QDateTime::currentDateTimeUtc(), false});
        m_scheduler.setRecord(record);
        m_scheduler.setSchedules(list);
    }

    /// What the daemon does for the next one at its time.
    void perform()
    {
        m_clock.date = *m_scheduler.nextDate();
        const Occurrence occurrence = m_scheduler.due(1).first();
        const auto verdict = m_scheduler.lateness().judge(occurrence, {MissedPolicy::PlugIn, {}, -60});
        m_scheduler.noteBegun(*verdict.performed, ActingPlace::Daemon);
        m_scheduler.note(*verdict.performed, OccurrenceState::Done);
        m_scheduler.record().pruneChanged(
            [this](const QString &identifier, const QDateTime &date) {
                return m_scheduler.isNeeded(identifier, date);
            },
            {});
        m_scheduler.record().forgetChanges();
        if (!m_scheduler.nextDate() || !m_plan.nextDate())
            std::abort();
    }

private:
    PutClock m_clock;
    Scheduler m_scheduler{m_clock};
    AnticipationPlan m_plan{m_clock, m_scheduler};
};

/// Milliseconds from the start of the daemon's memory to every next occurrence known.
double start()
{
    const auto begin = std::chrono::steady_clock::now();
    ScheduleKeeper keeper(*Port<Clock>::current());
    keeper.readStore();
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begin;
    if (keeper.scheduler().schedules().size() != many || !keeper.scheduler().nextDate())
        std::abort();
    keeper.flush();
    return taken.count();
}
} // namespace

int main()
{
    QTemporaryDir folder(QDir::currentPath() + "/dz-XXXXXX"); // on a disk, which /tmp need not be
    RootFolder::set(folder.path());
    for (const QString path : {"/var/lib/dozely", "/var/log", "/Library/Preferences"})
        QDir().mkpath(RootFolder::join(path));
    const auto made = ScheduleStore::edit(
        [](QList<Schedule> &list) {
            list = schedules(many);
            return true;
        },
        std::chrono::seconds(5));
    if (!made)
        return 1;
    const double first = start();
    std::vector<double> later;
    for (int i = 0; i < starts; ++i)
        later.push_back(start());
    std::sort(later.begin(), later.end());

    Rules few(10);
    Rules some(1000);
    Rules all(many);
    Bench bench;
    bench.add("among 10", [&] { few.perform(); });
    bench.add("among 1,000", [&] { some.perform(); });
    bench.add("among 10,000", [&] { all.perform(); });
    bench.run(20, 50);
    const QJsonObject startFigure{
        {"what", "10,000 schedules that repeat: start until every next occurrence is known, median"},
        {"value", later[starts / 2]},
        {"unit", "ms"},
        {"reach", 250},
        {"detail", QString("the first start, which notes all of them, %1 ms").arg(first, 0, 'f', 0)}};
    bench.print("one occurrence of a schedule that repeats, without the disk",
                {{"among 1,000", "among 10", 2}, {"among 10,000", "among 10", 3}}, {startFigure});
    return 0;
}
