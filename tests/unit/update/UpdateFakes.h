// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/HttpClient.h"
#include "DozelyKit/system/network/Reachability.h"

#include <QStringList>

/// A transport that answers what the test says, and remembers what it was asked.
class FakeHttpClient : public HttpClient
{
public:
    std::optional<QByteArray> answer;
    QString reason = "nobody is there"; ///< When there is no answer.
    QList<HttpRequest> requests;

    std::optional<QByteArray> send(const HttpRequest &request, QString *error) override
    {
        requests += request;
        if (!answer && error)
            *error = reason;
        return answer;
    }
};

/// A network that leads where the test says.
class FakeReachability : public Reachability
{
public:
    std::optional<quint32> flags = Reachable;
    QStringList hosts; ///< That were asked for.

    std::optional<quint32> flagsOfHost(const QString &host) override
    {
        hosts += host;
        return flags;
    }
};
