// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertWindowPresenter.h"

#include "hosts/agent/AlertPlacement.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

AlertWindowPresenter::AlertWindowPresenter()
{
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &m_screens,
                     [this](QScreen *screen) { follow(screen); });
    follow(QGuiApplication::primaryScreen());
}

AlertWindowPresenter::~AlertWindowPresenter()
{
    for (const auto &window : std::as_const(m_windows))
        m_fading += window;
    for (const auto &fading : std::as_const(m_fading)) {
        if (const auto window = fading.lock())
            window->setAlphaValue(0); // ends the fade, and with it what holds the window
    }
}

void AlertWindowPresenter::follow(QScreen *screen)
{
    if (!screen)
        return;
    QObject::connect(screen, &QScreen::availableGeometryChanged, &m_screens, [this] { placeStrayed(); });
    placeStrayed();
}

void AlertWindowPresenter::placeStrayed()
{
    for (const auto &window : std::as_const(m_windows)) {
        const auto screens = QGuiApplication::screens();
        const bool isSeen = std::ranges::any_of(screens, [&window](const QScreen *screen) {
            return screen->availableGeometry().intersects(window->geometry());
        });
        if (!isSeen)
            place(*window);
    }
}

void AlertWindowPresenter::setEvents(Events events)
{
    m_events = std::move(events);
}

AlertWindow *AlertWindowPresenter::window(const Notification &notification) const
{
    return m_windows.value(notification).get();
}

std::shared_ptr<AlertWindow> AlertWindowPresenter::makeWindow(const Notification &notification)
{
    auto window = std::make_shared<AlertWindow>();
    // What is told here may take the window away: it must not do so while one of its signals runs.
    QObject::connect(
        window.get(), &AlertWindow::activated, &m_screens,
        [this, notification] {
            close(notification);
            m_events.activated(notification);
        },
        Qt::QueuedConnection);
    QObject::connect(
        window.get(), &AlertWindow::putOff, &m_screens,
        [this, notification](Postponement choice) {
            if (m_windows.contains(notification) && m_later.choose && m_later.choose(notification, choice))
                close(notification);
        },
        Qt::QueuedConnection);
    QObject::connect(
        window.get(), &AlertWindow::dismissed, &m_screens,
        [this, notification] {
            if (m_windows.remove(notification))
                m_events.closed(notification);
        },
        Qt::QueuedConnection);
    return window;
}

void AlertWindowPresenter::show(const Notification &notification)
{
    const bool isNew = !m_windows.contains(notification);
    if (isNew)
        m_windows.insert(notification, makeWindow(notification));
    const auto window = m_windows.value(notification);
    window->fill(*notification, m_later.isOffered && m_later.isOffered(notification));
    if (isNew) {
        place(*window);
        window->makeKeyAndOrderFront();
    }
    m_events.shown(notification);
}

void AlertWindowPresenter::close(const Notification &notification)
{
    const auto window = m_windows.take(notification);
    if (!window)
        return;
    m_fading.removeIf([](const auto &fading) { return fading.expired(); });
    m_fading += window;
    window->withdraw(); // which holds it until it has faded
}

void AlertWindowPresenter::place(AlertWindow &window) const
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    QList<QRect> taken;
    for (const auto &other : m_windows) {
        if (other.get() != &window)
            taken += other->geometry();
    }
    window.setGeometry(AlertPlacement::placeFor(window.size(), screen->availableGeometry(), taken,
                                                window.layoutDirection()));
}
