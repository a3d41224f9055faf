// SPDX-License-Identifier: MIT
#include "DozelyKit/system/alerts/WDUserNotificationCenterDelegate.h"

#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/alerts/UserNotificationCallbacks_p.h"

#include <algorithm>

using namespace dozely;

namespace
{
std::shared_ptr<WDUserNotificationCenterDelegate> &instance()
{
    // Never destroyed: it holds objects of plug-ins, whose code may be in use until the very end.
    static auto *const shared = new std::shared_ptr<WDUserNotificationCenterDelegate>;
    return *shared;
}

/// The delegate to pass a callback for `notification` on to; null when there is none.
WDUserNotificationCenterDelegate::Value
delegateOf(const std::shared_ptr<WDUserNotificationCenterDelegate::MapTable> &table,
           const WDUserNotificationCenterDelegate::Key &notification)
{
    if (!table || !notification)
        return nullptr;
    const auto match = std::ranges::find_if(*table, [&](const auto &entry) {
        return zandorSoftwareExtensions::isEqualToUserNotification(*entry.first, *notification);
    });
    return match == table->end() ? nullptr : match->second;
}
} // namespace

bool zandorSoftwareExtensions::isEqualToUserNotification(const NSUserNotification &receiver,
                                                         const NSUserNotification &other)
{
    // An empty identifier is one, a missing one is not.
    return !receiver.identifier().isNull() && !other.identifier().isNull() &&
           receiver.identifier() == other.identifier();
}

WDUserNotificationCenterDelegateDelegate::~WDUserNotificationCenterDelegateDelegate() = default;

WDUserNotificationCenterDelegate::WDUserNotificationCenterDelegate()
    : m_mapTable(std::make_shared<MapTable>())
{
}

WDUserNotificationCenterDelegate::~WDUserNotificationCenterDelegate() = default;

std::shared_ptr<WDUserNotificationCenterDelegate> WDUserNotificationCenterDelegate::init()
{
    if (!instance()) {
        instance().reset(new WDUserNotificationCenterDelegate);
        NSUserNotificationCenter::defaultUserNotificationCenter().setDelegate(instance().get());
        setProblemReport([](const QString &sentence) { ZDRLog("%@", sentence); });
    }
    return instance();
}

std::shared_ptr<WDUserNotificationCenterDelegate> WDUserNotificationCenterDelegate::sharedInstance()
{
    return instance() ? instance() : init();
}

void WDUserNotificationCenterDelegate::setDelegateForUserNotification(const Value &delegate,
                                                                      const Key &notification)
{
    if (!m_mapTable || !notification)
        return;
    const auto entry =
        std::ranges::find(*m_mapTable, notification, [](const auto &known) { return known.first; });
    if (entry == m_mapTable->end())
        m_mapTable->append({notification, delegate});
    else
        entry->second = delegate;
}

std::shared_ptr<WDUserNotificationCenterDelegate::MapTable> WDUserNotificationCenterDelegate::mapTable() const
{
    return m_mapTable;
}

void WDUserNotificationCenterDelegate::setMapTable(std::shared_ptr<MapTable> mapTable)
{
    m_mapTable = std::move(mapTable);
}

void WDUserNotificationCenterDelegate::userNotificationCenterDidDeliverNotification(
    NSUserNotificationCenter *center, const std::shared_ptr<NSUserNotification> &notification)
{
    const Value delegate = delegateOf(m_mapTable, notification);
    UserNotificationCallbacks::didDeliver(delegate.get(), center, notification);
}

void WDUserNotificationCenterDelegate::userNotificationCenterDidActivateNotification(
    NSUserNotificationCenter *center, const std::shared_ptr<NSUserNotification> &notification)
{
    const Value delegate = delegateOf(m_mapTable, notification);
    UserNotificationCallbacks::didActivate(delegate.get(), center, notification);
}

bool WDUserNotificationCenterDelegate::userNotificationCenterShouldPresentNotification(
    NSUserNotificationCenter *center, const std::shared_ptr<NSUserNotification> &notification)
{
    const Value delegate = delegateOf(m_mapTable, notification);
    return UserNotificationCallbacks::shouldPresent(delegate.get(), center, notification).value_or(true);
}
