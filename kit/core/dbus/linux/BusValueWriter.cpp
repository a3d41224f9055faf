// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/linux/BusValue_p.h"

#include <QStringList>
#include <QVariantMap>

#include <cerrno>
#include <systemd/sd-bus.h>

namespace
{
template<class Number>
int appendNumber(sd_bus_message *message, char type, const QVariant &value)
{
    if (!value.canConvert<Number>())
        return -EINVAL;
    const auto number = value.value<Number>();
    return sd_bus_message_append_basic(message, type, &number);
}

int appendText(sd_bus_message *message, char type, const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<QString>())
        return -EINVAL;
    const QByteArray text = value.toString().toUtf8();
    // A text of the wire ends at its first NUL; what follows would be lost without anybody noticing.
    return text.contains('\0') ? -EINVAL : sd_bus_message_append_basic(message, type, text.constData());
}

int appendBasic(sd_bus_message *message, char type, const QVariant &value)
{
    switch (type) {
    case SD_BUS_TYPE_BOOLEAN:
        return appendNumber<int>(message, type, value.toBool());
    case SD_BUS_TYPE_BYTE:
        return appendNumber<quint8>(message, type, value);
    case SD_BUS_TYPE_INT16:
        return appendNumber<qint16>(message, type, value);
    case SD_BUS_TYPE_UINT16:
        return appendNumber<quint16>(message, type, value);
    case SD_BUS_TYPE_INT32:
        return appendNumber<qint32>(message, type, value);
    case SD_BUS_TYPE_UINT32:
        return appendNumber<quint32>(message, type, value);
    case SD_BUS_TYPE_INT64:
        return appendNumber<qint64>(message, type, value);
    case SD_BUS_TYPE_UINT64:
        return appendNumber<quint64>(message, type, value);
    case SD_BUS_TYPE_DOUBLE:
        return appendNumber<double>(message, type, value);
    case SD_BUS_TYPE_STRING:
    case SD_BUS_TYPE_OBJECT_PATH:
    case SD_BUS_TYPE_SIGNATURE:
        return appendText(message, type, value);
    default:
        return -EINVAL;
    }
}

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

int appendValue(sd_bus_message *message, const QByteArray &type, const QVariant &value, int depth);

/// Appends `values`, each of the type that stands at its place in `types`.
int appendSequence(sd_bus_message *message, QByteArrayView types, const QVariantList &values, int depth)
{
    for (const QVariant &value : values) {
        const qsizetype length = typeLength(types);
        if (length == 0)
            return -EINVAL;
        const int result = appendValue(message, types.first(length).toByteArray(), value, depth);
        if (result < 0)
            return result;
        types = types.sliced(length);
    }
    return types.isEmpty() ? 0 : -EINVAL;
}

/// The type with which a variant carries `value`; empty when there is none.
QByteArray variantType(const QVariant &value)
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
    default:
        return {};
    }
}

/// Opens a container, lets `fill` append what is in it, closes it.
template<class Fill>
int appendContainer(sd_bus_message *message, char type, const QByteArray &contents, Fill fill)
{
    int result = sd_bus_message_open_container(message, type, contents.constData());
    if (result >= 0)
        result = fill();
    return result < 0 ? result : sd_bus_message_close_container(message);
}

int appendMap(sd_bus_message *message, const QByteArray &entry, const QVariant &value, int depth)
{
    if (value.metaType() != QMetaType::fromType<QVariantMap>())
        return -EINVAL;
    const QByteArray contents = entry.mid(1, entry.size() - 2); // without the braces
    return appendContainer(message, SD_BUS_TYPE_ARRAY, entry, [&] {
        const QVariantMap map = value.toMap();
        int result = 0;
        for (auto member = map.cbegin(); result >= 0 && member != map.cend(); ++member) {
            result = appendContainer(message, SD_BUS_TYPE_DICT_ENTRY, contents, [&] {
                return appendSequence(message, contents, {member.key(), member.value()}, depth);
            });
        }
        return result;
    });
}

int appendArray(sd_bus_message *message, const QByteArray &element, const QVariant &value, int depth)
{
    if (element == "y") {
        if (value.metaType() != QMetaType::fromType<QByteArray>())
            return -EINVAL;
        const QByteArray bytes = value.toByteArray();
        return sd_bus_message_append_array(message, SD_BUS_TYPE_BYTE, bytes.constData(),
                                           static_cast<size_t>(bytes.size()));
    }
    if (element.startsWith('{'))
        return appendMap(message, element, value, depth);
    if (value.typeId() != QMetaType::QVariantList && value.typeId() != QMetaType::QStringList)
        return -EINVAL;
    return appendContainer(message, SD_BUS_TYPE_ARRAY, element, [&] {
        const QVariantList values = value.toList();
        int result = 0;
        for (auto each = values.cbegin(); result >= 0 && each != values.cend(); ++each)
            result = appendValue(message, element, *each, depth);
        return result;
    });
}

int appendStructure(sd_bus_message *message, const QByteArray &members, const QVariant &value, int depth)
{
    if (value.typeId() != QMetaType::QVariantList)
        return -EINVAL;
    return appendContainer(message, SD_BUS_TYPE_STRUCT, members,
                           [&] { return appendSequence(message, members, value.toList(), depth); });
}

int appendValue(sd_bus_message *message, const QByteArray &type, const QVariant &value, int depth)
{
    if (depth >= BusValue::maximumDepth)
        return -EINVAL;
    switch (type.at(0)) {
    case SD_BUS_TYPE_ARRAY:
        return appendArray(message, type.mid(1), value, depth + 1);
    case SD_BUS_TYPE_STRUCT_BEGIN:
        return appendStructure(message, type.mid(1, type.size() - 2), value, depth + 1);
    case SD_BUS_TYPE_VARIANT: {
        const QByteArray held = variantType(value);
        if (held.isEmpty())
            return -EINVAL;
        return appendContainer(message, SD_BUS_TYPE_VARIANT, held,
                               [&] { return appendValue(message, held, value, depth + 1); });
    }
    default:
        return appendBasic(message, type.at(0), value);
    }
}
} // namespace

int BusValue::append(sd_bus_message *message, const QByteArray &signature, const QVariantList &arguments)
{
    return appendSequence(message, signature, arguments, 0);
}
