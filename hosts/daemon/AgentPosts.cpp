// SPDX-License-Identifier: MIT
#include "hosts/daemon/AgentPosts.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/daemon/DaemonActions.h"

using namespace dozely;

using Delivery = AgentPosts::Delivery;
using Deed = PerformanceOrder::Deed;

namespace
{
QString performanceOf(const Occurrence &occurrence, const char *deed)
{
    return DaemonActions::nameOf({occurrence.schedule.identifier, occurrence.date}) + deed;
}

NSNotification orderAbout(QLatin1StringView name, const Occurrence &occurrence)
{
    QVariantMap what{{OrderKey::bundlePath, occurrence.schedule.fullBundlePath()},
                     {OrderKey::date, occurrence.calendarDate()},
                     {OrderKey::parameters, occurrence.schedule.parameters},
                     {OrderKey::scheduleName, occurrence.schedule.name},
                     {OrderKey::scheduleIdentifier, occurrence.schedule.identifier}};
    if (occurrence.skipsOverlap())
        what.insert(OrderKey::skipsOverlap, true);
    return NSNotification(name, QString(OrderSender::userAgent), what);
}
} // namespace

std::optional<Delivery> AgentPosts::handOver(const Occurrence &occurrence,
                                             const PlugInAnswers::Answers &answers,
                                             const ConsoleUser::User &user, const Delivered &delivered)
{
    if (answers.handsOverItself)
        return perform(Deed::HandOver, performanceOf(occurrence, "h"), occurrence, user, delivered);
    return post(OrderName::userAgentMustAct, occurrence, user.userId);
}

std::optional<Delivery> AgentPosts::announce(const Occurrence &occurrence,
                                             const PlugInAnswers::Answers &answers,
                                             const ConsoleUser::User &user, const Delivered &delivered)
{
    if (answers.announcesItself)
        return perform(Deed::Announce, performanceOf(occurrence, "a"), occurrence, user, delivered);
    return post(OrderName::userAgentMustAnticipate, occurrence, user.userId);
}

void AgentPosts::tellSoonDue(const Occurrence &occurrence, quint32 userId)
{
    WDCommunicationCenter::sharedInstance()->tellAgentOfUser(
        orderAbout(OrderName::userAgentMustPrepare, occurrence), userId);
}

void AgentPosts::withdraw(const QString &bundlePath, const QDateTime &date, quint32 userId)
{
    WDCommunicationCenter::sharedInstance()->tellAgentOfUser(
        NSNotification(OrderName::userAgentMustWithdraw, QString(OrderSender::userAgent),
                       {{OrderKey::bundlePath, bundlePath}, {OrderKey::date, date}}),
        userId);
}

/// What the base of the plug-in classes does (WDDaemonPlugIn), but without looking at the bundle, which may
/// be that user's own.
Delivery AgentPosts::post(QLatin1StringView name, const Occurrence &occurrence, quint32 userId)
{
    m_scheduler.lateness().beginWait();
    const bool isReceived = GuardedPosting::postToAgentOfUser(orderAbout(name, occurrence), userId);
    m_scheduler.lateness().endWait();
    if (isReceived)
        return Delivery::Received;
    if (name == OrderName::userAgentMustAnticipate)
        ZDRLog("anticipateInUserAgentNow impossible");
    const bool isNotSent =
        WDCommunicationCenter::lastPostOutcome() == WDCommunicationCenter::PostOutcome::NotSent;
    return isNotSent ? Delivery::NotSent : Delivery::Unknown;
}

std::optional<Delivery> AgentPosts::perform(Deed deed, const QString &name, const Occurrence &occurrence,
                                            const ConsoleUser::User &user, const Delivered &delivered)
{
    PerformanceOrder order;
    order.schedule = occurrence.schedule.name;
    order.bundlePath = occurrence.schedule.fullBundlePath();
    order.parameters = occurrence.schedule.parameters;
    order.date = occurrence.calendarDate();
    order.deed = deed;
    order.consoleUser = user.userId;
    order.consoleUserName = user.name;
    const QString label = logLabel(order.schedule);
    const auto started =
        m_performances.prepare(name, std::move(order), [delivered, label](const PerformanceOutcome &outcome) {
            if (!outcome.failure.isEmpty())
                ZDRLog("Schedule \"%@\": its plug-in could not give it to the agent: %@", label,
                       outcome.failure);
            const bool wasNotTried = outcome.delivery == Delivery::None;
            const bool mayHaveBeenSent = outcome.hasBegun && wasNotTried;
            delivered(mayHaveBeenSent ? Delivery::Unknown
                      : wasNotTried   ? Delivery::NotSent
                                      : outcome.delivery);
        });
    if (!started) {
        ZDRLog("Schedule \"%@\": its plug-in could not give it to the agent: %@", label,
               started.error().text);
        return Delivery::NotSent;
    }
    m_performances.go(name);
    return {};
}
