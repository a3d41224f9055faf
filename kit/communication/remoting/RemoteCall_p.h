// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/MessageStream_p.h"

#include <QMetaMethod>

namespace dozely
{

/// Calling an object's NS_REMOTE invokables by name through the meta-object.
namespace RemoteCall
{
/// The invokables that other processes may call.
DOZELYKIT_AUTOTEST_EXPORT QList<QMetaMethod> methodsOf(const QObject *object);

/// Calls the invokable `member` with arguments as they came from the wire. `exportObject` gives the path for
/// a result that is an object. What the object raises becomes an error reply.
DOZELYKIT_AUTOTEST_EXPORT MessageStream::Reply
invoke(QObject *object, const QByteArray &member, const QVariantList &arguments,
       const std::function<QByteArray(QObject *)> &exportObject);

/// The path of the object that a reply holds; absent when it holds none.
DOZELYKIT_AUTOTEST_EXPORT std::optional<QByteArray> objectIn(const MessageStream::Reply &reply);

/// The signature in which values of that type travel; "v" for a type that holds any.
QByteArray wireTypes(QMetaType type);

/// The D-Bus introspection data of an object (null for none) with these child nodes.
QString introspection(const QObject *object, const QByteArray &path, const QList<QByteArray> &knownPaths);
} // namespace RemoteCall

/// Names on the wire (docs/wire-protocol.md).
namespace WireName
{
constexpr const char *connectionInterface = "com.dozely.Connection";
constexpr const char *objectInterface = "com.dozely.Object";
constexpr const char *introspectableInterface = "org.freedesktop.DBus.Introspectable";
constexpr const char *connectionPath = "/";
constexpr const char *rootPath = "/root";
constexpr const char *nothingPath = "/"; ///< Stands for "no object" where an object is expected.
constexpr const char *noRootObject = "com.dozely.Error.NoRootObject";
constexpr const char *exception = "com.dozely.Error.Exception";
constexpr const char *unknownObject = "org.freedesktop.DBus.Error.UnknownObject";
constexpr const char *unknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";
constexpr const char *invalidArguments = "org.freedesktop.DBus.Error.InvalidArgs";
} // namespace WireName

} // namespace dozely
