// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/WireTypes_p.h"
#include "DozelyKit/communication/remoting/WireValues_p.h"
#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "DozelyKit/core/dbus/ObjectPath_p.h"

#include <QtEndian>

#include <algorithm>
#include <bit>

namespace dozely
{

namespace
{
class Writer
{
public:
    explicit Writer(WireMessage *message) : m_signature(message->signature), m_body(message->body) {}

    Error error() const { return {m_error}; }

    /// As an argument or a result: of the type that the value has.
    bool argument(const QVariant &value)
    {
        if (value.userType() == qMetaTypeId<NSNotification>())
            return notification(value.value<NSNotification>());
        if (CborBlock::isNeededFor(value))
            return block(value);
        if (value.metaType() == QMetaType::fromType<ObjectPath>())
            return path(value.value<ObjectPath>().path);
        const char *const type = WireValues::typeOf(value.metaType());
        if (!type)
            return homeless(value);
        m_signature += type;
        return this->value(value) && checkSize();
    }

private:
    bool fail(const QString &text)
    {
        m_error = text;
        return false;
    }

    bool homeless(const QVariant &value)
    {
        return fail(
            QStringLiteral("a value of type %1 cannot travel").arg(QString::fromLatin1(value.typeName())));
    }

    bool checkSize()
    {
        constexpr qsizetype longestSignature = 255;
        if (m_signature.size() > longestSignature)
            return fail(QStringLiteral("a message of too many arguments"));
        return m_body.size() <= CborBlock::maximumSize ||
               fail(QStringLiteral("a message of more than %1 bytes").arg(CborBlock::maximumSize));
    }

    /// Of the type that WireValues::typeOf gives for it.
    bool value(const QVariant &value)
    {
        switch (value.typeId()) {
        case QMetaType::Bool:
            return number<quint32>(value.toBool() ? 1 : 0);
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Int:
            return number<qint32>(value.toInt());
        case QMetaType::UInt:
            return number<quint32>(value.toUInt());
        case QMetaType::Long:
        case QMetaType::LongLong:
            return number<qint64>(value.toLongLong());
        case QMetaType::ULong:
        case QMetaType::ULongLong:
            return number<quint64>(value.toULongLong());
        case QMetaType::Float:
        case QMetaType::Double:
            return number<quint64>(std::bit_cast<quint64>(value.toDouble()));
        case QMetaType::QString:
            return text(value.toString().toUtf8());
        case QMetaType::QByteArray:
            return bytes(value.toByteArray());
        case QMetaType::QDateTime:
            return date(value.toDateTime());
        case QMetaType::QVariantMap:
            return dictionary(value.toMap());
        case QMetaType::QStringList:
        case QMetaType::QVariantList:
            return list(value.toList());
        default:
            return variant(value.value<QVariant>());
        }
    }

    void align(qsizetype boundary) { m_body.append((boundary - m_body.size() % boundary) % boundary, '\0'); }

    template<class Number>
    bool number(Number value)
    {
        align(sizeof value);
        char bytes[sizeof value];
        qToLittleEndian(value, bytes);
        m_body.append(bytes, sizeof bytes);
        return true;
    }

    bool text(const QByteArray &utf8)
    {
        number(static_cast<quint32>(utf8.size()));
        m_body += utf8;
        m_body += '\0';
        return true;
    }

    bool bytes(const QByteArray &value)
    {
        if (value.size() > CborBlock::maximumSize)
            return fail(QStringLiteral("a message of more than %1 bytes").arg(CborBlock::maximumSize));
        number(static_cast<quint32>(value.size()));
        m_body += value;
        return true;
    }

    bool path(const QByteArray &path)
    {
        m_signature += 'o';
        return text(path);
    }

    /// An array whose elements `fill` appends.
    template<class Fill>
    bool array(qsizetype alignment, Fill fill)
    {
        number<quint32>(0);
        const qsizetype length = m_body.size() - static_cast<qsizetype>(sizeof(quint32));
        align(alignment);
        const qsizetype begin = m_body.size();
        if (!fill())
            return false;
        qToLittleEndian(static_cast<quint32>(m_body.size() - begin), m_body.data() + length);
        return true;
    }

    bool list(const QVariantList &values)
    {
        return array(1, [&] {
            return std::all_of(values.begin(), values.end(), [&](const QVariant &each) {
                return variant(each.typeId() == QMetaType::QVariant ? each.value<QVariant>() : each);
            });
        });
    }

    bool dictionary(const QVariantMap &map)
    {
        const qsizetype alignment = WireTypes::alignmentOf('{');
        return array(alignment, [&] {
            for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
                align(alignment);
                const QVariant &held = entry.value();
                if (!text(entry.key().toUtf8()) ||
                    !variant(held.typeId() == QMetaType::QVariant ? held.value<QVariant>() : held))
                    return false;
            }
            return true;
        });
    }

    bool variant(const QVariant &held)
    {
        const char *const type = WireValues::typeOf(held.metaType());
        if (!type)
            return homeless(held);
        const QByteArrayView signature(type);
        m_body += static_cast<char>(signature.size());
        m_body.append(signature.data(), signature.size() + 1); // with the NUL behind it
        return value(held) && checkSize();
    }

    bool date(const QDateTime &value)
    {
        if (!value.isValid())
            return fail(QStringLiteral("a date that is not valid"));
        const WireDate date = WireDate::of(value);
        align(WireTypes::alignmentOf('('));
        return number<qint64>(date.milliseconds) && number<qint32>(static_cast<qint32>(date.offset)) &&
               text(date.zone);
    }

    bool block(const QVariant &value)
    {
        const Result<QByteArray> block = CborBlock::encode(value);
        if (!block)
            return fail(block.error().text);
        m_signature += "ay";
        return bytes(*block) && checkSize();
    }

    bool notification(const NSNotification &notification)
    {
        // The everyday form is three plain arguments, so that any D-Bus client can post one by hand.
        const bool isPlain = !notification.name().isNull() && CborBlock::isPlainText(notification.name()) &&
                             notification.object().typeId() == QMetaType::QString &&
                             !CborBlock::isNeededFor(notification.object()) &&
                             !CborBlock::isNeededFor(notification.userInfo());
        if (!isPlain)
            return block(QVariant::fromValue(notification));
        m_signature += "ssa{sv}";
        return text(notification.name().toUtf8()) && text(notification.object().toString().toUtf8()) &&
               dictionary(notification.userInfo()) && checkSize();
    }

    QByteArray &m_signature;
    QByteArray &m_body;
    QString m_error;
};
} // namespace

const char *WireValues::typeOf(QMetaType type)
{
    switch (type.id()) {
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
    case QMetaType::QString:
        return "s";
    case QMetaType::QByteArray:
        return "ay";
    case QMetaType::QDateTime:
        return "(xis)";
    case QMetaType::QVariantMap:
        return "a{sv}";
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return "av";
    case QMetaType::QVariant:
        return "v";
    default:
        return nullptr;
    }
}

Result<void> WireValues::write(const QVariantList &values, WireMessage *message)
{
    Writer writer(message);
    for (const QVariant &value : values) {
        if (!writer.argument(value))
            return writer.error();
    }
    return {};
}

} // namespace dozely
