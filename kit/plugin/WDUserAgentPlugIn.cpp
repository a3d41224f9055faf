// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugIn.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/bundles/InterfaceFileLoader.h"
#include "DozelyKit/core/foundation/DateStyles_p.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/StringFormat.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/plugin/OccurrenceOrder_p.h"

using namespace dozely;

namespace
{
QString localized(const std::shared_ptr<NSBundle> &bundle, const QString &key)
{
    return bundle ? bundle->localizedStringForKey(key) : key;
}
} // namespace

WDUserAgentControllerPlugInProtocol::~WDUserAgentControllerPlugInProtocol() = default;

WDUserAgentPlugIn::WDUserAgentPlugIn() = default;

WDUserAgentPlugIn::~WDUserAgentPlugIn() = default;

void WDUserAgentPlugIn::loadNib()
{
    const auto own = bundle();
    const QString name = own ? own->objectForInfoDictionaryKey(InfoKey::userAgentNib).toString() : QString();
    const auto loader = Port<InterfaceFileLoader>::current();
    if (!name.isEmpty() && loader)
        loader->loadNibNamed(name, *own, this);
}

void WDUserAgentPlugIn::actInDaemonNow()
{
    if (!calendarDate().isValid()) {
        ZDRLog("actInDaemonNow impossible");
        return;
    }
    WDCommunicationCenter::sharedInstance()->postNotificationToDaemon(OccurrenceOrder::make(
        OrderName::daemonMustAct, OrderSender::daemon, *this, OccurrenceOrder::Parameters::EmptyWhenMissing));
}

void WDUserAgentPlugIn::cancelEvent()
{
    if (!calendarDate().isValid()) {
        ZDRLog("cancelEvent impossible");
        return;
    }
    WDCommunicationCenter::sharedInstance()->postNotificationToDaemon(OccurrenceOrder::make(
        OrderName::daemonMustRemove, OrderSender::daemon, *this, OccurrenceOrder::Parameters::LeftOut));
}

void WDUserAgentPlugIn::actInUserAgent() {}

void WDUserAgentPlugIn::stopAction() {}

void WDUserAgentPlugIn::anticipateBeforeSelfAction()
{
    if (longIntegerParameter(ParameterKey::alert) != 0)
        showUserNotification();
}

void WDUserAgentPlugIn::stopAnticipation()
{
    if (!m_userNotification)
        return;
    NSUserNotificationCenter::defaultUserNotificationCenter().removeDeliveredNotification(m_userNotification);
    m_userNotification.reset();
}

std::shared_ptr<NSUserNotification> WDUserAgentPlugIn::userNotification()
{
    if (!m_userNotification) {
        m_userNotification = std::make_shared<NSUserNotification>();
        m_userNotification->setTitle(pluginName());
        m_userNotification->setIdentifier(
            stringWithFormat("<%@>|<%@>", {pluginIdentifier(), calendarDate()}));
    }
    return m_userNotification;
}

void WDUserAgentPlugIn::setUserNotification(std::shared_ptr<NSUserNotification> notification)
{
    m_userNotification = std::move(notification);
}

void WDUserAgentPlugIn::showUserNotification()
{
    if (timeBeforeSelfAnticipation() == -1)
        return;
    const auto self = std::static_pointer_cast<WDUserAgentPlugIn>(weak_from_this().lock());
    if (!self)
        throw NSException(NSInvalidArgumentException,
                          "A plug-in that alerts must be held by a shared pointer.");
    const QString when = stringWithFormat(
        "%@, %@", {DateStyles::mediumDate(calendarDate()), DateStyles::shortTime(calendarDate())});
    const QString format =
        localized(NSBundle::bundleForClassNamed(userAgentControllerClass), TextKey::alertMessage);
    const auto alert = userNotification();
    alert->setInformativeText(stringWithFormat(format, {when}));
    alert->setActionButtonTitle(localized(NSBundle::bundleForClass(&staticMetaObject), TextKey::cancel));
    alert->setUserInfo({{AlertKey::date, calendarDate()}});
    WDUserNotificationCenterDelegate::sharedInstance()->setDelegateForUserNotification(self, alert);
    NSUserNotificationCenter::defaultUserNotificationCenter().deliverNotification(alert);
}
