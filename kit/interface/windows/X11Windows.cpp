// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/X11Windows_p.h"

#include "DozelyKit/interface/windows/X11Server_p.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QList>
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

/// The atoms of a property that is a list of them.
QList<xcb_atom_t> atoms(QWindow *window, const QByteArray &property)
{
    constexpr quint32 most = 1024;
    const auto cookie = xcb_get_property(connection(), false, static_cast<xcb_window_t>(window->winId()),
                                         atom(property), XCB_ATOM_ATOM, 0, most);
    const Owned<xcb_get_property_reply_t> answer(xcb_get_property_reply(connection(), cookie, nullptr));
    if (!answer || answer->type != XCB_ATOM_ATOM || answer->format != 32)
        return {};
    const auto *const first = static_cast<const xcb_atom_t *>(xcb_get_property_value(answer.get()));
    return {first, first + answer->value_len};
}

/// Of a window that is not shown: who manages windows reads it then.
void setState(QWindow *window, const QByteArray &state, bool isSet)
{
    QList<xcb_atom_t> states = atoms(window, "_NET_WM_STATE");
    states.removeAll(atom(state));
    if (isSet)
        states.append(atom(state));
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window->winId()),
                        atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, static_cast<quint32>(states.size()),
                        states.constData());
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
    // Some take "every desktop" of a window that they have not seen yet for the last one, unless it sticks.
    setState(window, "_NET_WM_STATE_STICKY", joins);
}

void X11Windows::setHasShadow(QWindow *window, bool hasShadow)
{
    if (hasShadow)
        removeProperty(window, "_COMPTON_SHADOW");
    else
        setCardinal(window, "_COMPTON_SHADOW", 0);
}

} // namespace dozely
