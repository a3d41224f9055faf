// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/dbus/linux/BusCodec_p.h"

#include "DozelyKit/core/dbus/linux/BusLibrary_p.h"

#include <QStringList>
#include <QVariantMap>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace dozely
{

namespace
{
// What a part of a message takes at most, with the padding before it.
constexpr qsizetype numberSize = 16;
constexpr qsizetype lengthSize = 8; // of a text with the NUL behind it, and of bytes
constexpr qsizetype arraySize = 16; // with the padding before its first element
constexpr qsizetype structureSize = 8;
constexpr qsizetype variantSize = 8;

/// The length of the complete type at the head of `signature`; 0 when there is none.
qsizetype typeLength(QByteArrayView signature)
{
    qsizetype length = 0;
    while (length < signature.size() && signature[length] == SD_BUS_TYPE_ARRAY)
        ++length;
    if (length == signature.size())
        return 0;
    int open = 0;
    do {
        const char type = signature[length++];
        open += type == '(' || type == '{' ? 1 : 0;
        open -= type == ')' || type == '}' ? 1 : 0;
    } while (open > 0 && length < signature.size());
    return open == 0 ? length : 0;
}

/// What is between the first and the last character.
QByteArray inner(const char *type)
{
    return {type + 1, static_cast<qsizetype>(std::strlen(type)) - 2};
}

class Writer
{
public:
    explicit Writer(sd_bus_message *message) : m(message) {}

    Error error() const { return m_error; }

    /// Each of the type that stands at its place in `types`.
    bool sequence(QByteArrayView types, const QVariantList &values, int depth)
    {
        for (const QVariant &each : values) {
            const qsizetype length = typeLength(types);
            if (length == 0)
                return misfit();
            if (!value(types.first(length).toByteArray().constData(), each, depth))
                return false;
            types = types.sliced(length);
        }
        return types.isEmpty() || misfit();
    }

private:
    bool fail(const QString &text)
    {
        m_error = {text};
        return false;
    }

    bool check(int result)
    {
        return result >= 0 || fail(QStringLiteral("a value does not fit into a message: %1")
                                       .arg(QString::fromLocal8Bit(strerrordesc_np(-result))));
    }

    bool misfit() { return check(-EINVAL); }

    bool homeless(const QVariant &value)
    {
        return fail(
            QStringLiteral("a value of type %1 cannot travel").arg(QString::fromLatin1(value.typeName())));
    }

    bool spend(qsizetype bytes)
    {
        m_size += bytes;
        return m_size <= BusCodec::budget ||
               fail(QStringLiteral("a message of more than %1 bytes").arg(BusCodec::budget));
    }

    /// The type in which a value travels when nobody asked for another; null when there is none.
    static const char *typeOf(const QVariant &value)
    {
        switch (value.typeId()) {
        case QMetaType::Bool:
            return "b";
        case QMetaType::UChar:
            return "y";
        case QMetaType::Short:
            return "n";
        case QMetaType::UShort:
            return "q";
        case QMetaType::Int:
            return "i";
        case QMetaType::UInt:
            return "u";
        case QMetaType::Long:
        case QMetaType::LongLong:
            return "x";
        case QMetaType::ULong:
        case QMetaType::ULongLong:
            return "t";
        case QMetaType::Float:
        case QMetaType::Double:
            return "d";
        case QMetaType::QString:
            return "s";
        case QMetaType::QByteArray:
            return "ay";
        case QMetaType::QStringList:
            return "as";
        case QMetaType::QVariantMap:
            return "a{sv}";
        case QMetaType::QVariantList:
            return "av";
        case QMetaType::QVariant:
            return "v";
        default:
            return nullptr;
        }
    }

    bool value(const char *type, const QVariant &value, int depth)
    {
        switch (*type) {
        case SD_BUS_TYPE_ARRAY:
            return depth < BusCodec::maximumDepth ? array(type + 1, value, depth + 1) : misfit();
        case SD_BUS_TYPE_STRUCT_BEGIN:
            return depth < BusCodec::maximumDepth ? structure(inner(type), value, depth + 1) : misfit();
        case SD_BUS_TYPE_VARIANT:
            return depth < BusCodec::maximumDepth ? variant(value, depth + 1) : misfit();
        default:
            return basic(*type, value);
        }
    }

    bool basic(char type, const QVariant &value)
    {
        switch (type) {
        case SD_BUS_TYPE_BOOLEAN:
            return number<int>(type, value.toBool());
        case SD_BUS_TYPE_BYTE:
            return number<quint8>(type, value);
        case SD_BUS_TYPE_INT16:
            return number<qint16>(type, value);
        case SD_BUS_TYPE_UINT16:
            return number<quint16>(type, value);
        case SD_BUS_TYPE_INT32:
            return number<qint32>(type, value);
        case SD_BUS_TYPE_UINT32:
            return number<quint32>(type, value);
        case SD_BUS_TYPE_INT64:
            return number<qint64>(type, value);
        case SD_BUS_TYPE_UINT64:
            return number<quint64>(type, value);
        case SD_BUS_TYPE_DOUBLE:
            return number<double>(type, value);
        case SD_BUS_TYPE_STRING:
        case SD_BUS_TYPE_OBJECT_PATH:
        case SD_BUS_TYPE_SIGNATURE:
            return value.metaType() == QMetaType::fromType<QString>() ? text(type, value.toString().toUtf8())
                                                                      : misfit();
        case SD_BUS_TYPE_UNIX_FD:
            return value.metaType() == QMetaType::fromType<BusDescriptor>()
                       ? number<int>(type, value.value<BusDescriptor>().get())
                       : misfit();
        default:
            return misfit();
        }
    }

    template<class Number>
    bool number(char type, const QVariant &value)
    {
        if (!value.canConvert<Number>())
            return misfit();
        const auto number = value.value<Number>();
        return spend(numberSize) && check(sdBus().message_append_basic(m, type, &number));
    }

    bool text(char type, const QByteArray &utf8)
    {
        // A text of the wire ends at its first NUL; what follows would be lost without anybody noticing.
        if (utf8.contains('\0'))
            return misfit();
        return spend(lengthSize + utf8.size()) &&
               check(sdBus().message_append_basic(m, type, utf8.constData()));
    }

    bool bytes(const QByteArray &value)
    {
        return spend(lengthSize + value.size()) &&
               check(sdBus().message_append_array(m, SD_BUS_TYPE_BYTE, value.constData(),
                                                  static_cast<size_t>(value.size())));
    }

    /// Opens a container, lets `fill` append what is in it, closes it.
    template<class Fill>
    bool container(char type, const char *contents, qsizetype size, Fill fill)
    {
        return spend(size) && check(sdBus().message_open_container(m, type, contents)) && fill() &&
               check(sdBus().message_close_container(m));
    }

    bool variant(const QVariant &value, int depth)
    {
        if (value.metaType() == QMetaType::fromType<BusVariant>())
            return typedVariant(value.value<BusVariant>(), depth);
        const QVariant held = value.typeId() == QMetaType::QVariant ? value.value<QVariant>() : value;
        const char *const type = typeOf(held);
        if (!type)
            return homeless(held);
        return container(SD_BUS_TYPE_VARIANT, type, variantSize,
                         [&] { return this->value(type, held, depth); });
    }

    bool typedVariant(const BusVariant &typed, int depth)
    {
        if (typed.signature.isEmpty() || typeLength(typed.signature) != typed.signature.size())
            return misfit();
        const char *const type = typed.signature.constData();
        return container(SD_BUS_TYPE_VARIANT, type, variantSize,
                         [&] { return value(type, typed.value, depth); });
    }

    bool array(const char *element, const QVariant &value, int depth)
    {
        if (*element == SD_BUS_TYPE_BYTE)
            return value.typeId() == QMetaType::QByteArray ? bytes(value.toByteArray()) : misfit();
        if (*element == SD_BUS_TYPE_DICT_ENTRY_BEGIN)
            return value.typeId() == QMetaType::QVariantMap ? dictionary(element, value.toMap(), depth)
                                                            : misfit();
        if (value.typeId() != QMetaType::QVariantList && value.typeId() != QMetaType::QStringList)
            return misfit();
        return container(SD_BUS_TYPE_ARRAY, element, arraySize, [&] {
            const QVariantList values = value.toList();
            return std::all_of(values.begin(), values.end(),
                               [&](const QVariant &each) { return this->value(element, each, depth); });
        });
    }

    bool dictionary(const char *entry, const QVariantMap &map, int depth)
    {
        const QByteArray contents = inner(entry);
        const char *const held = contents.constData() + 1;
        if (typeLength(held) != contents.size() - 1)
            return misfit();
        return container(SD_BUS_TYPE_ARRAY, entry, arraySize, [&] {
            for (auto member = map.cbegin(); member != map.cend(); ++member) {
                const auto pair = [&] {
                    return basic(contents.at(0), member.key()) && value(held, member.value(), depth);
                };
                if (!container(SD_BUS_TYPE_DICT_ENTRY, contents.constData(), structureSize, pair))
                    return false;
            }
            return true;
        });
    }

    bool structure(const QByteArray &members, const QVariant &value, int depth)
    {
        if (value.typeId() != QMetaType::QVariantList)
            return misfit();
        return container(SD_BUS_TYPE_STRUCT, members.constData(), structureSize,
                         [&] { return sequence(members, value.toList(), depth); });
    }

    sd_bus_message *m;
    qsizetype m_size = 0;
    Error m_error;
};
} // namespace

Result<void> BusCodec::append(sd_bus_message *message, const QByteArray &signature,
                              const QVariantList &values)
{
    Writer writer(message);
    if (!writer.sequence(signature, values, 0))
        return writer.error();
    return {};
}

} // namespace dozely
