// SPDX-License-Identifier: MIT
#pragma once

#include "support/Identity.h"
#include "support/PrivateBus.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/mount.h>

/// A local network of two hosts, in a child process: this one, with a system bus and an Avahi daemon of its
/// own, and a neighbour that speaks multicast DNS without Avahi.
class LocalNetwork
{
public:
    static constexpr char ownAddress[] = "10.77.0.1";

    /// Runs the expectations of `body` there, whoever runs the test.
    template<class Body>
    static testing::AssertionResult holds(Body body)
    {
        return Identity::holdsAsRoot([&body] {
            LocalNetwork network;
            ASSERT_TRUE(network.m_isOurs) << "no network of our own";
            ASSERT_TRUE(network.bus->isRunning());
            body(network);
        });
    }

    void startAvahi()
    {
        m_avahi.setProcessChannelMode(QProcess::SeparateChannels);
        m_avahi.start("/usr/sbin/avahi-daemon", {"-f", m_folder.filePath("avahi.conf"), "--no-drop-root",
                                                 "--no-chroot", "--no-rlimits"});
        ASSERT_TRUE(m_avahi.waitForStarted());
        ASSERT_EQ(
            QProcess::execute("gdbus", {"wait", "--system", "--timeout", "20", "org.freedesktop.Avahi"}), 0);
    }

    /// Ends the daemon as a crash does.
    void killAvahi()
    {
        m_avahi.kill();
        // It may have ended by itself, when it lost its bus.
        EXPECT_TRUE(m_avahi.state() == QProcess::NotRunning || m_avahi.waitForFinished());
    }

    /// Has the neighbour do something; what it answers.
    QJsonValue neighbour(const QJsonObject &order)
    {
        if (m_neighbour.state() == QProcess::NotRunning)
            startNeighbour();
        m_neighbour.write(QJsonDocument(order).toJson(QJsonDocument::Compact) + '\n');
        return answer();
    }

    /// What the neighbour is answered when it asks for a service of this name; nothing when it is not, for
    /// so many milliseconds.
    QJsonObject found(const QString &name, int patience = 60'000)
    {
        return neighbour(
                   {{"do", "resolve"}, {"name", name}, {"type", "_dozely._tcp"}, {"patience", patience}})
            .toObject();
    }

    std::unique_ptr<PrivateBus> bus; ///< To be replaced by a test that loses it.

private:
    LocalNetwork()
    {
        m_isOurs =
            ::unshare(CLONE_NEWNET | CLONE_NEWNS) == 0 &&
            ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
            ::mount("tmpfs", "/run", "tmpfs", 0, nullptr) == 0 &&
            // The daemon gives its folder to its user, who in a user namespace is nobody but ourselves.
            replace("passwd", "root:x:0:0::/:/bin/sh\navahi:x:0:0::/:/bin/false\n") &&
            replace("group", "root:x:0:\navahi:x:0:\n") && ip("link set lo up") &&
            ip("link add here type veth peer name there") &&
            ip(QString("addr add %1/24 dev here").arg(ownAddress)) && ip("link set here up") &&
            ip("link set there up") &&
            write(m_folder.filePath("avahi.conf"),
                  "[server]\nhost-name=here\nallow-interfaces=here\n[wide-area]\nenable-wide-area=no\n"
                  "[publish]\npublish-workstation=no\npublish-hinfo=no\n[rlimits]\n");
        bus = std::make_unique<PrivateBus>();
    }

    ~LocalNetwork()
    {
        m_neighbour.closeWriteChannel();
        if (m_neighbour.state() != QProcess::NotRunning && !m_neighbour.waitForFinished())
            m_neighbour.kill();
        m_avahi.terminate();
        if (m_avahi.state() != QProcess::NotRunning && !m_avahi.waitForFinished())
            m_avahi.kill();
    }

    static bool write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    /// Has another file stand in the place of one of /etc.
    bool replace(const QString &name, const QByteArray &content)
    {
        const QString file = m_folder.filePath(name);
        return write(file, content) &&
               ::mount(qPrintable(file), qPrintable("/etc/" + name), nullptr, MS_BIND, nullptr) == 0;
    }

    static bool ip(const QString &arguments) { return QProcess::execute("ip", arguments.split(' ')) == 0; }

    /// What tells the network of that process from others.
    static QString networkOf(const QString &process)
    {
        return QFile::symLinkTarget(QString("/proc/%1/ns/net").arg(process)).section('/', -1);
    }

    void startNeighbour()
    {
        m_neighbour.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_neighbour.start("unshare", {"--net", PYTHON, NEIGHBOUR, "there", "10.77.0.2"});
        ASSERT_TRUE(m_neighbour.waitForStarted());
        // It is in a network of its own as soon as that is another one than ours.
        const QString itself = QString::number(m_neighbour.processId());
        while (networkOf(itself) == networkOf("self") && m_neighbour.state() == QProcess::Running)
            m_neighbour.waitForReadyRead(5);
        ASSERT_TRUE(ip(QString("link set there netns %1").arg(m_neighbour.processId())));
        ASSERT_EQ(answer(), QJsonValue("ready"));
    }

    QJsonValue answer()
    {
        constexpr int patience = 60'000; // milliseconds; only bounds a failing test
        while (!m_neighbour.canReadLine() && m_neighbour.waitForReadyRead(patience)) {
        }
        // A document must be a list or an object.
        const QByteArray line = '[' + m_neighbour.readLine().trimmed() + ']';
        return QJsonDocument::fromJson(line)[0];
    }

    QTemporaryDir m_folder;
    bool m_isOurs = false;
    QProcess m_avahi;
    QProcess m_neighbour;
};
