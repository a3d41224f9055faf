// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"
#include "support/AlertDelegates.h"
#include "support/PrivateBus.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QProcess>

#include <gmock/gmock.h>

/// A process of python3-dbusmock: a stand-in for a notification server, or a stranger on the bus. It ends
/// with the object.
class MockProcess
{
public:
    MockProcess() = default;
    ~MockProcess() { end(); }
    MockProcess(const MockProcess &) = delete;
    MockProcess &operator=(const MockProcess &) = delete;

    void start(const QStringList &arguments);
    /// Kills it, also while it is held.
    void end();

    /// Holds the process still, and lets it go on: while it is held, nothing that it is asked is answered.
    void hold() const;
    void letGo() const;

private:
    QProcess m_process;
};

/// An agent with one plug-in's alerts, on a session bus of the test's own. Everything but the notification
/// server is the real thing.
class NotificationFixture : public testing::Test
{
protected:
    using Alert = std::shared_ptr<NSUserNotification>;
    static constexpr char service[] = "org.freedesktop.Notifications";
    static constexpr char path[] = "/org/freedesktop/Notifications";

    NotificationFixture();
    ~NotificationFixture() override;

    /// Starts a stand-in for the server and waits until it owns the name.
    void startServer(MockProcess &server, const QString &capabilities = "body actions");
    /// Ends it and waits until nobody owns the name.
    void endServer(MockProcess &server);
    /// Starts a process that is no notification server.
    void startStranger(MockProcess &stranger);

    /// An alert of the plug-in, not delivered.
    Alert makeAlert(const QString &title, const QString &text = "Will run soon.");
    /// Delivers it, and waits until the server has accepted it.
    void show(const Alert &alert);
    Alert shown(const QString &title)
    {
        const Alert alert = makeAlert(title);
        show(alert);
        return alert;
    }
    /// Waits until everything that the server sent so far has been heard.
    void settle() { shown("Sentinel"); }

    /// Opens `control` anew; false when there is no bus.
    bool connect();
    /// Calls an operation of a process on the bus, by name; fails the test when it is refused.
    QVariantList call(const QByteArray &destination, const QByteArray &interface, const QByteArray &method,
                      const QByteArray &signature, const QVariantList &arguments);
    /// What the server was called with so far.
    QList<QVariantList> calls(const QString &method);
    /// Replaces an operation of the server by these lines of Python.
    void teach(const QString &method, const QString &in, const QString &out, const QString &code);
    /// Has the process send a signal of the server's interface, to everybody.
    void emitFrom(const QByteArray &process, const QString &signal, const QString &signature,
                  const QVariantList &arguments);
    void emitAction(quint32 id, const QString &key = "cancel")
    {
        emitFrom(service, "ActionInvoked", "us", {id, key});
    }
    void emitClosed(quint32 id) { emitFrom(service, "NotificationClosed", "uu", {id, 2U}); }

    QByteArray owner(const QByteArray &name) const;
    /// The unique name by which the kit is known on the bus; needs an alert that was delivered.
    QByteArray ownName();
    /// The shared log's texts.
    std::vector<std::string> logged() const;

    const ScratchRoot root;
    PrivateBus bus;
    std::unique_ptr<dozely::BusConnection> control;
    NSUserNotificationCenter &center = NSUserNotificationCenter::defaultUserNotificationCenter();
    const std::shared_ptr<FullDelegate> plugIn = std::make_shared<FullDelegate>();
};
