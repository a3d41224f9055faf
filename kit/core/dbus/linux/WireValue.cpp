// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/linux/WireValue_p.h"

#include "DozelyKit/core/dbus/ObjectPath_p.h"
#include "DozelyKit/core/dbus/linux/WireBlob_p.h"
#include "DozelyKit/core/foundation/NSException.h"

#include <QDateTime>

#include <algorithm>
#include <cstring>

using namespace WireValue;

bool WireValue::isPlainText(const QString &text)
{
    const QChar *const end = text.constData() + text.size();
    for (const QChar *c = text.constData(); c != end; ++c) {
        const char16_t unit = c->unicode();
        if (unit == 0 || (unit >= 0xFDD0 && unit <= 0xFDEF) || unit >= 0xFFFE)
            return false;
        if (c->isLowSurrogate())
            return false;
        if (c->isHighSurrogate()) {
            if (c + 1 == end || !c[1].isLowSurrogate())
                return false;
            if ((QChar::surrogateToUcs4(c[0], c[1]) & 0xFFFE) == 0xFFFE)
                return false;
            ++c;
        }
    }
    return true;
}

namespace
{
[[noreturn]] void refuse(const QString &reason)
{
    throw NSException(NSInvalidArgumentException, reason);
}

void check(int result)
{
    if (result < 0)
        refuse(QStringLiteral("a value does not fit into a message: %1")
                   .arg(QString::fromLocal8Bit(strerrordesc_np(-result))));
}

// ---- writing

// Whether D-Bus can carry the value as it is: its text has no NUL and no noncharacters, and it is not nested
// deeper than the peers' D-Bus libraries allow.
bool isPlain(const QVariant &value, int depth)
{
    if (depth > plainDepth)
        return false;
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return false;
    case QMetaType::QVariant:
        return isPlain(value.value<QVariant>(), depth + 1);
    case QMetaType::QString:
        return isPlainText(value.toString());
    case QMetaType::QVariantList: {
        const auto list = value.toList();
        return std::all_of(list.begin(), list.end(),
                           [=](const QVariant &v) { return isPlain(v, depth + 1); });
    }
    case QMetaType::QStringList: {
        const auto list = value.toStringList();
        return std::all_of(list.begin(), list.end(), isPlainText);
    }
    case QMetaType::QVariantMap: {
        const auto map = value.toMap();
        for (auto it = map.begin(); it != map.end(); ++it) {
            if (!isPlainText(it.key()) || !isPlain(it.value(), depth + 1))
                return false;
        }
        return true;
    }
    default:
        return true;
    }
}

class Writer
{
public:
    explicit Writer(sd_bus_message *message) : m(message) {}

    void text(const QString &value)
    {
        const QByteArray utf8 = value.toUtf8();
        spend(utf8.size() + 8); // length, NUL and padding
        check(sd_bus_message_append_basic(m, 's', utf8.constData()));
    }

    void bytes(const QByteArray &value)
    {
        spend(value.size() + 4);
        check(sd_bus_message_append_array(m, 'y', value.constData(), static_cast<size_t>(value.size())));
    }

    void dictionary(const QVariantMap &map)
    {
        check(sd_bus_message_open_container(m, 'a', "{sv}"));
        for (auto it = map.begin(); it != map.end(); ++it) {
            spend(8); // padding
            check(sd_bus_message_open_container(m, 'e', "sv"));
            text(it.key());
            variant(it.value());
            check(sd_bus_message_close_container(m));
        }
        check(sd_bus_message_close_container(m));
    }

    void list(const QVariantList &values)
    {
        check(sd_bus_message_open_container(m, 'a', "v"));
        for (const QVariant &value : values)
            variant(value);
        check(sd_bus_message_close_container(m));
    }

    void date(const QDateTime &value)
    {
        if (!value.isValid())
            refuse(QStringLiteral("a date that is not valid"));
        const WireBlob::Date parts = WireBlob::dateParts(value);
        spend(parts.zone.size() + 32);
        check(sd_bus_message_append(m, "(xis)", parts.milliseconds, static_cast<int32_t>(parts.offset),
                                    parts.zone.constData()));
    }

    /// The value itself, without a variant around it.
    void bare(const QVariant &value)
    {
        spend(24); // a variant's signature, padding, and a number
        switch (value.typeId()) {
        case QMetaType::Bool: {
            const int truth = value.toBool();
            check(sd_bus_message_append_basic(m, 'b', &truth));
            return;
        }
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Int: {
            const int32_t number = value.toInt();
            check(sd_bus_message_append_basic(m, 'i', &number));
            return;
        }
        case QMetaType::UInt: {
            const uint32_t number = value.toUInt();
            check(sd_bus_message_append_basic(m, 'u', &number));
            return;
        }
        case QMetaType::Long:
        case QMetaType::LongLong: {
            const int64_t number = value.toLongLong();
            check(sd_bus_message_append_basic(m, 'x', &number));
            return;
        }
        case QMetaType::ULong:
        case QMetaType::ULongLong: {
            const uint64_t number = value.toULongLong();
            check(sd_bus_message_append_basic(m, 't', &number));
            return;
        }
        case QMetaType::Float:
        case QMetaType::Double: {
            const double number = value.toDouble();
            check(sd_bus_message_append_basic(m, 'd', &number));
            return;
        }
        case QMetaType::QString:
            return text(value.toString());
        case QMetaType::QByteArray:
            return bytes(value.toByteArray());
        case QMetaType::QDateTime:
            return date(value.toDateTime());
        case QMetaType::QStringList:
        case QMetaType::QVariantList:
            return list(value.toList());
        case QMetaType::QVariantMap:
            return dictionary(value.toMap());
        case QMetaType::QVariant:
            return variant(value.value<QVariant>());
        default:
            break;
        }
        if (value.canConvert<ObjectPath>()) {
            check(sd_bus_message_append_basic(m, 'o', value.value<ObjectPath>().path.constData()));
            return;
        }
        refuse(QStringLiteral("a value of type %1 cannot travel").arg(QString::fromLatin1(value.typeName())));
    }

    void variant(const QVariant &value)
    {
        check(sd_bus_message_open_container(m, 'v', signatureOf(value)));
        bare(value);
        check(sd_bus_message_close_container(m));
    }

private:
    // Never less than what the message grows by: who reads it looks at the size of the whole.
    void spend(qsizetype bytes)
    {
        m_size += bytes;
        if (m_size > maximumSize)
            refuse(QStringLiteral("a message of more than %1 bytes").arg(maximumSize));
    }

    static const char *signatureOf(const QVariant &value)
    {
        switch (value.typeId()) {
        case QMetaType::Bool:
            return "b";
        case QMetaType::Short:
        case QMetaType::UShort:
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
        case QMetaType::QByteArray:
            return "ay";
        case QMetaType::QDateTime:
            return "(xis)";
        case QMetaType::QStringList:
        case QMetaType::QVariantList:
            return "av";
        case QMetaType::QVariantMap:
            return "a{sv}";
        case QMetaType::QVariant:
            return "v";
        default:
            return "s"; // whatever else there is, bare() refuses
        }
    }

    sd_bus_message *m;
    qsizetype m_size = 0;
};

// ---- reading

class Reader
{
public:
    explicit Reader(sd_bus_message *message) : m(message) {}

    /// The next value, of the type that stands in the message. `depth` counts the containers around it.
    bool value(QVariant *result, int depth)
    {
        char type = 0;
        const char *contents = nullptr;
        if (depth > maximumDepth || !spend(4) || sd_bus_message_peek_type(m, &type, &contents) <= 0)
            return false;
        switch (type) {
        case 'b':
            return basic<int>(type, [&](int v) { *result = QVariant(v != 0); });
        case 'y':
            return basic<uint8_t>(type, [&](uint8_t v) { *result = QVariant(static_cast<uint>(v)); });
        case 'n':
            return basic<int16_t>(type, [&](int16_t v) { *result = QVariant(static_cast<int>(v)); });
        case 'q':
            return basic<uint16_t>(type, [&](uint16_t v) { *result = QVariant(static_cast<uint>(v)); });
        case 'i':
            return basic<int32_t>(type, [&](int32_t v) { *result = QVariant(v); });
        case 'u':
            return basic<uint32_t>(type, [&](uint32_t v) { *result = QVariant(v); });
        case 'x':
            return basic<int64_t>(type, [&](int64_t v) { *result = QVariant(static_cast<qlonglong>(v)); });
        case 't':
            return basic<uint64_t>(type, [&](uint64_t v) { *result = QVariant(static_cast<qulonglong>(v)); });
        case 'd':
            return basic<double>(type, [&](double v) { *result = QVariant(v); });
        case 's':
            return basic<const char *>(type, [&](const char *v) {
                if (spend(static_cast<qsizetype>(std::strlen(v))))
                    *result = QVariant(QString::fromUtf8(v));
            });
        case 'o':
            return basic<const char *>(
                type, [&](const char *v) { *result = QVariant::fromValue(ObjectPath{QByteArray(v)}); });
        case 'v':
            return variant(contents, result, depth);
        case 'a':
            return array(contents, result, depth);
        case 'r':
            return std::strcmp(contents, "xis") == 0 && date(result);
        default:
            return false;
        }
    }

    bool isTooLarge() const { return m_size > maximumSize; }

private:
    bool spend(qsizetype bytes)
    {
        m_size += bytes;
        return !isTooLarge();
    }

    template<class T, class Store>
    bool basic(char type, Store store)
    {
        T v{};
        if (sd_bus_message_read_basic(m, type, &v) <= 0)
            return false;
        store(v);
        return true;
    }

    bool variant(const char *contents, QVariant *result, int depth)
    {
        const QByteArray signature(contents);
        return sd_bus_message_enter_container(m, 'v', signature.constData()) > 0 && value(result, depth) &&
               sd_bus_message_exit_container(m) >= 0;
    }

    bool array(const char *contents, QVariant *result, int depth)
    {
        const QByteArray element(contents);
        if (element == "y") {
            const void *data = nullptr;
            size_t size = 0;
            if (sd_bus_message_read_array(m, 'y', &data, &size) < 0)
                return false;
            if (!spend(static_cast<qsizetype>(size)))
                return false;
            *result = QByteArray(static_cast<const char *>(data), static_cast<qsizetype>(size));
            return true;
        }
        if (element == "{sv}" || element == "{ss}")
            return dictionary(element, result, depth);
        if (element != "v" && element != "s")
            return false;
        if (sd_bus_message_enter_container(m, 'a', element.constData()) <= 0)
            return false;
        QVariantList list;
        int atEnd = 0;
        while ((atEnd = sd_bus_message_at_end(m, false)) == 0) {
            if (!value(&list.emplaceBack(), depth + 1))
                return false;
        }
        *result = list;
        return atEnd > 0 && sd_bus_message_exit_container(m) >= 0;
    }

    bool dictionary(const QByteArray &element, QVariant *result, int depth)
    {
        if (sd_bus_message_enter_container(m, 'a', element.constData()) <= 0)
            return false;
        const QByteArray entry = element.mid(1, 2);
        QVariantMap map;
        int more = 0;
        while ((more = sd_bus_message_enter_container(m, 'e', entry.constData())) > 0) {
            const char *key = nullptr;
            if (sd_bus_message_read_basic(m, 's', &key) <= 0 ||
                !value(&map[QString::fromUtf8(key)], depth + 1) || sd_bus_message_exit_container(m) < 0)
                return false;
        }
        *result = map;
        return more == 0 && sd_bus_message_exit_container(m) >= 0;
    }

    bool date(QVariant *result)
    {
        WireBlob::Date parts;
        int32_t offset = 0;
        const char *zone = nullptr;
        if (sd_bus_message_read(m, "(xis)", &parts.milliseconds, &offset, &zone) <= 0)
            return false;
        parts.offset = offset;
        parts.zone = zone;
        *result = WireBlob::dateFromParts(parts);
        return result->toDateTime().isValid();
    }

    sd_bus_message *m;
    qsizetype m_size = 0;
};
} // namespace

namespace
{
void append(Writer &writer, const QVariant &value)
{
    if (value.userType() == qMetaTypeId<NSNotification>()) {
        const auto notification = value.value<NSNotification>();
        // The everyday form is three plain arguments, so that any D-Bus client can post one by hand.
        const bool plain = !notification.name().isNull() && isPlainText(notification.name()) &&
                           notification.object().typeId() == QMetaType::QString &&
                           isPlain(notification.object(), 0) && isPlain(notification.userInfo(), 0);
        if (!plain)
            return writer.bytes(toBlob(value));
        writer.text(notification.name());
        writer.text(notification.object().toString());
        writer.dictionary(notification.userInfo());
        return;
    }
    if (value.canConvert<ObjectPath>() || isPlain(value, 0))
        writer.bare(value);
    else
        writer.bytes(toBlob(value));
}
} // namespace

void WireValue::appendAll(sd_bus_message *message, const QVariantList &values)
{
    Writer writer(message); // one for all: the limit is that of the message
    for (const QVariant &value : values)
        append(writer, value);
}

WireValue::Read WireValue::readAll(sd_bus_message *message, QVariantList *values)
{
    Reader reader(message);
    int atEnd = 0;
    while ((atEnd = sd_bus_message_at_end(message, true)) == 0) {
        if (!reader.value(&values->emplaceBack(), 0))
            return reader.isTooLarge() ? Read::TooLarge : Read::NotOurs;
    }
    if (reader.isTooLarge())
        return Read::TooLarge;
    return atEnd > 0 ? Read::Whole : Read::NotOurs;
}
