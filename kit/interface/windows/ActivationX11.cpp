// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/ActivationX11.h"

#include "DozelyKit/interface/windows/X11Server_p.h"

#include <QGuiApplication>
#include <QWindow>

#include <xcb/xcb.h>

namespace dozely
{

using X11Server::atom;
using X11Server::connection;

void ActivationX11::activate(QWindow *window, quint32 time)
{
    if (QGuiApplication::platformName() != "xcb" || !window || !connection())
        return;
    constexpr quint32 fromAnApplication = 1;
    const auto id = static_cast<xcb_window_t>(window->winId());
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, id, atom("_NET_WM_USER_TIME"), XCB_ATOM_CARDINAL,
                        32, 1, &time);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = id;
    message.type = atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = fromAnApplication;
    message.data.data32[1] = time;
    xcb_send_event(connection(), false, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(connection());
}

} // namespace dozely
