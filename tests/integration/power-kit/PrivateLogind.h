// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"
#include "support/Identity.h"
#include "support/PrivateBus.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <chrono>

#include <sys/mount.h>

/// The machine's own systemd-logind, in a child process with a private view of the file system and a bus of
/// its own. It believes that the machine can sleep; whom it asks for that only notes it.
///
/// It waits a whole minute for delay locks: what happens sooner happened because they were released.
class PrivateLogind
{
public:
    /// Runs the expectations of `body` there, as root or the root of a user namespace.
    template<class Body>
    static testing::AssertionResult holds(Body body)
    {
        return Identity::holdsAsRoot([&body] {
            ASSERT_TRUE(makeMachine()) << "no private view of the file system";
            PrivateLogind logind;
            ASSERT_TRUE(logind.m_bus.isRunning());
            ASSERT_TRUE(logind.m_bus.startMock(SYSTEMD1_MOCK, "org.freedesktop.systemd1"));
            logind.m_connection = dozely::BusConnection::open(dozely::BusConnection::Bus::System).value();
            ASSERT_TRUE(logind.m_connection);
            ASSERT_TRUE(logind.start());
            body(logind);
        });
    }

    bool start()
    {
        m_logind = std::make_unique<QProcess>();
        m_logind->setProcessChannelMode(QProcess::ForwardedChannels);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("SYSTEMD_LOG_TARGET", "console");
        environment.insert("SYSTEMD_LOG_LEVEL", "warning");
        m_logind->setProcessEnvironment(environment);
        m_logind->start("/lib/systemd/systemd-logind", {});
        return waitUntil([this] { return m_logind->state() == QProcess::Running && isThere(); });
    }

    /// Ends it without a word, as a crash does.
    void kill()
    {
        m_logind->kill();
        ASSERT_TRUE(waitUntil([this] { return m_logind->state() == QProcess::NotRunning && !isThere(); }));
    }

    /// The locks of ours that it knows: "what mode".
    QStringList locks()
    {
        const auto list = call({"org.freedesktop.login1", "/org/freedesktop/login1",
                                "org.freedesktop.login1.Manager", "ListInhibitors"});
        QStringList found;
        for (const QVariant &lock : dozely::BusConnection::firstOf(list).toList()) {
            const QVariantList parts = lock.toList(); // what, who, why, mode, user, process
            if (parts.value(1) == QVariant("com.dozely"))
                found += parts.value(0).toString() + ' ' + parts.value(3).toString();
        }
        found.sort();
        return found;
    }

    /// The targets that it had started.
    QStringList started()
    {
        const auto list =
            call({"org.freedesktop.systemd1", "/org/freedesktop/systemd1", "com.dozely.Test", "Started"});
        QStringList targets;
        for (const QVariant &target : dozely::BusConnection::firstOf(list).toList()) {
            if (target.toString().endsWith(".target"))
                targets += target.toString();
        }
        return targets;
    }

private:
    ~PrivateLogind()
    {
        if (m_logind) {
            m_logind->kill();
            m_logind->waitForFinished();
        }
    }

    dozely::BusConnection::Reply call(const dozely::BusConnection::Member &method,
                                      const QByteArray &signature = "", const QVariantList &arguments = {})
    {
        return m_connection->call(method, signature, arguments, QDeadlineTimer(std::chrono::seconds(10)));
    }

    bool isThere()
    {
        const auto owned =
            call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner"},
                 "s", {"org.freedesktop.login1"});
        return owned && owned->value(0).toBool();
    }

    static bool mountTmpfs(const char *place)
    {
        return ::mount("tmpfs", place, "tmpfs", 0, "mode=0755") == 0;
    }

    static bool write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    static bool makeMachine()
    {
        const bool isOurs = ::unshare(CLONE_NEWNS) == 0 &&
                            ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                            mountTmpfs("/run") && (QFile::exists("/sys/power") || mountTmpfs("/sys"));
        QDir().mkpath("/sys/power");
        if (!isOurs || !mountTmpfs("/sys/power") || !mountTmpfs("/var/lib/systemd"))
            return false;
        for (const char *folder : {"seats", "sessions", "users", "inhibit", "system", "shutdown",
                                   "ask-password", "machines", "logind.conf.d"})
            QDir().mkpath(QString("/run/systemd/") + folder);
        for (const char *folder : {"/run/user", "/run/lock", "/run/udev/data", "/run/dbus"})
            QDir().mkpath(folder);
        return write("/sys/power/state", "freeze mem\n") &&
               write("/sys/power/mem_sleep", "s2idle [deep]\n") &&
               write("/run/systemd/logind.conf.d/test.conf",
                     "[Login]\nInhibitDelayMaxSec=60\nNAutoVTs=0\nReserveVT=0\n");
    }

    PrivateBus m_bus;
    std::unique_ptr<dozely::BusConnection> m_connection;
    std::unique_ptr<QProcess> m_logind;
};
