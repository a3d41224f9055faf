// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"
#include "DozelyKit/system/alerts/NSUserNotification.h"

#include <functional>
#include <memory>

namespace dozely
{

/// Port: something that shows alerts. Two of them may serve a process: the desktop's notifications
/// (Port<UserNotificationPresenter>), and a window of the system's own (alertWindow), for
/// desktops that keep notifications back while a program fills the screen or the user does not want to be
/// disturbed. A host that has windows fills in the latter; it finds the date of the action, for a countdown,
/// in the alert's user info as "Schedule Date". NSUserNotificationCenter hands every alert to both.
///
/// THREADING: the main thread. BLOCKING: never.
class DOZELYKIT_EXPORT UserNotificationPresenter
{
public:
    using Notification = std::shared_ptr<NSUserNotification>;

    /// What becomes of an alert. Called from the event loop or from within show and close; never after close
    /// for that alert, until it is shown again.
    struct Events {
        /// Accepted; once for each show that succeeds.
        std::function<void(const Notification &)> shown = [](const Notification &) {};
        /// Its button was pressed; with that it is closed.
        std::function<void(const Notification &)> activated = [](const Notification &) {};
        /// Dismissed, lost, or never shown: it is not there.
        std::function<void(const Notification &)> closed = [](const Notification &) {};
    };

    virtual ~UserNotificationPresenter() = default;

    /// Whom to tell; replaces whoever was told before.
    virtual void setEvents(Events events) = 0;

    /// Shows the alert as it is now, instead of what is shown of this object already. Held until it is
    /// closed.
    virtual void show(const Notification &notification) = 0;

    /// Takes the alert away, at once or as soon as that is possible. Harmless when it does not show.
    virtual void close(const Notification &notification) = 0;
};

/// The notifications of the desktop.
template<>
DOZELYKIT_EXPORT std::shared_ptr<UserNotificationPresenter> &Port<UserNotificationPresenter>::current();

/// The port of a window of our own beside those notifications; null in a process that shows none.
DOZELYKIT_EXPORT std::shared_ptr<UserNotificationPresenter> &alertWindow();

} // namespace dozely
