// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/RemoteCall_p.h"

#include "DozelyKit/communication/remoting/WireValues_p.h"
#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "DozelyKit/core/dbus/ObjectPath_p.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSNotification.h"

#include <QDateTime>
#include <QSet>

namespace dozely
{

using Reply = MessageStream::Reply;

namespace
{
constexpr const char *remoteTag = "NS_REMOTE";

bool isNotification(QMetaType type)
{
    return type.id() == qMetaTypeId<NSNotification>();
}

bool isObject(QMetaType type)
{
    return type.flags().testFlag(QMetaType::PointerToQObject);
}

// Whether both are the same number, of whatever width.
bool isSameNumber(const QVariant &a, const QVariant &b)
{
    const auto isNegative = [](const QVariant &number) {
        return number.typeId() != QMetaType::ULongLong && number.toLongLong() < 0;
    };
    return isNegative(a) == isNegative(b) && a.toLongLong() == b.toLongLong();
}

// One parameter from the wire's arguments, of which `next` is the first unused one. A block of bytes where
// another type is expected is the one-block form of that type.
bool takeParameter(QMetaType type, const QVariantList &arguments, qsizetype *next, QVariant *parameter)
{
    if (*next >= arguments.size())
        return false;
    const QVariant &first = arguments[*next];
    const bool isBlock = first.typeId() == QMetaType::QByteArray;
    if (isNotification(type)) {
        NSNotification notification;
        if (isBlock) {
            const auto decoded = CborBlock::decodeNotification(first.toByteArray());
            if (!decoded)
                return false;
            notification = *decoded;
            *next += 1;
        } else {
            if (*next + 3 > arguments.size() || first.typeId() != QMetaType::QString ||
                arguments[*next + 1].typeId() != QMetaType::QString ||
                arguments[*next + 2].typeId() != QMetaType::QVariantMap)
                return false;
            notification =
                NSNotification(first.toString(), arguments[*next + 1], arguments[*next + 2].toMap());
            *next += 3;
        }
        *parameter = QVariant::fromValue(notification);
        return true;
    }
    *next += 1;
    *parameter = first;
    if (type.id() == QMetaType::QVariant || parameter->metaType() == type)
        return true;
    if (isBlock) {
        const auto decoded = CborBlock::decode(first.toByteArray());
        if (!decoded)
            return false;
        *parameter = *decoded;
        if (parameter->metaType() == type)
            return true;
    }
    // Numbers of other widths; never text into numbers or the like.
    const auto isNumber = [](int id) {
        return id == QMetaType::Int || id == QMetaType::UInt || id == QMetaType::LongLong ||
               id == QMetaType::ULongLong;
    };
    if (!isNumber(parameter->typeId()) || !isNumber(type.id()))
        return false;
    const QVariant narrowed = [&] {
        QVariant copy = *parameter;
        copy.convert(type);
        return copy;
    }();
    if (!isSameNumber(narrowed, *parameter))
        return false;
    *parameter = narrowed;
    return true;
}

Reply call(QObject *object, const QMetaMethod &method, QVariantList &parameters,
           const std::function<QByteArray(QObject *)> &exportObject)
{
    const QMetaType resultType = method.returnMetaType();
    QVariant result;
    if (resultType.id() != QMetaType::Void)
        result = QVariant(resultType);
    std::vector<void *> slots{resultType.id() == QMetaType::Void ? nullptr : result.data()};
    for (int i = 0; i < method.parameterCount(); ++i) {
        QVariant &parameter = parameters[i];
        const bool asVariant = method.parameterType(i) == QMetaType::QVariant;
        slots.push_back(asVariant ? static_cast<void *>(&parameter) : parameter.data());
    }
    QMetaObject::metacall(object, QMetaObject::InvokeMetaMethod, method.methodIndex(), slots.data());
    if (resultType.id() == QMetaType::Void)
        return {};
    if (!isObject(resultType))
        return {{}, {}, {result}};
    QObject *returned = *static_cast<QObject *const *>(result.constData());
    return {
        {}, {}, {QVariant::fromValue(ObjectPath{returned ? exportObject(returned) : WireName::nothingPath})}};
}
} // namespace

QList<QMetaMethod> RemoteCall::methodsOf(const QObject *object)
{
    QList<QMetaMethod> methods;
    const QMetaObject *meta = object->metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        if (const QMetaMethod method = meta->method(i); qstrcmp(method.tag(), remoteTag) == 0)
            methods += method;
    }
    return methods;
}

Reply RemoteCall::invoke(QObject *object, const QByteArray &member, const QVariantList &arguments,
                         const std::function<QByteArray(QObject *)> &exportObject)
{
    const QMetaObject *meta = object->metaObject();
    bool known = false;
    // From the most derived class: an override hides what it overrides.
    for (int i = meta->methodCount() - 1; i >= 0; --i) {
        const QMetaMethod method = meta->method(i);
        if (qstrcmp(method.tag(), remoteTag) != 0 || method.name() != member)
            continue;
        known = true;
        QVariantList parameters;
        qsizetype next = 0;
        bool fits = true;
        for (int p = 0; fits && p < method.parameterCount(); ++p)
            fits = takeParameter(method.parameterMetaType(p), arguments, &next, &parameters.emplaceBack());
        if (!fits || next != arguments.size())
            continue;
        try {
            return call(object, method, parameters, exportObject);
        } catch (const NSException &exception) {
            return Reply::error(WireName::exception, exception.name() + ": " + exception.reason());
        } catch (const std::exception &exception) {
            return Reply::error(WireName::exception, QString::fromUtf8(exception.what()));
        }
    }
    if (known)
        return Reply::error(WireName::invalidArguments,
                            QStringLiteral("%1 takes other arguments").arg(QString::fromUtf8(member)));
    return Reply::error(WireName::unknownMethod,
                        QStringLiteral("the object does not answer %1").arg(QString::fromUtf8(member)));
}

std::optional<QByteArray> RemoteCall::objectIn(const Reply &reply)
{
    const QVariant object = reply.results.value(0);
    if (!reply.errorName.isEmpty() || !object.canConvert<ObjectPath>() ||
        object.value<ObjectPath>().path == WireName::nothingPath)
        return {};
    return object.value<ObjectPath>().path;
}

QByteArray RemoteCall::wireTypes(QMetaType type)
{
    if (isNotification(type))
        return "ssa{sv}";
    if (isObject(type))
        return "o";
    const char *const own = WireValues::typeOf(type);
    return own ? own : "v";
}

namespace
{
QString argument(const QByteArray &type, const QString &name, const char *direction)
{
    return QStringLiteral("<arg type=\"%1\" name=\"%2\" direction=\"%3\"/>")
        .arg(QString::fromLatin1(type), name.toHtmlEscaped(), QString::fromLatin1(direction));
}

QString describe(const QMetaMethod &method)
{
    QString text = QStringLiteral("<method name=\"%1\">").arg(QString::fromUtf8(method.name()));
    for (int i = 0; i < method.parameterCount(); ++i) {
        const QMetaType type = method.parameterMetaType(i);
        if (isNotification(type)) {
            text += argument("s", "name", "in") + argument("s", "object", "in") +
                    argument("a{sv}", "userInfo", "in");
            continue;
        }
        text +=
            argument(RemoteCall::wireTypes(type), QString::fromUtf8(method.parameterNames().value(i)), "in");
    }
    if (method.returnMetaType().id() != QMetaType::Void)
        text += argument(RemoteCall::wireTypes(method.returnMetaType()), "result", "out");
    return text + "</method>";
}
} // namespace

QString RemoteCall::introspection(const QObject *object, const QByteArray &path,
                                  const QList<QByteArray> &knownPaths)
{
    QString text =
        QStringLiteral("<!DOCTYPE node PUBLIC \"-//freedesktop//DTD D-BUS Object Introspection 1.0//EN\" "
                       "\"http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd\">\n<node>");
    text += QStringLiteral("<interface name=\"%1\"><method name=\"Introspect\">%2</method></interface>")
                .arg(QString::fromLatin1(WireName::introspectableInterface), argument("s", "data", "out"));
    if (path == WireName::connectionPath)
        text += QStringLiteral("<interface name=\"%1\"><method name=\"rootObject\">%2</method></interface>")
                    .arg(QString::fromLatin1(WireName::connectionInterface), argument("o", "object", "out"));
    if (object) {
        text += QStringLiteral("<interface name=\"%1\">").arg(QString::fromLatin1(WireName::objectInterface));
        for (const QMetaMethod &method : methodsOf(object))
            text += describe(method);
        text += "</interface>";
    }
    QSet<QByteArray> children;
    const QByteArray prefix = path.endsWith('/') ? path : path + '/';
    for (const QByteArray &known : knownPaths) {
        if (known.startsWith(prefix) && known.size() > prefix.size())
            children += known.mid(prefix.size()).split('/').first();
    }
    for (const QByteArray &child : children)
        text += QStringLiteral("<node name=\"%1\"/>").arg(QString::fromUtf8(child));
    return text + "</node>";
}

} // namespace dozely
