// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"

/// This user's session, as the login manager knows it: the one that the environment names, else the one with
/// the user's desktop.
///
/// THREADING: the main thread, with an event loop; no answer comes once the object is destroyed. BLOCKING:
/// never.
class OwnSession
{
public:
    using Answered = std::function<void(const dozely::Result<void> &)>;

    /// Has the login manager do something to the session: "Lock", "Terminate". One call at a time.
    void call(const QByteArray &operation, Answered answered);

private:
    void findByUser();
    void callAt(const QByteArray &path);
    void answer(const dozely::Result<void> &result);

    std::unique_ptr<dozely::BusConnection> m_bus;
    QByteArray m_operation;
    Answered m_answered;
};
