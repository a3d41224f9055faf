// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/NSNetService.h"

#include <QStringList>

/// Writes down what becomes of a service.
class NetServiceRecorder : public NSNetServiceDelegate
{
public:
    void netServiceDidPublish(NSNetService &service) override { published += service.name(); }
    void netServiceDidNotPublish(NSNetService &, const dozely::NetServices::Error &error) override
    {
        problems += error.problem;
    }
    void netServiceDidResolveAddress(NSNetService &) override { ++resolved; }
    void netServiceDidNotResolve(NSNetService &, const dozely::NetServices::Error &error) override
    {
        problems += error.problem;
    }
    void netServiceDidUpdateTXTRecordData(NSNetService &, const QByteArray &record) override
    {
        records += record;
    }

    QStringList published; ///< The names, one a time.
    QList<dozely::NetServices::Problem> problems;
    int resolved = 0;
    QByteArrayList records;
};
