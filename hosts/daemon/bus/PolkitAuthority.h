// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"
#include "hosts/daemon/bus/BusCaller.h"

#include <QHash>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace dozely
{
class Clock;
} // namespace dozely

/// Asks polkit whether somebody on the bus may do something. It is asked about the name of a connection,
/// never about a process: another program may be in a process's place by the time of the answer.
///
/// Where a person has to type a password for it, that takes its time and nothing waits. Who leaves the bus
/// meanwhile takes his questions back.
///
/// THREADING: the main thread.
class PolkitAuthority : public QObject
{
    Q_OBJECT
public:
    /// So many questions of one user are open at a time, and of all.
    /// @{
    static constexpr qsizetype mostOfAUser = 10;
    static constexpr qsizetype mostOfAll = 50;
    /// @}

    /// `clock` must outlive the object.
    explicit PolkitAuthority(dozely::Clock &clock);
    ~PolkitAuthority() override;

    /// The bus by which it is asked; null for none: then nobody is asked, and open questions are forgotten.
    void setBus(dozely::BusConnection *bus);

    using Verdict = std::function<void(const dozely::Result<void> &allowed)>;

    /// Asks, and lets the person be asked. An error says why not, with its name on the bus.
    void ask(const BusCaller &caller, const QByteArray &action, const Verdict &verdict);

    /// Whether somebody may do something without being asked for anything.
    struct Standing {
        bool ofOwn = false;
        bool ofAll = false;
    };

    /// The standing of a caller, if that is known: what was found out is believed for two seconds.
    std::optional<Standing> standing(const BusCaller &caller) const;

    /// Finds it out, and calls `known` from the event loop then.
    void look(const BusCaller &caller, const std::function<void()> &known);

private:
    struct Question {
        BusCaller caller;
        Verdict verdict;
        std::unique_ptr<dozely::BusConnection::Subscription> presence;
    };
    struct Known {
        Standing standing;
        std::chrono::milliseconds until{0}; // on the steady clock
        int open = 0;                       // questions about it
        std::vector<std::function<void()>> waiting;
    };
    void check(const BusCaller &caller, const QByteArray &action, bool mayAskPerson, const QString &id,
               std::chrono::milliseconds timeout, const dozely::BusConnection::ReplyHandler &handler);
    void withdraw(const QString &id);
    void settle(const QByteArray &name);

    dozely::Clock &m_clock;
    dozely::BusConnection *m_bus = nullptr;
    QHash<QString, std::shared_ptr<Question>> m_questions;
    QHash<QByteArray, Known> m_known; // by the name of the connection
    quint64 m_count = 0;
};
