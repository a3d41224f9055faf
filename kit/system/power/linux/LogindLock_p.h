// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"

#include <QObject>

namespace dozely
{

/// One inhibitor lock of the login manager: held for as long as it is wanted, asked for again after every
/// refusal.
///
/// Never held is a lock that nobody wants, and one of a login manager that has gone: an answer that comes too
/// late is given back at once. A refusal because the machine is just going down or to sleep is no news; any
/// other one is reported once.
///
/// THREADING: the thread of its bus.
class LogindLock
{
public:
    struct Terms {
        QString what; ///< Such as "sleep:shutdown".
        QString why;  ///< For people who ask the machine what holds it up.
        QString mode; ///< "delay" or "block".
    };

    explicit LogindLock(Terms terms) : m_terms(std::move(terms)) {}
    LogindLock(const LogindLock &) = delete;
    LogindLock &operator=(const LogindLock &) = delete;

    /// There is another login manager, reachable over `bus`, which must outlive its use here; or none (null).
    /// A lock of the former one is dropped.
    void setManager(BusConnection *bus);

    /// Takes the lock, as soon as it is to be had.
    void take();

    /// Gives it back, at once.
    void release();

    /// A refused lock may now be had: asks again.
    void retry();

    bool isHeld() const { return m_descriptor.get() >= 0; }

private:
    void ask();
    void answered(quint64 request, const BusConnection::Reply &reply);
    void refused(const Error &error);

    Terms m_terms;
    BusConnection *m_bus = nullptr;
    BusDescriptor m_descriptor; // the lock itself: closing it releases
    bool m_isWanted = false;
    bool m_isAsked = false; // the answer is still to come
    bool m_isReported = false;
    quint64 m_request = 0;
    QObject m_context; // for what comes later, and tells it that this object is gone
};

} // namespace dozely
