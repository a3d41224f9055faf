// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace dozely::X11Server
{

struct Free {
    void operator()(void *answer) const { std::free(answer); }
};

/// What the server answers is the caller's to free.
template<class Answer>
using Owned = std::unique_ptr<Answer, Free>;

/// Qt's own connection; null where Qt does not run on X11.
xcb_connection_t *connection();

/// One round trip; XCB_ATOM_NONE when it fails. Only where there is a connection.
xcb_atom_t atom(const QByteArray &name);

} // namespace dozely::X11Server
