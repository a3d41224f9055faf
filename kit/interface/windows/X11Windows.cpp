// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/X11Windows_p.h"

#include "DozelyKit/interface/windows/X11Server_p.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QWindow>

#include <cstdlib>

#include <xcb/xcb.h>

namespace dozely
{

using X11Server::atom;
using X11Server::connection;
using X11Server::Owned;

namespace
{
void setCardinal(QWindow *window, const QByteArray &property, quint32 value)
{
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window->winId()),
                        atom(property), XCB_ATOM_CARDINAL, 32, 1, &value);
}

void removeProperty(QWindow *window, const QByteArray &property)
{
    xcb_delete_property(connection(), static_cast<xcb_window_t>(window->winId()), atom(property));
}

/// The number of the screen that the display's name chooses.
int screenNumber()
{
    char *host = nullptr;
    int display = 0;
    int screen = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen) == 0)
        return 0;
    std::free(host);
    return screen;
}
} // namespace

bool X11Windows::areUsed()
{
    return QGuiApplication::platformName() == "xcb" && connection();
}

bool X11Windows::haveCompositor()
{
    const xcb_atom_t selection = atom("_NET_WM_CM_S" + QByteArray::number(screenNumber()));
    const auto cookie = xcb_get_selection_owner(connection(), selection);
    const Owned<xcb_get_selection_owner_reply_t> answer(
        xcb_get_selection_owner_reply(connection(), cookie, nullptr));
    return answer && answer->owner != XCB_WINDOW_NONE;
}

void X11Windows::flush()
{
    xcb_flush(connection());
}

void X11Windows::setJoinsAllDesktops(QWindow *window, bool joins)
{
    constexpr quint32 allDesktops = 0xFFFFFFFF;
    if (joins)
        setCardinal(window, "_NET_WM_DESKTOP", allDesktops);
    else
        removeProperty(window, "_NET_WM_DESKTOP");
}

void X11Windows::setHasShadow(QWindow *window, bool hasShadow)
{
    if (hasShadow)
        removeProperty(window, "_COMPTON_SHADOW");
    else
        setCardinal(window, "_COMPTON_SHADOW", 0);
}

} // namespace dozely
