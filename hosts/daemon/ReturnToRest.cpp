// SPDX-License-Identifier: MIT
#include "hosts/daemon/ReturnToRest.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/system/machine/LoginSessions.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "hosts/common/orders/OrderPermissions.h"

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
SystemPower::Change changeOf(AfterAction step)
{
    return step == AfterAction::Sleep ? SystemPower::Change::Sleep : SystemPower::Change::PowerOff;
}

QString sentence(AfterAction step)
{
    return step == AfterAction::Sleep ? "does not go to sleep again" : "is not switched off again";
}

QDateTime wholeSecondAfter(const QDateTime &date)
{
    return QDateTime::fromSecsSinceEpoch((date.toMSecsSinceEpoch() + 999) / 1000, Qt::UTC);
}
} // namespace

ReturnToRest::ReturnToRest(Clock &clock, Surroundings surroundings)
    : m_clock(clock), m_surroundings(std::move(surroundings))
{
    auto &center = NSNotificationCenter::defaultCenter();
    center.addObserver(this, "systemWillChange", ZDRPowerManagerSystemWillSleep);
    center.addObserver(this, "systemWillChange", ZDRPowerManagerSystemWillPowerOff);
}

QString ReturnToRest::bundlePathOf(AfterAction step)
{
    const QString name = step == AfterAction::Sleep ? "Sleep" : "PowerOff";
    return RootFolder::join(QString("%1/%2.plugin").arg(FixedPath::plugIns, name));
}

void ReturnToRest::noteEnd(const Occurrence &occurrence)
{
    const AfterAction step = occurrence.schedule.afterAction.value_or(AfterAction::Nothing);
    if (step == AfterAction::Nothing || occurrence.isAskedFor)
        return;
    const QString label = logLabel(occurrence.schedule.name);
    const auto back = m_surroundings.wokenFor(occurrence.moment());
    if (!back) {
        ZDRLog("Schedule \"%@\": the machine %@: it did not come back for that", label, sentence(step));
        return;
    }
    m_wish = Wish{label, step, *back};
    lookAfter(firstLook);
}

/// It rests already, or its user has decided.
void ReturnToRest::systemWillChange(const NSNotification &)
{
    m_wish.reset();
    m_look.reset();
}

void ReturnToRest::lookAfter(std::chrono::milliseconds delay)
{
    m_look = std::make_unique<QObject>();
    m_clock.callAfter(delay, m_look.get(), [this] { look(); });
}

void ReturnToRest::look()
{
    if (!m_wish)
        return;
    const bool isBusy = m_surroundings.isBusy(m_clock.currentDate().addDuration(quietTime)) ||
                        Port<SystemPower>::current()->isKeptAwakeElsewhere();
    if (isBusy) {
        m_wish->announced = {};
        lookAfter(busyPause);
    } else if (const auto why = reasonAgainst()) {
        end(*why);
    } else if (isHeldUp()) {
        m_wish->announced = {};
    } else if (!m_wish->announced.isValid()) {
        announce();
    } else {
        act();
    }
}

/// What is not known counts as use.
std::optional<QString> ReturnToRest::reasonAgainst() const
{
    if (m_wish->isWanted)
        return {};
    const auto sessions = Port<LoginSessions>::current()->current();
    if (!sessions)
        return "nobody can tell whether it is in use";
    for (const LoginSessions::Session &session : *sessions) {
        if (session.began > m_wish->back)
            return QString("%1 has logged in since").arg(logLabel(session.user));
        if (!session.unusedSince || *session.unusedSince > m_wish->back.addDuration(settling))
            return QString("%1 may be using it").arg(logLabel(session.user));
    }
    return {};
}

bool ReturnToRest::isHeldUp()
{
    const QStringList blockers = Port<SystemPower>::current()->blockers(changeOf(m_wish->step));
    if (blockers.isEmpty())
        return false;
    const QString names = logLabel(blockers.join("; "));
    if (++m_wish->timesHeldUp > mostTimesHeldUp) {
        end("given up, held up by " + names);
        return true;
    }
    ZDRLog("Schedule \"%@\": the machine %@ yet: held up by %@; tried again in ten minutes", m_wish->label,
           sentence(m_wish->step), names);
    lookAfter(heldUpPause);
    return true;
}

void ReturnToRest::announce()
{
    const QDateTime date = wholeSecondAfter(m_clock.currentDate().addDuration(alertLead));
    const auto told = m_surroundings.alert(m_wish->step, date);
    if (!told) {
        end(told.error().text);
        return;
    }
    if (!*told) {
        act();
        return;
    }
    m_wish->announced = date;
    m_wish->told = *told;
    lookAfter(std::chrono::milliseconds(m_clock.currentDate().msecsTo(date)));
}

void ReturnToRest::act()
{
    const Wish wish = *m_wish;
    m_wish.reset();
    if (wish.step == AfterAction::Sleep) {
        ZDRLog("Schedule \"%@\": the machine goes to sleep again", wish.label);
        ZDRPowerManager::forceSleep();
        return;
    }
    ZDRLog("Schedule \"%@\": the machine is switched off again", wish.label);
    if (!Port<SystemPower>::current()->powerOff())
        ZDRLog("Schedule \"%@\": the machine does not let itself be switched off", wish.label);
}

void ReturnToRest::end(const QString &why)
{
    const Wish wish = *std::exchange(m_wish, std::nullopt);
    m_look.reset();
    ZDRLog("Schedule \"%@\": the machine %@: %@", wish.label, sentence(wish.step), why);
}

bool ReturnToRest::isMeant(std::optional<quint32> sender, const QString &bundlePath,
                           const QDateTime &date) const
{
    return m_wish && m_wish->announced.isValid() && date == m_wish->announced &&
           bundlePath == bundlePathOf(m_wish->step) && sender &&
           (sender == m_wish->told || OrderPermissions::isSystem(sender, RootFolder::owner()));
}

void ReturnToRest::cancel(const QString &by)
{
    if (m_wish)
        end("cancelled by " + by);
}

void ReturnToRest::postpone(std::chrono::seconds delay, const QString &by)
{
    if (!m_wish || !m_wish->announced.isValid())
        return;
    const QDateTime date = std::exchange(m_wish->announced, {}).addDuration(delay);
    m_wish->isWanted = true;
    ZDRLog("Schedule \"%@\": the machine %@ yet: postponed by %@", m_wish->label, sentence(m_wish->step), by);
    const std::chrono::milliseconds wait(m_clock.currentDate().msecsTo(date.addDuration(-alertLead)));
    lookAfter(std::max(wait, std::chrono::milliseconds(0)));
}
