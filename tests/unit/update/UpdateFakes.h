// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/HttpClient.h"
#include "DozelyKit/system/network/Reachability.h"

#include <QStringList>

/// A transport that answers what the test says, and remembers what it was asked.
class FakeHttpClient : public dozely::HttpClient
{
public:
    dozely::Result<QByteArray> answer = dozely::Error{"nobody is there"};
    QList<dozely::HttpRequest> requests;

    dozely::Result<QByteArray> send(const dozely::HttpRequest &request) override
    {
        requests += request;
        return answer;
    }
};

/// A network that leads where the test says.
class FakeReachability : public dozely::Reachability
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
