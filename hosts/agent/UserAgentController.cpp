// SPDX-License-Identifier: MIT
#include "hosts/agent/UserAgentController.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/common/orders/OrderReceiver.h"

using namespace dozely;

namespace
{
constexpr QLatin1StringView otherwiseKey("Otherwise"); // in the agent's bundle, for plug-ins that do not say
} // namespace

UserAgentController::UserAgentController()
    : m_loader(InfoKey::userAgentModule, PlugInLoader::sourcesOfTheSession()),
      m_alerts(*Port<Clock>::current()),
      m_actions(m_loader),
      m_testAlert(*Port<Clock>::current())
{
    OrderReceiver::receive(OrderName::userAgentMustAct, OrderSender::userAgent, this,
                           [this](const ReceivedOrder &received) { userAgentMustAct(received); });
    OrderReceiver::receive(OrderName::userAgentMustPrepare, OrderSender::userAgent, this,
                           [this](const ReceivedOrder &received) { userAgentMustPrepare(received); });
    OrderReceiver::receive(OrderName::userAgentMustAnticipate, OrderSender::userAgent, this,
                           [this](const ReceivedOrder &received) { userAgentMustAnticipate(received); });
    OrderReceiver::receive(OrderName::userAgentMustWithdraw, OrderSender::userAgent, this,
                           [this](const ReceivedOrder &received) { userAgentMustWithdraw(received); });
    OrderReceiver::receive(OrderName::userAgentMustTellFailure, OrderSender::userAgent, this,
                           [this](const ReceivedOrder &received) { userAgentMustTellFailure(received); });
    OrderReceiver::receive(OrderName::userAgentMustTestAlert, OrderSender::application, this,
                           [this](const ReceivedOrder &received) { userAgentMustTestAlert(received); });
}

void UserAgentController::askForAnnouncements()
{
    GuardedPosting::postToDaemon(
        NSNotification(OrderName::daemonMustAnticipateAgain, OrderSender::userAgent, {}));
}

bool UserAgentController::mayBePutOff(const std::shared_ptr<NSUserNotification> &alert) const
{
    return m_alerts.announcedBy(alert).has_value();
}

AlertDetails UserAgentController::detailsOf(const std::shared_ptr<NSUserNotification> &alert) const
{
    const auto announced = m_alerts.announcedBy(alert);
    if (!announced)
        return {};
    const auto bundle = NSBundle::bundleWithPath(announced->bundlePath);
    const auto own = NSBundle::bundleForClassNamed(userAgentControllerClass);
    const QString generic = own ? own->localizedStringForKey(otherwiseKey) : QString();
    return {announced->schedules.join(", "),
            bundle ? bundle->localizedStringForKey(TextKey::unlessCancelled, generic) : generic};
}

bool UserAgentController::putOff(const std::shared_ptr<NSUserNotification> &alert, Postponement choice)
{
    const auto announced = m_alerts.announcedBy(alert);
    if (!announced)
        return false;
    const QString label = logLabel(announced->bundlePath.section('/', -1));
    if (!GuardedPosting::postToDaemon(Postponements::order(choice, announced->bundlePath, announced->date,
                                                           Port<Clock>::current()->currentDate()))) {
        ZDRLog("The action of %@ was not put off: the daemon did not take the order", label);
        return false;
    }
    m_alerts.withdraw(announced->bundlePath, announced->date);
    return true;
}

std::optional<AgentOrder> UserAgentController::orderIn(const ReceivedOrder &received)
{
    auto order = AgentOrder::in(received);
    if (order)
        return *std::move(order);
    ZDRLog("%@ refused: %@", received.name, order.error().text);
    return {};
}

void UserAgentController::userAgentMustPrepare(const ReceivedOrder &received)
{
    if (const auto order = orderIn(received))
        m_actions.prepare(*order);
}

void UserAgentController::userAgentMustAct(const ReceivedOrder &received)
{
    const auto order = orderIn(received);
    if (!order)
        return;
    m_alerts.withdraw(order->bundlePath, order->date);
    m_actions.perform(*order);
}

void UserAgentController::userAgentMustAnticipate(const ReceivedOrder &received)
{
    const auto order = orderIn(received);
    if (!order)
        return;
    if (!m_alerts.isAhead(order->date)) {
        ZDRLog("The action was not announced: its time has come");
        return;
    }
    // The alert does not tell occurrences of one bundle and date apart: the same one is shown anew for them.
    auto plugIn = m_alerts.plugIn(order->bundlePath, order->date);
    const bool isNew = !plugIn;
    if (isNew) {
        const auto made = makePlugIn(order->bundlePath);
        if (!made) {
            ZDRLog("The action was not announced: %@", made.error().text);
            return;
        }
        plugIn = *made;
    }
    const QString label = logLabel(order->bundlePath.section('/', -1));
    ZDRLog("%@ announces an action of %@", label, order->date);
    const auto thrown = GuardedPosting::guardPlugIn([&] {
        plugIn->setParameters(order->parameters);
        plugIn->setCalendarDate(order->date);
        if (isNew)
            plugIn->loadNib();
        // Who shows the alert asks whose it is.
        m_alerts.keep(order->bundlePath, plugIn, order->date, order->schedule);
        plugIn->anticipateBeforeSelfAction();
    });
    if (!thrown)
        return;
    ZDRLog("%@ raised: %@", label, *thrown);
    if (isNew)
        m_alerts.forget(order->bundlePath, order->date);
}

void UserAgentController::userAgentMustWithdraw(const ReceivedOrder &received)
{
    if (const auto order = orderIn(received))
        m_alerts.withdraw(order->bundlePath, order->date);
}

void UserAgentController::userAgentMustTellFailure(const ReceivedOrder &received)
{
    if (!OrderPermissions::isSystem(received.peer, RootFolder::owner())) {
        ZDRLog("%@ refused: it comes not from the daemon", received.name);
        return;
    }
    const QString schedule = received.userInfo.value(OrderKey::scheduleName).toString();
    const QString reason = received.userInfo.value(OrderKey::failure).toString();
    ZDRLog("The user is told of schedule \"%@\": %@", logLabel(schedule), logLabel(reason));
    m_failures.show(schedule, reason);
}

void UserAgentController::userAgentMustTestAlert(const ReceivedOrder &received)
{
    if (!OrderPermissions::mayTestAlert(received.peer, RootFolder::owner(),
                                        NSProcessInfo::effectiveUserID())) {
        ZDRLog("%@ refused: it comes from another user", received.name);
        return;
    }
    ZDRLog("An alert is shown as a test");
    m_testAlert.show();
}

Result<std::shared_ptr<WDUserAgentPlugIn>> UserAgentController::makePlugIn(const QString &bundlePath)
{
    const auto bundle = m_loader.bundle(bundlePath);
    if (!bundle)
        return bundle.error();
    const auto plugIn = m_loader.make(*bundle);
    if (!plugIn)
        return plugIn.error();
    if (auto agentPlugIn = std::dynamic_pointer_cast<WDUserAgentPlugIn>(*plugIn))
        return agentPlugIn;
    return Error{
        QString("The module of %1 makes no plug-in for the agent").arg(logLabel((*bundle)->bundlePath()))};
}
