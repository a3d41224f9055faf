// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <sys/stat.h>

/// A message bus with the configuration that the distribution gives to the real one, but for where it lives.
/// This process and those that it starts find it by the environment.
class StockBus
{
public:
    enum class Kind { System, Session };

    explicit StockBus(Kind kind) : m_variable(kind == Kind::System ? system : session)
    {
        ::chmod(qPrintable(m_folder.path()), 0755); // other users are to reach the socket
        start(kind);
    }
    ~StockBus()
    {
        stop();
        qunsetenv(m_variable);
    }
    StockBus(const StockBus &) = delete;
    StockBus &operator=(const StockBus &) = delete;

    bool isRunning() const { return m_daemon.state() == QProcess::Running && !m_address.isEmpty(); }

    void stop()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    /// Starts it anew at the same address.
    void restart(Kind kind)
    {
        stop();
        QFile::remove(m_folder.filePath("bus"));
        start(kind);
    }

    static constexpr char system[] = "DBUS_SYSTEM_BUS_ADDRESS";
    static constexpr char session[] = "DBUS_SESSION_BUS_ADDRESS";

private:
    void start(Kind kind)
    {
        QFile stock(kind == Kind::System ? "/usr/share/dbus-1/system.conf"
                                         : "/usr/share/dbus-1/session.conf");
        if (!stock.open(QIODevice::ReadOnly))
            return;
        QString configuration = QString::fromUtf8(stock.readAll());
        const auto replace = [&configuration](const char *pattern, const QString &text) {
            configuration.replace(QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption),
                                  text);
        };
        replace("<listen>.*?</listen>", QString("<listen>unix:path=%1/bus</listen>").arg(m_folder.path()));
        replace("<(fork|syslog|keep_umask)/>", {});
        replace("<(pidfile|user|servicehelper)>.*?</(pidfile|user|servicehelper)>", {});
        replace("<standard_(system|session)_servicedirs */>", {}); // it is to start nothing on this machine
        replace("<includedir>system.d</includedir>", "<includedir>/usr/share/dbus-1/system.d</includedir>");
        replace("<includedir>session.d</includedir>", {});
        QFile file(m_folder.filePath("bus.conf"));
        if (!file.open(QIODevice::WriteOnly))
            return;
        file.write(configuration.toUtf8());
        file.close();
        m_daemon.setProcessChannelMode(QProcess::SeparateChannels);
        m_daemon.start("dbus-daemon",
                       {"--config-file=" + file.fileName(), "--nofork", "--nopidfile", "--print-address=1"});
        // It prints its address once it listens.
        while (m_daemon.canReadLine() || m_daemon.waitForReadyRead()) {
            if (m_daemon.canReadLine()) {
                m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
                break;
            }
        }
        qputenv(m_variable, m_address.toUtf8());
    }

    QTemporaryDir m_folder{"/tmp/dzwide-XXXXXX"};
    const char *m_variable;
    QProcess m_daemon;
    QString m_address;
};
