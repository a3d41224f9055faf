// SPDX-License-Identifier: MIT
#include "support/PrivateBus.h"

#include <QFile>
#include <QProcessEnvironment>

#include <chrono>
#include <csignal>
#include <iostream>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr char addressVariable[] = "DBUS_SYSTEM_BUS_ADDRESS";
constexpr int patience = 60'000; // milliseconds; only bounds a failing test

constexpr char configuration[] =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:path=%1/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <deny own="*"/>
    <deny send_type="method_call"/>
    <allow send_type="signal"/>
    <allow send_requested_reply="true" send_type="method_return"/>
    <allow send_requested_reply="true" send_type="error"/>
    <allow receive_type="method_call"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow receive_type="signal"/>
    <allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus"/>
    <allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus.Introspectable"/>
    <allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus.Properties"/>
  </policy>
  <policy user="root"><allow own="*"/><allow send_destination="*"/></policy>
  <policy user="%2"><allow own="*"/><allow send_destination="*"/></policy>
</busconfig>
)";

void end(QProcess &process)
{
    process.terminate();
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(patience)) {
        process.kill();
        process.waitForFinished(patience);
    }
}

bool succeeds(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool done = process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit &&
                      process.exitCode() == 0;
    if (!done)
        std::cerr << qPrintable(program) << ": " << process.readAllStandardError().constData() << std::endl;
    return done;
}
} // namespace

PrivateBus::PrivateBus() : m_folder("/tmp/dzbus-XXXXXX"), m_formerAddress(qgetenv(addressVariable))
{
    ::chmod(qPrintable(m_folder.path()), 0755); // other users are to reach the socket
    QFile file(m_folder.filePath("bus.conf"));
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(QString(configuration).arg(m_folder.path()).arg(::geteuid()).toUtf8());
    file.close();
    start();
}

void PrivateBus::start()
{
    // A test that is killed leaves no bus behind.
    m_daemon.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_daemon.start("dbus-daemon", {"--config-file=" + m_folder.filePath("bus.conf"), "--nofork",
                                   "--nopidfile", "--print-address=1"});
    // It prints its address once it listens.
    while (m_daemon.canReadLine() || m_daemon.waitForReadyRead(patience)) {
        if (m_daemon.canReadLine()) {
            // Without its id, as a machine's own: another bus at this address has another one.
            m_address = QString::fromUtf8(m_daemon.readLine()).trimmed().section(",guid=", 0, 0);
            break;
        }
    }
    qputenv(addressVariable, m_address.toUtf8()); // its identifier in there is a new one each time
}

PrivateBus::~PrivateBus()
{
    for (const auto &service : m_services)
        end(*service);
    stop();
    if (m_formerAddress.isNull())
        qunsetenv(addressVariable);
    else
        qputenv(addressVariable, m_formerAddress);
}

void PrivateBus::stop()
{
    end(m_daemon);
}

void PrivateBus::restart()
{
    stop();
    start();
}

bool PrivateBus::startMock(const QString &mockTemplate, const QString &name)
{
    // The distribution's interpreter: another one may come first and lack the module.
    return startService("/usr/bin/python3", {"-m", "dbusmock", "--system", "--template", mockTemplate}, name);
}

bool PrivateBus::startService(const QString &program, const QStringList &arguments, const QString &name)
{
    auto service = std::make_unique<QProcess>();
    service->setStandardOutputFile(m_folder.filePath(name + ".log"));
    service->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    service->start(program, arguments);
    m_services.push_back(std::move(service));
    return succeeds("gdbus", {"wait", "--system", "--timeout", "20", name});
}

bool PrivateBus::call(const QString &destination, const QString &path, const QString &method,
                      const QStringList &arguments)
{
    return succeeds("gdbus",
                    QStringList{"call", "--system", "-d", destination, "-o", path, "-m", method} + arguments);
}
