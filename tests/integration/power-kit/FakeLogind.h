// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QSocketNotifier>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

struct sd_bus;
struct sd_bus_message;

/// A login manager in the test's own process, as far as sleep, power-off and inhibitor locks go. Like the
/// real one, it refuses locks while an operation is on its way, and sees a lock's release by its descriptor.
class FakeLogind
{
public:
    struct Lock {
        QString what;
        QString who;
        QString why;
        QString mode;
        int readEnd; // readable to its end when the other side is closed everywhere
    };

    FakeLogind();
    ~FakeLogind();
    FakeLogind(const FakeLogind &) = delete;
    FakeLogind &operator=(const FakeLogind &) = delete;

    /// Takes or gives up its name, as it starts or ends. It then knows of no operation; locks stay with who
    /// has them.
    void appear();
    void vanish();

    /// Tells everybody, or, for a signal that gets lost, nobody.
    void prepareForSleep(bool begins, bool isTold = true);
    void prepareForShutdown(bool begins, bool isTold = true);

    /// Sends one of the signals; changes nothing.
    void emitSignal(const char *name, bool value);
    /// The same with a text in the place of the truth.
    void emitNonsense(const char *name);

    /// The locks that are held at the moment.
    QList<Lock> held(const QString &mode) const;

    /// What the bus was given before has gone out to everybody, and what others had sent before has been
    /// handled here.
    void exchange();
    /// Lets everybody react to everything, until nothing happens any more.
    void settle();

    /// Grants what was asked for while it took its time.
    void answerDeferred();

    bool takesItsTime = false; ///< With answers to those who ask for a lock.
    bool isPreparingForSleep = false;
    bool isPreparingForShutdown = false;
    QByteArray refusal;          ///< The error that asking for a lock gives; empty for none.
    QByteArray orderRefusal;     ///< The error that an order gives; empty for none.
    QStringList orders;          ///< "Suspend false" and the like.
    int asked = 0;               ///< How often a lock was asked for.
    int handled = 0;             ///< Calls of any kind.
    qsizetype mostHeld = 0;      ///< Delay locks at one time.
    std::function<void()> onAsk; ///< Runs before a lock is granted.

private:
    int answer(sd_bus_message *message);
    int grant(sd_bus_message *message);
    void process();
    void roundTrip();

    sd_bus *m_bus = nullptr;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QList<Lock> m_locks;
    QList<sd_bus_message *> m_deferred;
};
