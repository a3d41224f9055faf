// SPDX-License-Identifier: MIT
#include "hosts/daemon/WakeTrial.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"

#include <utility>

using namespace dozely;

namespace
{
/// Another one than that of the schedules' events, so that nobody takes it for one of theirs.
const QString owner = "com.dozely.test";

/// So far ahead the alarm is set that is only read back.
constexpr std::chrono::minutes readBackDistance(10);

/// Clocks have whole seconds.
constexpr std::chrono::seconds tolerance(2);

QDateTime wholeSecond(const QDateTime &date)
{
    return QDateTime::fromSecsSinceEpoch((date.toMSecsSinceEpoch() + 999) / 1000, Qt::UTC);
}
} // namespace

WakeTrial::WakeTrial(Clock &clock, std::function<bool(const QDateTime &)> isBusy)
    : m_clock(clock), m_isBusy(std::move(isBusy))
{
    auto &center = NSNotificationCenter::defaultCenter();
    center.addObserver(this, "systemWillSleep", ZDRPowerManagerSystemWillSleep);
    center.addObserver(this, "systemDidWake", ZDRPowerManagerSystemDidWake);
}

WakeTrial::~WakeTrial()
{
    takeAlarmBack();
}

void WakeTrial::takeAlarmBack()
{
    if (!m_planned.isValid())
        return;
    const auto scheduler = Port<PowerEventScheduler>::current();
    scheduler->cancel(std::exchange(m_planned, {}), owner, PowerEventScheduler::wake);
    if (const QDateTime former = std::exchange(m_former, {}); former.isValid())
        scheduler->putBackAlarm(former);
}

WakeTrial::Finding WakeTrial::tryAlarm() const
{
    const auto scheduler = Port<PowerEventScheduler>::current();
    const auto alarm = scheduler->alarm();
    if (!alarm)
        return {Outcome::NoClock, "This machine has no clock that could wake it."};
    const QString fault = scheduler->testAlarm(m_clock.currentDate().addDuration(readBackDistance));
    if (!fault.isEmpty())
        return {Outcome::Dropped,
                QString("The clock %1 did not keep its alarm: %2").arg(logLabel(alarm->device), fault)};
    return {Outcome::Kept,
            QString("The alarm of %1 was set, read back, and set as it was.").arg(logLabel(alarm->device))};
}

/// What forbids that the machine sleeps now.
std::optional<QString> WakeTrial::reasonAgainst(std::chrono::seconds duration) const
{
    const auto power = Port<SystemPower>::current();
    if (m_done)
        return "it is being tried already";
    if (duration < shortestSleep || duration > longestSleep)
        return QString("the machine can be tried with %1 to %2 seconds")
            .arg(shortestSleep.count())
            .arg(longestSleep.count());
    if (m_isBusy(m_clock.currentDate().addDuration(duration + quietTime)) || power->isKeptAwakeElsewhere())
        return "an action goes on, or is due too soon";
    if (const QStringList blockers = power->blockers(SystemPower::Change::Sleep); !blockers.isEmpty())
        return QString("the machine is kept awake by %1").arg(logLabel(blockers.join("; ")));
    if (!power->canSleep())
        return "this machine cannot be put to sleep";
    return {};
}

void WakeTrial::sleep(std::chrono::seconds duration, const Done &done)
{
    if (const auto why = reasonAgainst(duration))
        return done(Error{*why});
    const Finding alarm = tryAlarm();
    if (alarm.outcome != Outcome::Kept)
        return done(alarm);
    const QDateTime planned = wholeSecond(m_clock.currentDate().addDuration(duration));
    const auto scheduler = Port<PowerEventScheduler>::current();
    const auto former = scheduler->alarm();
    const qint32 failure = scheduler->schedule(planned, owner, PowerEventScheduler::wake);
    if (failure != 0)
        return done(Finding{Outcome::Dropped,
                            QString("The alarm could not be set: %1.").arg(qt_error_string(failure))});
    m_planned = planned;
    m_former = former && !former->isOurs ? former->armedFor : QDateTime();
    m_done = done;
    m_isAsleep = false;
    m_patience = std::make_unique<QObject>();
    m_clock.callAfter(longestFallingAsleep, m_patience.get(), [this] {
        if (!m_isAsleep)
            end(Error{"the machine did not fall asleep"});
    });
    ZDRLog("The machine sleeps until %@, to try whether its clock wakes it", planned);
    if (!Port<SystemPower>::current()->sleep())
        end(Error{"the machine does not let itself be put to sleep"});
}

void WakeTrial::systemWillSleep(const NSNotification &)
{
    m_isAsleep = m_done != nullptr;
}

void WakeTrial::systemDidWake(const NSNotification &)
{
    if (!std::exchange(m_isAsleep, false))
        return;
    const QDateTime back = m_clock.currentDate();
    if (back < m_planned.addDuration(-tolerance))
        end(Finding{Outcome::TooEarly, "The machine was back before its clock could wake it.", m_planned,
                    back});
    else if (back > m_planned.addDuration(longestWaking))
        end(Finding{Outcome::TooLate, "The alarm of the clock passed without waking the machine.", m_planned,
                    back});
    else
        end(Finding{Outcome::Woken, "The machine slept, and its clock woke it.", m_planned, back});
}

void WakeTrial::end(const Result<Finding> &finding)
{
    m_isAsleep = false;
    takeAlarmBack();
    ZDRLog("Whether the clock wakes the machine was tried: %@",
           finding ? finding->sentence : finding.error().text);
    const Done done = std::exchange(m_done, {});
    m_patience.reset();
    done(finding);
}
