// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertWindowPresenter.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/interface/windows/FullScreenX11.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/agent/AlertPlacement.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
/// Where the user is looking, as far as one can know.
const QScreen *screenOfThePointer()
{
    const QScreen *const screen = QGuiApplication::screenAt(QCursor::pos());
    return screen ? screen : QGuiApplication::primaryScreen();
}

/// When the action runs; after all others without a date.
qint64 dateOf(const AlertWindowPresenter::Notification &notification)
{
    const QDateTime date = notification->userInfo().value(AlertKey::date).toDateTime();
    return date.isValid() ? date.toMSecsSinceEpoch() : std::numeric_limits<qint64>::max();
}
} // namespace

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
            place(*window, QGuiApplication::primaryScreen(), true);
    }
}

void AlertWindowPresenter::setPlaceFile(const QString &path)
{
    m_placeFile = path;
    if (!path.isEmpty())
        m_place = StoredAlertPlace::read(path);
}

void AlertWindowPresenter::keepPlace(const AlertWindow &window)
{
    const QScreen *const screen = window.screen();
    m_place = AlertPlacement::placeOf(window.geometry(), screen->availableGeometry());
    if (m_placeFile.isEmpty())
        return;
    if (const auto kept = StoredAlertPlace::write(m_placeFile, *m_place); !kept)
        ZDRLog("The place of alerts could not be kept: %@", kept.error().text);
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
            if (!m_windows.contains(notification))
                return;
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
        window.get(), &AlertWindow::dismissed, &m_screens, [this, notification] { dismiss(notification); },
        Qt::QueuedConnection);
    QObject::connect(window.get(), &AlertWindow::dragged, &m_screens,
                     [this, shown = window.get()] { keepPlace(*shown); });
    return window;
}

void AlertWindowPresenter::fill(const Notification &notification, AlertWindow &window) const
{
    window.fill(*notification, m_later.isOffered && m_later.isOffered(notification),
                m_details ? m_details(notification) : AlertDetails());
}

void AlertWindowPresenter::show(const Notification &notification)
{
    if (!m_alerts.contains(notification))
        m_alerts += notification;
    if (AlertWindow *const shown = window(notification))
        fill(notification, *shown);
    showNext();
    m_events.shown(notification);
}

void AlertWindowPresenter::close(const Notification &notification)
{
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const Notification closed = notification; // the caller's may be the very one in the list
    if (m_alerts.removeAll(closed) == 0)
        return;
    takeAway(closed);
    showNext();
}

void AlertWindowPresenter::dismiss(const Notification &notification)
{
    if (!m_windows.contains(notification))
        return;
    close(notification);
    m_events.closed(notification);
}

void AlertWindowPresenter::takeAway(const Notification &notification)
{
    const auto window = m_windows.take(notification);
    if (!window)
        return;
    m_fading.removeIf([](const auto &fading) { return fading.expired(); });
    m_fading += window;
    window->withdraw(); // which holds it until it has faded
    if (m_changed)
        m_changed();
}

void AlertWindowPresenter::drawSample()
{
    NSUserNotification notification;
    notification.setTitle("Alert");
    notification.setInformativeText("Will run.");
    notification.setActionButtonTitle("Cancel");
    notification.setUserInfo({{AlertKey::date, Port<Clock>::current()->currentDate().addSecs(90)}});
    AlertWindow window;
    window.fill(notification, true);
    window.grab();
}

/// The next to act first; of those that act at the same time, the one that came first.
QList<AlertWindowPresenter::Notification> AlertWindowPresenter::inOrder() const
{
    QList<Notification> alerts = m_alerts;
    std::ranges::stable_sort(alerts, {}, dateOf);
    return alerts;
}

void AlertWindowPresenter::showNext()
{
    const QList<Notification> alerts = inOrder();
    for (const Notification &later : alerts.mid(mostWindows))
        takeAway(later);
    for (const Notification &next : alerts.first(std::min<qsizetype>(alerts.size(), mostWindows))) {
        if (!m_windows.contains(next) && !open(next, next == alerts.first()))
            break; // the others wait for room, too
    }
    countFurther();
}

/// False when there is no room.
bool AlertWindowPresenter::open(const Notification &notification, bool isFirst)
{
    const auto window = makeWindow(notification);
    fill(notification, *window);
    if (!place(*window, screenOfThePointer(), isFirst))
        return false;
    m_windows.insert(notification, window);
    const QSize size = window->size();
    window->makeKeyAndOrderFront();
    FullScreenX11::stayAbove(window->windowHandle());
    if (m_changed)
        m_changed();
    if (window->size() != size) // what it needs is only known for certain now
        place(*window, screenOfThePointer(), true);
    return true;
}

void AlertWindowPresenter::countFurther()
{
    const AlertWindow *lowest = nullptr;
    for (const auto &window : std::as_const(m_windows)) {
        if (!lowest || window->geometry().bottom() > lowest->geometry().bottom())
            lowest = window.get();
    }
    const auto waiting = static_cast<int>(m_alerts.size() - m_windows.size());
    for (const auto &window : std::as_const(m_windows))
        window->setFurtherAlerts(window.get() == lowest ? waiting : 0);
}

/// False when there is no room, unless it is to have some at any rate.
bool AlertWindowPresenter::place(AlertWindow &window, const QScreen *screen, bool isFirst) const
{
    if (!screen)
        return true;
    QList<QRect> taken;
    for (const auto &other : m_windows) {
        if (other.get() != &window)
            taken += other->geometry();
    }
    const AlertPlace usual{.isAtRight = window.layoutDirection() == Qt::LeftToRight};
    const AlertPlace place = m_place.value_or(usual);
    const QRect area = screen->availableGeometry();
    const auto room = AlertPlacement::placeFor(window.size(), area, taken, place);
    if (!room && !isFirst)
        return false;
    window.setGeometry(room.value_or(AlertPlacement::cornerFor(window.size(), area, place)));
    return true;
}
