// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/linux/BusValue_p.h"

#include "DozelyKit/core/dbus/linux/BusConnection_p.h"

#include <QVariantMap>

#include <cerrno>
#include <fcntl.h>
#include <systemd/sd-bus.h>

namespace
{
template<class Number>
int readNumber(sd_bus_message *message, char type, QVariant &value)
{
    Number number{};
    const int result = sd_bus_message_read_basic(message, type, &number);
    value = QVariant::fromValue(number);
    return result;
}

int readBasic(sd_bus_message *message, char type, QVariant &value)
{
    switch (type) {
    case SD_BUS_TYPE_BOOLEAN: {
        const int result = readNumber<int>(message, type, value);
        value = value.toInt() != 0;
        return result;
    }
    case SD_BUS_TYPE_BYTE:
        return readNumber<quint8>(message, type, value);
    case SD_BUS_TYPE_INT16:
        return readNumber<qint16>(message, type, value);
    case SD_BUS_TYPE_UINT16:
        return readNumber<quint16>(message, type, value);
    case SD_BUS_TYPE_INT32:
        return readNumber<qint32>(message, type, value);
    case SD_BUS_TYPE_UINT32:
        return readNumber<quint32>(message, type, value);
    case SD_BUS_TYPE_INT64:
        return readNumber<qint64>(message, type, value);
    case SD_BUS_TYPE_UINT64:
        return readNumber<quint64>(message, type, value);
    case SD_BUS_TYPE_DOUBLE:
        return readNumber<double>(message, type, value);
    case SD_BUS_TYPE_STRING:
    case SD_BUS_TYPE_OBJECT_PATH:
    case SD_BUS_TYPE_SIGNATURE: {
        const char *text = nullptr;
        const int result = sd_bus_message_read_basic(message, type, static_cast<void *>(&text));
        value = QString::fromUtf8(text);
        return result;
    }
    case SD_BUS_TYPE_UNIX_FD: {
        int descriptor = -1; // the message's own, which goes with the message
        int result = sd_bus_message_read_basic(message, type, &descriptor);
        if (result >= 0) {
            const int copy = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 3);
            result = copy < 0 ? -errno : result;
            value = QVariant::fromValue(BusDescriptor(copy));
        }
        return result;
    }
    default:
        return -EOPNOTSUPP;
    }
}

int readBytes(sd_bus_message *message, QVariant &value)
{
    const void *bytes = nullptr;
    size_t size = 0;
    const int result = sd_bus_message_read_array(message, SD_BUS_TYPE_BYTE, &bytes, &size);
    if (result >= 0)
        value = QByteArray(static_cast<const char *>(bytes), static_cast<qsizetype>(size));
    return result;
}

int readValue(sd_bus_message *message, char type, const char *contents, QVariant &value, int depth);

/// The entries of an open array of dictionary entries.
int readEntries(sd_bus_message *message, const QByteArray &entry, QVariant &value, int depth)
{
    QVariantMap map;
    const QByteArray contents = entry.mid(1, entry.size() - 2); // without the braces
    int result = 0;
    while ((result = sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, contents.constData())) >
           0) {
        QVariantList pair;
        if ((result = BusValue::readAll(message, pair, depth)) < 0)
            return result;
        if ((result = sd_bus_message_exit_container(message)) < 0)
            return result;
        map.insert(pair.value(0).toString(), pair.value(1));
    }
    value = map;
    return result;
}

int readContainer(sd_bus_message *message, char type, const QByteArray &contents, QVariant &value, int depth)
{
    if (depth >= BusValue::maximumDepth)
        return -EBADMSG;
    if (type == SD_BUS_TYPE_ARRAY && contents == "y")
        return readBytes(message, value);
    int result = sd_bus_message_enter_container(message, type, contents.constData());
    if (result < 0)
        return result;
    if (type == SD_BUS_TYPE_ARRAY && (contents.startsWith("{s") || contents.startsWith("{o"))) {
        result = readEntries(message, contents, value, depth + 1);
    } else {
        QVariantList values;
        result = BusValue::readAll(message, values, depth + 1);
        value = type == SD_BUS_TYPE_VARIANT ? values.value(0) : QVariant(values);
    }
    return result < 0 ? result : sd_bus_message_exit_container(message);
}

int readValue(sd_bus_message *message, char type, const char *contents, QVariant &value, int depth)
{
    switch (type) {
    case SD_BUS_TYPE_ARRAY:
    case SD_BUS_TYPE_STRUCT:
    case SD_BUS_TYPE_DICT_ENTRY:
    case SD_BUS_TYPE_VARIANT:
        return readContainer(message, type, contents, value, depth);
    default:
        return readBasic(message, type, value);
    }
}
} // namespace

int BusValue::readAll(sd_bus_message *message, QVariantList &values, int depth)
{
    char type = 0;
    const char *contents = nullptr;
    int result = 0;
    while ((result = sd_bus_message_peek_type(message, &type, &contents)) > 0) {
        QVariant value;
        if ((result = readValue(message, type, contents, value, depth)) < 0)
            return result;
        values += value;
    }
    return result;
}
