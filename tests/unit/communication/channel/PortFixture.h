// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "support/Identity.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

/// A scratch root with the socket folder, writable for whatever user a test turns into.
class PortFixture : public testing::Test
{
protected:
    PortFixture()
    {
        root.makeFolder("/var/log", 0777);
        root.makeSocketFolder();
    }

    QString path(const QString &name) const { return ZDRUnixSocketPort::socketFolder() + '/' + name; }

    /// The messages in the log, without stamp and process name, the clearing of the folder by root left out.
    QStringList messages() const
    {
        QStringList messages;
        for (const QString &line : root.logLines()) {
            if (!line.endsWith("Cleared sockets folder"))
                messages += line.section(' ', 1);
        }
        return messages;
    }

    qsizetype clearings() const { return root.logContent().count("Cleared sockets folder\n"); }

    /// A name that makes the path of its socket file this many bytes long.
    QString nameForPathOf(qsizetype bytes) const
    {
        return QString(bytes - QFile::encodeName(path(QString())).size(), 'n');
    }

    static struct stat statusOf(const QString &path)
    {
        struct stat status = {};
        EXPECT_EQ(::lstat(QFile::encodeName(path).constData(), &status), 0) << qPrintable(path);
        return status;
    }

    static mode_t modeOf(const QString &path) { return statusOf(path).st_mode & 07777; }
    static bool isSocket(const QString &path) { return S_ISSOCK(statusOf(path).st_mode); }

    static void writeFile(const QString &path, const QByteArray &content = "content")
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    /// Whether a stream to the socket file arrives at this server.
    static bool reaches(const NSSocketPort &client, const NSSocketPort &server)
    {
        const int outgoing = client.connectStream();
        const int incoming = ::accept(server.listeningDescriptor(), nullptr, nullptr);
        const bool reached = outgoing >= 0 && incoming >= 0;
        if (outgoing >= 0)
            ::close(outgoing);
        if (incoming >= 0)
            ::close(incoming);
        return reached;
    }

    ScratchRoot root;
};
