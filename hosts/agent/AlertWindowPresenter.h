// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/UserNotificationPresenter.h"
#include "hosts/agent/AlertWindow.h"

#include <QHash>
#include <QList>

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
    QObject m_screens; // hears of changes of the screens
    QHash<Notification, std::shared_ptr<AlertWindow>> m_windows;
    QList<std::weak_ptr<AlertWindow>> m_fading;
};
