// SPDX-License-Identifier: MIT
#include "DesktopSession.h"

#include "DozelyKit/interface/windows/WindowSystem_p.h"

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>

#include <algorithm>
#include <cstdlib>

#include <xcb/xcb.h>

using namespace dozely;

namespace
{
template<class Answer>
using Owned = std::unique_ptr<Answer, decltype([](Answer *answer) { std::free(answer); })>;

xcb_connection_t *connection()
{
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

quint32 atom(const QByteArray &name)
{
    const auto cookie =
        xcb_intern_atom(connection(), false, static_cast<quint16>(name.size()), name.constData());
    return Owned<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(connection(), cookie, nullptr))->atom;
}

quint32 rootWindow()
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
}
} // namespace

DesktopSession::~DesktopSession()
{
    if (!m_compositor)
        return;
    m_compositor->kill();
    m_compositor->waitForFinished();
}

void DesktopSession::startCompositor()
{
    ASSERT_FALSE(WindowSystem::blendsWindows());
    m_compositor = std::make_unique<QProcess>();
    m_compositor->start("picom", {"--config", "/dev/null", "--backend", "xrender"});
    ASSERT_TRUE(m_compositor->waitForStarted());
    ASSERT_TRUE(waitUntil([] { return WindowSystem::blendsWindows(); }));
    // It says that it is there some time before it draws.
    QWidget probe;
    probe.setPalette(QPalette(Qt::black));
    probe.setWindowFlag(Qt::FramelessWindowHint);
    probe.setAttribute(Qt::WA_ShowWithoutActivating);
    probe.setWindowFlag(Qt::WindowStaysOnTopHint);
    probe.setWindowOpacity(0.5);
    probe.setGeometry(20, 20, 50, 50);
    probe.show();
    const QPoint center = probe.geometry().center();
    ASSERT_TRUE(waitUntil([&center] { return qAbs(colorAt(center).red() - 127) < 3; }));
    probe.hide();
    ASSERT_TRUE(waitUntil([&center] { return colorAt(center) == QColor(Qt::white); }));
}

QColor DesktopSession::colorAt(const QPoint &point)
{
    QScreen *const screen = QGuiApplication::primaryScreen();
    return screen->grabWindow(0, point.x(), point.y(), 1, 1).toImage().pixelColor(0, 0);
}

void DesktopSession::movePointerTo(const QPoint &point)
{
    const double ratio = QGuiApplication::primaryScreen()->devicePixelRatio();
    xdotool({"mousemove", QString::number(qRound(point.x() * ratio)),
             QString::number(qRound(point.y() * ratio))});
}

std::optional<quint32> DesktopSession::cardinal(quint32 window, const QByteArray &property)
{
    const auto cookie =
        xcb_get_property(connection(), false, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const Owned<xcb_get_property_reply_t> answer(xcb_get_property_reply(connection(), cookie, nullptr));
    if (!answer || answer->format != 32 || xcb_get_property_value_length(answer.get()) < 4)
        return {};
    return *static_cast<quint32 *>(xcb_get_property_value(answer.get()));
}

bool DesktopSession::hasState(quint32 window, const QByteArray &state)
{
    const auto cookie =
        xcb_get_property(connection(), false, window, atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 0, 32);
    const Owned<xcb_get_property_reply_t> answer(xcb_get_property_reply(connection(), cookie, nullptr));
    if (!answer || answer->format != 32)
        return false;
    const auto *const first = static_cast<const xcb_atom_t *>(xcb_get_property_value(answer.get()));
    return std::find(first, first + answer->value_len, atom(state)) != first + answer->value_len;
}

void DesktopSession::setState(quint32 window, const QByteArray &state)
{
    const xcb_atom_t value = atom(state);
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32,
                        1, &value);
}

quint32 DesktopSession::activeWindow()
{
    return cardinal(rootWindow(), "_NET_ACTIVE_WINDOW").value_or(0);
}

bool DesktopSession::becomesActive(const QWidget &widget, std::chrono::milliseconds limit)
{
    return waitUntil([&widget] { return activeWindow() == widget.winId() && widget.isActiveWindow(); },
                     limit);
}

void DesktopSession::showBackdrop()
{
    backdrop.setPalette(QPalette(Qt::white));
    backdrop.setWindowFlag(Qt::FramelessWindowHint);
    // Not quite all of it: window managers keep the active window above all others when it fills the screen.
    backdrop.setGeometry(QGuiApplication::primaryScreen()->geometry().adjusted(0, 0, 0, -1));
    backdrop.show();
    // The window manager may just have begun, and overhear what it is asked.
    bool isActive = false;
    for (int attempt = 0; attempt < 30 && !isActive; ++attempt) {
        backdrop.activateWindow();
        isActive = becomesActive(backdrop, std::chrono::seconds(2));
    }
    ASSERT_TRUE(isActive);
    ASSERT_TRUE(waitUntil([] { return colorAt({400, 300}) == QColor(Qt::white); }));
}
