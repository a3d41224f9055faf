// SPDX-License-Identifier: MIT
#include "hosts/application/window/NewSchedule.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/application/book/ScheduleKeys.h"
#include "hosts/application/book/ScheduleTimes.h"

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

QVariantMap NewSchedule::ofWish(ActionSides &sides, const QVariantMap &wish, quint32 user)
{
    const QString action = wish.value(ScheduleKey::bundlePath).toString();
    QVariantMap all = values(sides, action, user);
    QVariantMap parameters = all.value(ScheduleKey::parameters).toMap();
    parameters.insert(wish.value(ScheduleKey::parameters).toMap());
    all.insert(wish);
    all.insert(ScheduleKey::parameters, parameters);
    if (all.value(ScheduleKey::actsIn) != "session")
        all.remove(ScheduleKey::owner);
    return all;
}
