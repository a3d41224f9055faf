// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/linux/BusCodec_p.h"

#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/dbus/linux/BusLibrary_p.h"

#include <QVariantMap>

#include <cerrno>
#include <cstring>
#include <fcntl.h>

namespace dozely
{

namespace
{
constexpr qsizetype leastSize = 4; // of a value, but for bytes in an array

class Reader
{
public:
    Reader(sd_bus_message *message, qsizetype most) : m(message), m_most(most) {}

    /// What is left in the open container, or in the message itself. `depth` counts the containers around it.
    bool all(QVariantList *values, int depth)
    {
        int atEnd = 0;
        while ((atEnd = sdBus().message_at_end(m, false)) == 0) {
            if (!value(&values->emplaceBack(), depth))
                return false;
        }
        return atEnd > 0;
    }

    Error error() const
    {
        if (m_size > m_most)
            return {QStringLiteral("a message of more than %1 bytes").arg(m_most)};
        return {QStringLiteral("a message that is damaged or holds types that are not known")};
    }

private:
    bool spend(qsizetype bytes)
    {
        m_size += bytes;
        return m_size <= m_most;
    }

    bool value(QVariant *result, int depth)
    {
        char type = 0;
        const char *contents = nullptr;
        if (!spend(leastSize) || sdBus().message_peek_type(m, &type, &contents) <= 0)
            return false;
        switch (type) {
        case SD_BUS_TYPE_ARRAY:
        case SD_BUS_TYPE_STRUCT:
        case SD_BUS_TYPE_DICT_ENTRY:
        case SD_BUS_TYPE_VARIANT:
            // A copy: it lies in the message, which is about to move on.
            return depth < BusCodec::maximumDepth && container(type, QByteArray(contents), result, depth + 1);
        default:
            return basic(type, result);
        }
    }

    bool basic(char type, QVariant *result)
    {
        switch (type) {
        case SD_BUS_TYPE_BOOLEAN:
            return number<int>(type, [&](int v) { *result = v != 0; });
        case SD_BUS_TYPE_BYTE:
            return number<quint8>(type, [&](quint8 v) { *result = QVariant::fromValue(v); });
        case SD_BUS_TYPE_INT16:
            return number<qint16>(type, [&](qint16 v) { *result = QVariant::fromValue(v); });
        case SD_BUS_TYPE_UINT16:
            return number<quint16>(type, [&](quint16 v) { *result = QVariant::fromValue(v); });
        case SD_BUS_TYPE_INT32:
            return number<qint32>(type, [&](qint32 v) { *result = v; });
        case SD_BUS_TYPE_UINT32:
            return number<quint32>(type, [&](quint32 v) { *result = v; });
        case SD_BUS_TYPE_INT64:
            return number<qint64>(type, [&](qint64 v) { *result = v; });
        case SD_BUS_TYPE_UINT64:
            return number<quint64>(type, [&](quint64 v) { *result = v; });
        case SD_BUS_TYPE_DOUBLE:
            return number<double>(type, [&](double v) { *result = v; });
        case SD_BUS_TYPE_STRING:
        case SD_BUS_TYPE_OBJECT_PATH:
        case SD_BUS_TYPE_SIGNATURE:
            return text(type, [&](const char *v) { *result = QString::fromUtf8(v); });
        case SD_BUS_TYPE_UNIX_FD:
            return descriptor(result);
        default:
            return false;
        }
    }

    template<class Number, class Store>
    bool number(char type, Store store)
    {
        Number v{};
        if (sdBus().message_read_basic(m, type, &v) <= 0)
            return false;
        store(v);
        return true;
    }

    template<class Store>
    bool text(char type, Store store)
    {
        const char *v = nullptr;
        if (sdBus().message_read_basic(m, type, static_cast<void *>(&v)) <= 0 ||
            !spend(static_cast<qsizetype>(std::strlen(v))))
            return false;
        store(v);
        return true;
    }

    bool descriptor(QVariant *result)
    {
        int messages = -1; // goes with the message
        if (sdBus().message_read_basic(m, SD_BUS_TYPE_UNIX_FD, &messages) <= 0)
            return false;
        const int copy = ::fcntl(messages, F_DUPFD_CLOEXEC, 3);
        *result = QVariant::fromValue(BusDescriptor(copy));
        return copy >= 0;
    }

    bool container(char type, const QByteArray &contents, QVariant *result, int depth)
    {
        const bool isArray = type == SD_BUS_TYPE_ARRAY;
        if (isArray && contents == "y")
            return bytes(result);
        if (sdBus().message_enter_container(m, type, contents.constData()) <= 0)
            return false;
        if (isArray && (contents.startsWith("{s") || contents.startsWith("{o")))
            return entries(contents, result, depth) && sdBus().message_exit_container(m) >= 0;
        if (type == SD_BUS_TYPE_VARIANT)
            return value(result, depth) && sdBus().message_exit_container(m) >= 0;
        QVariantList values;
        if (!all(&values, depth) || sdBus().message_exit_container(m) < 0)
            return false;
        *result = values;
        return true;
    }

    bool bytes(QVariant *result)
    {
        const void *data = nullptr;
        size_t size = 0;
        if (sdBus().message_read_array(m, SD_BUS_TYPE_BYTE, &data, &size) < 0 ||
            !spend(static_cast<qsizetype>(size)))
            return false;
        *result = QByteArray(static_cast<const char *>(data), static_cast<qsizetype>(size));
        return true;
    }

    /// The entries of an open array of dictionary entries.
    bool entries(const QByteArray &entry, QVariant *result, int depth)
    {
        const QByteArray contents = entry.mid(1, entry.size() - 2); // without the braces
        QVariantMap map;
        int more = 0;
        while ((more = sdBus().message_enter_container(m, SD_BUS_TYPE_DICT_ENTRY, contents.constData())) >
               0) {
            QString name;
            if (!text(contents.at(0), [&](const char *v) { name = QString::fromUtf8(v); }) ||
                !value(&map[name], depth) || sdBus().message_exit_container(m) < 0)
                return false;
        }
        *result = map;
        return more == 0;
    }

    sd_bus_message *m;
    const qsizetype m_most;
    qsizetype m_size = 0;
};
} // namespace

Result<QVariantList> BusCodec::read(sd_bus_message *message, qsizetype most)
{
    Reader reader(message, most);
    QVariantList values;
    if (!reader.all(&values, 0))
        return reader.error();
    return values;
}

} // namespace dozely
