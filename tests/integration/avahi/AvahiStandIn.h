// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

/// avahi_stand_in.py on the system bus; it ends with the object.
class AvahiStandIn
{
public:
    explicit AvahiStandIn(const QStringList &options = {})
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(PYTHON, QStringList(STAND_IN) + options);
        EXPECT_EQ(answer(), QJsonValue("ready"));
    }
    ~AvahiStandIn()
    {
        m_process.closeWriteChannel();
        if (!m_process.waitForFinished())
            m_process.kill();
    }
    AvahiStandIn(const AvahiStandIn &) = delete;
    AvahiStandIn &operator=(const AvahiStandIn &) = delete;

    /// Has it do something; what it answers.
    QJsonValue tell(const QByteArray &line)
    {
        m_process.write(line + '\n');
        return answer();
    }

    /// How often an operation was called.
    int calls(const QString &operation)
    {
        int count = 0;
        for (const QJsonValue call : tell("calls").toArray())
            count += call[0] == operation ? 1 : 0;
        return count;
    }

    /// The objects that it made and that nobody let go of.
    QStringList live()
    {
        QStringList paths;
        for (const QJsonValue path : tell("live").toArray())
            paths += path.toString();
        return paths;
    }

private:
    QJsonValue answer()
    {
        constexpr int patience = 60'000; // milliseconds; only bounds a failing test
        while (!m_process.canReadLine() && m_process.waitForReadyRead(patience)) {
        }
        const QByteArray line =
            '[' + m_process.readLine().trimmed() + ']'; // a document is a list or an object
        return QJsonDocument::fromJson(line)[0];
    }

    QProcess m_process;
};
