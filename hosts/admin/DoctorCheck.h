// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// What the machine's services say of the installation; tests say it in their place. THREADING: one thread.
/// BLOCKING: for each answer at most five seconds.
class DoctorServices
{
public:
    virtual ~DoctorServices() = default;

    /// Whether there is a system bus.
    virtual bool hasBus() const = 0;

    /// Whether somebody on the system bus has that name; absent where nobody can tell.
    virtual std::optional<bool> isNameOwned(const QByteArray &name) const = 0;

    struct Unit {
        QString fileState;   ///< "enabled", "disabled"; empty where there is no such file.
        QString activeState; ///< "active", "failed", "inactive".
    };

    /// The machine's unit of that name; absent where no service manager has started the machine.
    virtual std::optional<Unit> unit(const QString &name) const = 0;

    /// The machine's own.
    static const DoctorServices &ofTheMachine();
};

/// What one look has found.
struct Finding {
    enum class State {
        Fine,
        Wrong,
        Unknown, ///< The caller may not look, or it cannot be known.
    };
    State state = State::Fine;
    QString text;        ///< A sentence.
    QString remedy = {}; ///< What to do where it is wrong: a command, or a sentence.

    static Finding fine(const QString &text) { return {State::Fine, text}; }
    static Finding wrong(const QString &text, const QString &remedy) { return {State::Wrong, text, remedy}; }
    static Finding unknown(const QString &text) { return {State::Unknown, text}; }
};

/// One thing that can be wrong with an installation.
class DoctorCheck
{
public:
    virtual ~DoctorCheck() = default;

    /// For programs; it never changes: "socket-folder".
    virtual QString name() const = 0;

    virtual Finding look(const DoctorServices &services) const = 0;
};

/// A check that is a function.
class SimpleCheck : public DoctorCheck
{
public:
    using Look = Finding (*)(const DoctorServices &services);
    SimpleCheck(QString name, Look look) : m_name(std::move(name)), m_look(look) {}
    QString name() const override { return m_name; }
    Finding look(const DoctorServices &services) const override { return m_look(services); }

private:
    QString m_name;
    Look m_look;
};

/// All checks, in the order in which they are made; each group in a file of its own.
namespace DoctorChecks
{
using List = std::vector<std::unique_ptr<DoctorCheck>>;
void addFolders(List &checks);
void addServices(List &checks);
void addStore(List &checks);
void addPower(List &checks);
void addClock(List &checks);
List all();
} // namespace DoctorChecks
