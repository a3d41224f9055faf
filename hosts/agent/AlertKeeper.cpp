// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertKeeper.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"

using namespace dozely;

namespace
{
void stop(WDUserAgentPlugIn &plugIn)
{
    if (const auto thrown = GuardedPosting::guardPlugIn([&] { plugIn.stopAnticipation(); }))
        ZDRLog("A plug-in was told to withdraw its alert and raised: %@", *thrown);
}
} // namespace

AlertKeeper::AlertKeeper(Clock &clock) : m_clock(clock), m_timer(clock.makeAbsoluteTimer())
{
    connect(m_timer.get(), &AbsoluteTimer::due, this, &AlertKeeper::withdrawDue);
    connect(m_timer.get(), &AbsoluteTimer::clockChanged, this, &AlertKeeper::waitForNext);
}

AlertKeeper::~AlertKeeper()
{
    for (const auto &plugIn : std::as_const(m_plugIns))
        stop(*plugIn);
}

AlertKeeper::Key AlertKeeper::keyOf(const QString &bundlePath, const QDateTime &date)
{
    return {date.toMSecsSinceEpoch(), bundlePath};
}

bool AlertKeeper::isAhead(const QDateTime &date) const
{
    return m_clock.currentDate() < date;
}

std::shared_ptr<WDUserAgentPlugIn> AlertKeeper::plugIn(const QString &bundlePath, const QDateTime &date) const
{
    return m_plugIns.value(keyOf(bundlePath, date));
}

void AlertKeeper::keep(const QString &bundlePath, const std::shared_ptr<WDUserAgentPlugIn> &plugIn,
                       const QDateTime &date, const QString &schedule)
{
    const Key key = keyOf(bundlePath, date);
    m_plugIns.insert(key, plugIn);
    if (QStringList &schedules = m_schedules[key]; !schedule.isEmpty() && !schedules.contains(schedule))
        schedules += schedule;
    waitForNext();
}

void AlertKeeper::forget(const QString &bundlePath, const QDateTime &date)
{
    m_plugIns.remove(keyOf(bundlePath, date));
    m_schedules.remove(keyOf(bundlePath, date));
    waitForNext();
}

std::optional<AlertKeeper::Announced>
AlertKeeper::announcedBy(const std::shared_ptr<NSUserNotification> &alert) const
{
    std::optional<Announced> announced;
    if (!alert)
        return announced;
    for (auto kept = m_plugIns.cbegin(); kept != m_plugIns.cend() && !announced; ++kept) {
        const auto thrown = GuardedPosting::guardPlugIn([&] {
            const QDateTime date = (*kept)->calendarDate();
            if ((*kept)->userNotification() == alert && alert->userInfo().value(AlertKey::date) == date &&
                date.toMSecsSinceEpoch() == kept.key().first && isAhead(date))
                announced = Announced{kept.key().second, date, m_schedules.value(kept.key())};
        });
        if (thrown)
            ZDRLog("A plug-in was asked for its alert and raised: %@", *thrown);
    }
    return announced;
}

void AlertKeeper::withdraw(const QString &bundlePath, const QDateTime &date)
{
    withdraw(keyOf(bundlePath, date));
    waitForNext();
}

void AlertKeeper::withdraw(const Key &key)
{
    const auto plugIn = m_plugIns.take(key);
    m_schedules.remove(key);
    if (!plugIn)
        return;
    if (NSUserNotificationCenter::defaultUserNotificationCenter().deliveredNotifications().contains(
            plugIn->userNotification()))
        ZDRLog("The alert of %@ is withdrawn", logLabel(key.second.section('/', -1)));
    stop(*plugIn);
}

void AlertKeeper::withdrawDue()
{
    while (!m_plugIns.isEmpty() && m_plugIns.firstKey().first <= m_clock.currentDate().toMSecsSinceEpoch()) {
        const Key due = m_plugIns.firstKey(); // a copy: the map's own goes with the plug-in
        withdraw(due);
    }
    waitForNext();
}

void AlertKeeper::waitForNext()
{
    if (m_plugIns.isEmpty())
        m_timer->stop();
    else
        m_timer->start(QDateTime::fromMSecsSinceEpoch(m_plugIns.firstKey().first, Qt::UTC));
}
