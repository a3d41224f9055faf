// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/NSSocketPort.h"

#include <QFile>
#include <QString>

/// A socket port at any path, for tests of the connection layer alone.
class TestPort : public NSSocketPort
{
public:
    static std::shared_ptr<TestPort> server(const QString &path)
    {
        QFile::remove(path);
        std::shared_ptr<TestPort> port(new TestPort);
        return port->initWithProtocolFamily(1, 1, 0, record(path)) ? port : nullptr;
    }
    static std::shared_ptr<TestPort> client(const QString &path)
    {
        std::shared_ptr<TestPort> port(new TestPort);
        return port->initRemoteWithProtocolFamily(1, 1, 0, record(path)) ? port : nullptr;
    }
    static QByteArray record(const QString &path)
    {
        const QByteArray bytes = QFile::encodeName(path).left(104);
        QByteArray record(106, '\0');
        record[0] = static_cast<char>(bytes.size() + 2);
        record[1] = 1;
        return record.replace(2, bytes.size(), bytes);
    }
};
