// SPDX-License-Identifier: MIT
#include "hosts/application/window/NewSchedule.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/application/book/ScheduleKeys.h"
#include "hosts/application/book/ScheduleTimes.h"
#include "hosts/common/schedules/SchedulePolicies.h"

#include <QCoreApplication>

using namespace dozely;

namespace
{
/// Far enough ahead that it can be filled in.
QDateTime nextHours()
{
    const QDateTime ahead = Port<Clock>::current()->currentDate().toLocalTime().addSecs(2 * 3600);
    return QDateTime(ahead.date(), QTime(ahead.time().hour(), 0));
}

QDateTime nextAt(QTime time)
{
    const QDateTime now = Port<Clock>::current()->currentDate().toLocalTime();
    return QDateTime(now.time() < time ? now.date() : now.date().addDays(1), time);
}

QString translated(const char *text)
{
    return QCoreApplication::translate("NewSchedule", text);
}

QString bundleNamed(const char *name)
{
    return QString("%1/%2.plugin").arg(QString(FixedPath::plugIns), name);
}
} // namespace

QString NewSchedule::usualAction(const ActionSides &sides)
{
    return sides.actions().isEmpty() ? QString() : sides.actions().first().path;
}

QVariantMap NewSchedule::values(ActionSides &sides, const QString &action, quint32 user)
{
    QVariantMap parameters;
    if (ConfigurationSide *const side = action.isEmpty() ? nullptr : sides.side(action)) {
        if (const auto defaults = side->defaults())
            parameters = *defaults;
    }
    QVariantMap values = ScheduleTimes{nextHours(), {}, {}}.toValues();
    values.remove(ScheduleKey::repeats);
    values.insert(ScheduleKey::name, QCoreApplication::translate("NewSchedule", "New schedule"));
    values.insert(ScheduleKey::isEnabled, true);
    values.insert(ScheduleKey::bundlePath, action);
    values.insert(ScheduleKey::parameters, parameters);
    const bool isOfSystem = sides.action(action).isOfSystemAlone;
    if (!isOfSystem)
        values.insert(ScheduleKey::owner, user);
    values.insert(ScheduleKey::actsIn, isOfSystem ? "daemon" : "session");
    return values;
}

QList<NewSchedule::Wish> NewSchedule::wishes(ActionSides &sides)
{
    Wish evening;
    evening.name = translated(QT_TRANSLATE_NOOP("NewSchedule", "Switch off in the evening"));
    evening.description = translated(
        QT_TRANSLATE_NOOP("NewSchedule", "Every day at 23:00, with a warning five minutes before."));
    evening.action = bundleNamed("PowerOff");
    evening.parameters = {{ParameterKey::alert, 1}, {ParameterKey::delayBeforeAlert, 300}};
    evening.time = QTime(23, 0);
    evening.rule = "FREQ=DAILY";
    evening.isOfSystem = true;
    Wish music;
    music.name = translated(QT_TRANSLATE_NOOP("NewSchedule", "Wake with music"));
    music.description = translated(QT_TRANSLATE_NOOP(
        "NewSchedule", "On weekdays at 6:55 the computer wakes and plays what you choose."));
    music.action = bundleNamed("Command");
    music.parameters = {{ParameterKey::needsWakeUp, 1}};
    music.time = QTime(6, 55);
    music.rule = "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR";
    Wish backup;
    backup.name = translated(QT_TRANSLATE_NOOP("NewSchedule", "Backup at night"));
    backup.description = translated(QT_TRANSLATE_NOOP(
        "NewSchedule", "Every night at 2:00 the computer wakes, makes a backup and sleeps again."));
    backup.action = bundleNamed("Command");
    backup.parameters = {{ParameterKey::needsWakeUp, 1}};
    backup.time = QTime(2, 0);
    backup.rule = "FREQ=DAILY";
    backup.isOfSystem = true;
    backup.values = {{ScheduleKey::after, SchedulePolicies::nameOf(AfterAction::Sleep)},
                     {ScheduleKey::missed, SchedulePolicies::nameOf(MissedPolicy::RunOnce)}};
    QList<Wish> all;
    for (const Wish &wish : {evening, music, backup}) {
        if (sides.action(wish.action).exists)
            all += wish;
    }
    return all;
}

QVariantMap NewSchedule::values(ActionSides &sides, const Wish &wish, quint32 user)
{
    QVariantMap all = values(sides, wish.action, user);
    QVariantMap parameters = all.value(ScheduleKey::parameters).toMap();
    parameters.insert(wish.parameters);
    all.insert(ScheduleKey::parameters, parameters);
    all.insert(ScheduleKey::name, wish.name);
    Recurrence recurrence;
    recurrence.rule = wish.rule;
    recurrence.localStart = WallTime::of(nextAt(wish.time));
    all.insert(ScheduleTimes{nextAt(wish.time), {}, recurrence}.toValues());
    if (wish.isOfSystem) {
        all.remove(ScheduleKey::owner);
        all.insert(ScheduleKey::actsIn, "daemon");
    }
    all.insert(wish.values);
    return all;
}
