// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/NSDistantObject.h"

#include "DozelyKit/communication/remoting/NSConnection_p.h"
#include "DozelyKit/communication/remoting/RemoteCall_p.h"
#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "DozelyKit/core/dbus/ObjectPath_p.h"
#include "DozelyKit/core/foundation/NSException.h"

using namespace dozely;

struct NSDistantObject::Private {
    std::shared_ptr<NSConnection> connection;
    QByteArray path;
    std::optional<NSProtocol> protocol;
};

namespace
{
// Whether a result has the type that the wire signature names.
bool matches(const QVariant &result, const QByteArray &signature)
{
    if (signature.isEmpty())
        return !result.isValid();
    if (signature == "v")
        return result.isValid();
    if (signature == "o")
        return result.canConvert<ObjectPath>();
    return signature == RemoteCall::wireTypes(result.metaType());
}

// A block of bytes where another type is declared is the one-block form of that type.
QVariant fromBlock(const QVariant &result, const QByteArray &signature)
{
    if (result.typeId() != QMetaType::QByteArray)
        return result;
    const auto value = CborBlock::decode(result.toByteArray());
    return value && matches(*value, signature) ? *value : result;
}
} // namespace

NSDistantObject::NSDistantObject(std::shared_ptr<NSConnection> connection, QByteArray path)
    : d(new Private{std::move(connection), std::move(path), {}})
{
}

NSDistantObject::~NSDistantObject() = default;

void NSDistantObject::setProtocolForProxy(const NSProtocol &protocol)
{
    d->protocol = protocol;
}

QVariant NSDistantObject::invoke(const QByteArray &selector, const QVariantList &arguments) const
{
    if (d->protocol && !d->protocol->results.contains(selector))
        throw NSException(NSInvalidArgumentException,
                          QStringLiteral("%1 does not answer %2")
                              .arg(QString::fromUtf8(d->protocol->name), QString::fromUtf8(selector)));
    const auto connection = d->connection;
    QVariant result = connection->d->call(d->path, WireName::objectInterface, selector, arguments);
    if (d->protocol) {
        const QByteArray declared = d->protocol->results.value(selector);
        if (!matches(result, declared))
            result = fromBlock(result, declared);
        if (!matches(result, declared))
            throw NSException(
                NSInvalidArgumentException,
                QStringLiteral("%1 gave a result of another type").arg(QString::fromUtf8(selector)));
    }
    if (!result.canConvert<ObjectPath>())
        return result;
    const QByteArray path = result.value<ObjectPath>().path;
    if (path == WireName::nothingPath)
        return {};
    return QVariant::fromValue(std::shared_ptr<NSDistantObject>(new NSDistantObject(connection, path)));
}

std::shared_ptr<NSDistantObject> NSDistantObject::asProxy(const QVariant &result)
{
    return result.value<std::shared_ptr<NSDistantObject>>();
}

QByteArray NSDistantObject::path() const
{
    return d->path;
}

std::shared_ptr<NSConnection> NSDistantObject::connectionForProxy() const
{
    return d->connection;
}
