// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/X11Server_p.h"

#include <QGuiApplication>

namespace dozely
{

xcb_connection_t *X11Server::connection()
{
    const auto *const x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t X11Server::atom(const QByteArray &name)
{
    const auto cookie =
        xcb_intern_atom(connection(), false, static_cast<quint16>(name.size()), name.constData());
    const Owned<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(connection(), cookie, nullptr));
    return answer ? answer->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace dozely
