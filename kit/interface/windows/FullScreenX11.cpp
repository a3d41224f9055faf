// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/FullScreenX11.h"

#include "DozelyKit/interface/windows/X11Server_p.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <vector>

#include <xcb/xcb.h>

namespace dozely
{

using X11Server::atom;
using X11Server::connection;
using X11Server::Owned;

namespace
{
/// The numbers that a property of a window holds; none without it.
std::vector<quint32> numbers(xcb_window_t window, const QByteArray &property)
{
    constexpr quint32 most = 64;
    const auto cookie =
        xcb_get_property(connection(), false, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, most);
    const Owned<xcb_get_property_reply_t> answer(xcb_get_property_reply(connection(), cookie, nullptr));
    if (!answer || answer->format != 32)
        return {};
    const auto *const first = static_cast<const quint32 *>(xcb_get_property_value(answer.get()));
    return {first, first + xcb_get_property_value_length(answer.get()) / 4};
}

/// Whether the window is as large as a screen: older programs fill it without telling the window manager.
bool isAsLargeAsAScreen(xcb_window_t window)
{
    const Owned<xcb_get_geometry_reply_t> answer(
        xcb_get_geometry_reply(connection(), xcb_get_geometry(connection(), window), nullptr));
    if (!answer)
        return false;
    for (const QScreen *const screen : QGuiApplication::screens()) {
        const QSizeF pixels = QSizeF(screen->size()) * screen->devicePixelRatio();
        if (answer->width >= qRound(pixels.width()) && answer->height >= qRound(pixels.height()))
            return true;
    }
    return false;
}

/// The active window where it fills the screen; 0 otherwise.
xcb_window_t fullScreenWindow()
{
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
    const std::vector<quint32> active = numbers(root, "_NET_ACTIVE_WINDOW");
    if (active.empty() || active.front() == XCB_WINDOW_NONE)
        return XCB_WINDOW_NONE;
    const xcb_atom_t fullScreen = atom("_NET_WM_STATE_FULLSCREEN");
    for (const quint32 state : numbers(active.front(), "_NET_WM_STATE")) {
        if (state == fullScreen)
            return active.front();
    }
    return isAsLargeAsAScreen(active.front()) ? active.front() : xcb_window_t{XCB_WINDOW_NONE};
}
} // namespace

void FullScreenX11::stayAbove(QWindow *window)
{
    if (QGuiApplication::platformName() != "xcb" || !window || !connection())
        return;
    const xcb_window_t below = fullScreenWindow();
    if (below == XCB_WINDOW_NONE)
        return;
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window->winId()),
                        XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 32, 1, &below);
    xcb_flush(connection());
}

} // namespace dozely
