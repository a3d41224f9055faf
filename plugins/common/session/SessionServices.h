// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"

/// A program of the desktop that does something when it is asked: the name by which one sees that it runs,
/// and what is called then.
struct SessionService {
    QString sign;
    dozely::BusConnection::Member operation;
    QByteArray signature = {};
    QVariantList arguments = {};
};

/// Asks the first of several such programs that runs. No answer comes once the object is destroyed.
///
/// THREADING: the main thread, with an event loop. BLOCKING: never.
class SessionServices
{
public:
    explicit SessionServices(QList<SessionService> services) : m_services(std::move(services)) {}

    using Answered = std::function<void(const dozely::Result<void> &)>;

    /// Success says that one of them has taken it on.
    void ask(Answered answered);

private:
    const QList<SessionService> m_services;
    std::unique_ptr<dozely::BusConnection> m_bus;
};
