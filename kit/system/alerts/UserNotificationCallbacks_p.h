// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/NSUserNotificationCenter.h"

#include <optional>

namespace dozely
{

/// The optional callbacks of a delegate, looked up by name in its meta-object and called at once. Each says
/// whether (or what) the delegate answered; one that is null, no QObject or without that callback answers
/// nothing. What the delegate raises passes through.
namespace UserNotificationCallbacks
{
bool didDeliver(NSUserNotificationCenterDelegate *delegate, NSUserNotificationCenter *center,
                const std::shared_ptr<NSUserNotification> &notification);
bool didActivate(NSUserNotificationCenterDelegate *delegate, NSUserNotificationCenter *center,
                 const std::shared_ptr<NSUserNotification> &notification);
std::optional<bool> shouldPresent(NSUserNotificationCenterDelegate *delegate,
                                  NSUserNotificationCenter *center,
                                  const std::shared_ptr<NSUserNotification> &notification);
} // namespace UserNotificationCallbacks

} // namespace dozely
