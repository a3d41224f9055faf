// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/UserNotificationPresenter.h"
#include "hosts/agent/AlertWindow.h"

#include <QHash>
#include <QList>

#include <functional>
#include <utility>

class QScreen;

/// Shows alerts in windows of our own, which no desktop keeps back. Windows whose screen was taken away move
/// to the main one.
///
/// THREADING: the main thread, with a QApplication.
class AlertWindowPresenter : public dozely::UserNotificationPresenter
{
public:
    AlertWindowPresenter();

    /// Takes all windows away at once. Must happen before the application object is destroyed.
    ~AlertWindowPresenter() override;
    AlertWindowPresenter(const AlertWindowPresenter &) = delete;
    AlertWindowPresenter &operator=(const AlertWindowPresenter &) = delete;

    /// Where an action may be put off as well as cancelled.
    struct Later {
        std::function<bool(const Notification &)> isOffered; ///< For this alert.

        /// What the user chose; true takes the window away, otherwise it stays. From the event loop.
        std::function<bool(const Notification &, Postponement)> choose;
    };

    /// For alerts shown from now on; with empty functions nothing is offered, as without this.
    void setLater(Later later) { m_later = std::move(later); }

    void setEvents(Events events) override;
    void show(const Notification &notification) override;
    void close(const Notification &notification) override;

    /// The window that shows this alert; null when none does.
    AlertWindow *window(const Notification &notification) const;

private:
    std::shared_ptr<AlertWindow> makeWindow(const Notification &notification);
    void place(AlertWindow &window) const;
    void placeStrayed();
    void follow(QScreen *screen);

    Events m_events;
    Later m_later;
    QObject m_screens; // hears of changes of the screens
    QHash<Notification, std::shared_ptr<AlertWindow>> m_windows;
    QList<std::weak_ptr<AlertWindow>> m_fading;
};
