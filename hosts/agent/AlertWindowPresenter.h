// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/UserNotificationPresenter.h"
#include "hosts/agent/AlertDetails.h"
#include "hosts/agent/AlertPlace.h"
#include "hosts/agent/AlertWindow.h"

#include <QHash>
#include <QList>

#include <functional>
#include <utility>

class QScreen;

/// Shows alerts in windows of our own, which no desktop keeps back: the next three to act, on the screen
/// where the pointer is; the others wait until one of these has gone, and are counted in the lowest one.
/// Windows whose screen was taken away move to the main one.
///
/// THREADING: the main thread, with a QApplication.
class AlertWindowPresenter : public dozely::UserNotificationPresenter
{
public:
    /// So many at once. Fewer where the screen has no room for them beside its middle, one at least.
    static constexpr int mostWindows = 3;

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

    /// What is to be said of an alert's action; asked whenever the alert is shown. Without it, nothing.
    void setDetails(std::function<AlertDetails(const Notification &)> details)
    {
        m_details = std::move(details);
    }

    /// The file that keeps the place to which the user has dragged an alert; read now. Without it the place
    /// is kept as long as this object.
    void setPlaceFile(const QString &path);

    /// Called whenever a window comes or goes.
    void setChanged(std::function<void()> changed) { m_changed = std::move(changed); }

    /// Draws an alert that nobody sees: fonts, languages and styles are looked for when something is drawn
    /// first, better at a quiet moment than while an alert is waited for.
    static void drawSample();

    void setEvents(Events events) override;
    void show(const Notification &notification) override;
    void close(const Notification &notification) override;

    /// The window that shows this alert; null when none does, and while it waits.
    AlertWindow *window(const Notification &notification) const;

private:
    std::shared_ptr<AlertWindow> makeWindow(const Notification &notification);
    void fill(const Notification &notification, AlertWindow &window) const;
    QList<Notification> inOrder() const;
    void showNext();
    bool open(const Notification &notification, bool isFirst);
    void takeAway(const Notification &notification);
    void countFurther();
    void dismiss(const Notification &notification);
    void keepPlace(const AlertWindow &window);
    bool place(AlertWindow &window, const QScreen *screen, bool isFirst) const;
    void placeStrayed();
    void follow(QScreen *screen);

    Events m_events;
    Later m_later;
    std::function<AlertDetails(const Notification &)> m_details;
    std::function<void()> m_changed;
    QString m_placeFile;
    std::optional<AlertPlace> m_place; // absent until the user has dragged an alert
    QObject m_screens;                 // hears of changes of the screens
    QList<Notification> m_alerts;      // those that wait, too
    QHash<Notification, std::shared_ptr<AlertWindow>> m_windows;
    QList<std::weak_ptr<AlertWindow>> m_fading;
};
