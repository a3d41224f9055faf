// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <vector>

/// A system bus of the test's own, with the stock policy: nobody but this user (and root) may own a name or
/// call a service, everybody may connect and broadcast. This process and those that it starts find it by
/// DBUS_SYSTEM_BUS_ADDRESS. The bus and its services end with the object.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    /// Whether the bus runs; look at it first.
    bool isRunning() const { return m_daemon.state() == QProcess::Running && !m_address.isEmpty(); }
    QString address() const { return m_address; }

    /// Starts a mock of a system service from a template of python3-dbusmock; true once it owns `name`.
    bool startMock(const QString &mockTemplate, const QString &name);

    /// Starts a program that becomes a service, with what it prints on its standard error stream among this
    /// process's own; true once it owns `name`. It is asked to end with the object.
    bool startService(const QString &program, const QStringList &arguments, const QString &name);

    /// Ends the bus, as a machine that loses it does. Its address stays in the environment.
    void stop();

    /// Starts it again at the same address.
    void restart();

    /// Calls an operation with arguments in GVariant text; true when it answered.
    bool call(const QString &destination, const QString &path, const QString &method,
              const QStringList &arguments);

private:
    void start();

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    QByteArray m_formerAddress;
    std::vector<std::unique_ptr<QProcess>> m_services;
};
