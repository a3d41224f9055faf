// SPDX-License-Identifier: MIT
#include "hosts/agent/UserAgentController.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/common/orders/OrderReceiver.h"

using namespace dozely;

namespace
{
/// Some time less than the daemon waits for an answer, 5 s at least.
constexpr std::chrono::seconds certainlyInTime(3);

QList<PlugInLoader::Source> trustedSources()
{
    QList<PlugInLoader::Source> sources;
    const auto owner = RootFolder::owner();
    if (!owner)
        return sources;
    sources += {QString(), {*owner}};
    const QString home = RealHomeDirectory();
    if (!home.isEmpty())
        sources += {RootFolder::join(home + FixedPath::plugIns), {*owner, NSProcessInfo::effectiveUserID()}};
    return sources;
}
} // namespace

UserAgentController::UserAgentController()
    : m_loader(InfoKey::userAgentModule, trustedSources()), m_alerts(*Port<Clock>::current())
{
    OrderReceiver::receive(OrderName::userAgentMustAct, OrderSender::userAgent, this,
                           [this](const ReceivedOrder &received) { userAgentMustAct(received); });
    OrderReceiver::receive(OrderName::userAgentMustAnticipate, OrderSender::userAgent, this,
                           [this](const ReceivedOrder &received) { userAgentMustAnticipate(received); });
}

void UserAgentController::askForAnnouncements()
{
    GuardedPosting::postToDaemon(
        NSNotification(OrderName::daemonMustAnticipateAgain, OrderSender::userAgent, {}));
}

UserAgentController::~UserAgentController()
{
    for (const auto &plugIn : m_running.current()) {
        const auto acting = std::dynamic_pointer_cast<WDUserAgentPlugIn>(plugIn);
        if (const auto thrown = GuardedPosting::guardPlugIn([&] { acting->stopAction(); }))
            ZDRLog("A plug-in was told to stop and raised: %@", *thrown);
    }
}

std::optional<AgentOrder> UserAgentController::orderIn(const ReceivedOrder &received)
{
    auto order = AgentOrder::in(received);
    if (order)
        return *std::move(order);
    ZDRLog("%@ refused: %@", received.name, order.error().text);
    return {};
}

void UserAgentController::userAgentMustAct(const ReceivedOrder &received)
{
    const auto order = orderIn(received);
    if (!order)
        return;
    m_alerts.withdraw(order->bundlePath, order->date);
    const auto made = makePlugIn(order->bundlePath);
    if (!made) {
        ZDRLog("The action was not performed: %@", made.error().text);
        reportOutcome(*order, OrderOutcome::notPerformed);
        return;
    }
    const auto &plugIn = *made;
    const QString label = logLabel(order->bundlePath.section('/', -1));
    ZDRLog("%@ acts in the session", label);
    const QDateTime start = Port<Clock>::current()->currentDate();
    const auto thrown = GuardedPosting::guardPlugIn([&] {
        plugIn->setParameters(order->parameters);
        plugIn->setCalendarDate(order->date);
        plugIn->loadNib();
        plugIn->actInUserAgent();
    });
    if (thrown) { // nobody knows how far it came
        ZDRLog("%@ raised: %@", label, *thrown);
        return;
    }
    m_running.keep(plugIn);
    // The daemon takes for performed what was answered in time. An order is not sent before its date.
    if (start >= order->date.addDuration(certainlyInTime))
        reportOutcome(*order, OrderOutcome::performed);
}

/// BLOCKING: as a request of WDCommunicationCenter.
void UserAgentController::reportOutcome(const AgentOrder &order, QLatin1StringView outcome)
{
    GuardedPosting::postToDaemon(NSNotification(OrderName::daemonMustNoteOutcome,
                                                QString(OrderSender::daemon),
                                                {{OrderKey::bundlePath, order.bundlePath},
                                                 {OrderKey::date, order.date},
                                                 {OrderKey::parameters, order.parameters},
                                                 {OrderKey::outcome, QString(outcome)}}));
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
        plugIn->anticipateBeforeSelfAction();
    });
    if (thrown)
        ZDRLog("%@ raised: %@", label, *thrown);
    else
        m_alerts.keep(order->bundlePath, plugIn);
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
