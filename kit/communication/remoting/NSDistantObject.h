// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QHash>
#include <QVariant>

#include <memory>

class NSConnection;

/// The messages that a remote object answers: selector to the wire signature of its result, one of those that
/// docs/wire-protocol.md lists; "o" for an object, "v" for any value, "" for none.
struct NSProtocol {
    QByteArray name;
    QHash<QByteArray, QByteArray> results;
};

/// A proxy: stands for an object of another process and forwards messages to it.
///
/// OWNERSHIP: keeps its connection alive. THREADING and BLOCKING: as its connection.
class DOZELYKIT_EXPORT NSDistantObject
{
public:
    ~NSDistantObject();

    /// Declares what the target answers. From then on a selector that the protocol does not name, and a
    /// result of another type, raise NSInvalidArgumentException here.
    void setProtocolForProxy(const NSProtocol &protocol);

    /// Sends the message and waits for the result. Arguments: NSNotification, or a property-list value. A
    /// result that is an object comes back as std::shared_ptr<NSDistantObject> in the variant (see asProxy),
    /// a null object as an invalid variant. Raises NSException: a time-out, a dead connection, or what the
    /// target raised.
    QVariant invoke(const QByteArray &selector, const QVariantList &arguments = {}) const;

    /// The proxy inside a result of invoke, null when it holds none.
    static std::shared_ptr<NSDistantObject> asProxy(const QVariant &result);

    /// The object's path on the wire.
    QByteArray path() const;
    std::shared_ptr<NSConnection> connectionForProxy() const;

private:
    friend class NSConnection;
    NSDistantObject(std::shared_ptr<NSConnection> connection, QByteArray path);
    struct Private;
    std::unique_ptr<Private> d;
};

Q_DECLARE_METATYPE(std::shared_ptr<NSDistantObject>)
