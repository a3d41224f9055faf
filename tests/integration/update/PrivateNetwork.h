// SPDX-License-Identifier: MIT
#pragma once

#include "support/Identity.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/mount.h>

/// A network of the test's own, without any interface that is up, in a child process.
class PrivateNetwork
{
public:
    /// Runs the expectations of `body` there.
    template<class Body>
    static testing::AssertionResult holds(Body body)
    {
        return Identity::holdsAsRoot([&body] {
            PrivateNetwork network;
            ASSERT_TRUE(network.m_isOurs) << "no network of our own";
            body(network);
        });
    }

    /// The content of /etc/hosts, the only source of names.
    void setHosts(const QByteArray &content) const
    {
        EXPECT_TRUE(write(m_folder.filePath("hosts"), content));
    }

    /// Runs the program "ip" with these arguments, separated by blanks.
    static void ip(const QString &arguments)
    {
        EXPECT_EQ(QProcess::execute("ip", arguments.split(' ')), 0) << qPrintable(arguments);
    }

    /// The bytes sent so far through an interface; -1 when there is none of that name.
    static qint64 sentBytes(const QByteArray &interface)
    {
        QFile file("/proc/self/net/dev");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        for (const QByteArray &line : file.readAll().split('\n')) {
            const QList<QByteArray> words = line.simplified().split(' ');
            if (words.constFirst() == interface + ":")
                return words.value(9).toLongLong();
        }
        return -1;
    }

private:
    PrivateNetwork()
    {
        m_isOurs = ::unshare(CLONE_NEWNET | CLONE_NEWNS) == 0 &&
                   ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 && replace("hosts", "") &&
                   replace("nsswitch.conf", "hosts: files\n") &&
                   write("/proc/sys/net/ipv6/conf/all/disable_ipv6", "1") && // else it greets by itself
                   write("/proc/sys/net/ipv6/conf/default/disable_ipv6", "1");
    }

    static bool write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
    }

    bool replace(const QString &name, const QByteArray &content) const
    {
        const QString file = m_folder.filePath(name);
        return write(file, content) &&
               ::mount(qPrintable(file), qPrintable("/etc/" + name), nullptr, MS_BIND, nullptr) == 0;
    }

    QTemporaryDir m_folder;
    bool m_isOurs = false;
};
