// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/communication/remoting/NSSocketPort.h"

#include <QHash>
#include <QPointer>

/// What the streams of one server connection share; they outlive the connection that accepted them.
class Vended
{
public:
    QPointer<QObject> rootObject;
    QPointer<QObject> delegate;

    /// The path under which peers can reach the object from now on.
    QByteArray pathOf(QObject *object);
    /// Null when there is no such object, or no longer.
    QObject *objectAt(const QByteArray &path) const;
    QList<QByteArray> paths() const;

private:
    QHash<QByteArray, QPointer<QObject>> m_objects;
    quint64 m_last = 0;
};

struct NSConnection::Private : dozely::MessageStream::Handler {
    explicit Private(NSConnection *connection) : q(connection) {}

    dozely::MessageStream::Reply serve(const dozely::MessageStream::Request &request) override;
    void streamClosed() override;

    void listen();
    void adopt(std::shared_ptr<dozely::MessageStream> accepted);
    /// The stream of a client connection, opened if need be. Raises NSException.
    dozely::MessageStream &openStream();
    QVariant call(const QByteArray &path, const QByteArray &interface, const QByteArray &member,
                  const QVariantList &arguments);

    NSConnection *q;
    std::shared_ptr<Vended> vended = std::make_shared<Vended>();
    dozely::StreamOptions options;
    std::shared_ptr<NSSocketPort> receivePort;
    std::shared_ptr<NSSocketPort> sendPort;
    std::unique_ptr<dozely::StreamListener> listener;
    std::shared_ptr<dozely::MessageStream> stream;
    QList<quint32> trustedPeers;
    std::chrono::milliseconds requestTimeout = std::chrono::seconds(60);
    std::chrono::milliseconds replyTimeout = std::chrono::seconds(60);
    bool valid = true;
};
