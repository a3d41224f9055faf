// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/linux/WireBlob_p.h"

#include "DozelyKit/core/dbus/WireBlobs_p.h"
#include "DozelyKit/core/dbus/linux/WireValue_p.h"
#include "DozelyKit/core/foundation/NSException.h"

#include <QCborStreamReader>
#include <QCborStreamWriter>
#include <QTimeZone>

namespace
{
// Marks [milliseconds, offset, zone] as a date; from the first-come range of the CBOR tag registry ("Doz").
constexpr auto dateTag = QCborTag(0x446F7A00);
constexpr int maximumZoneName = 64; // bytes; no IANA name comes near it

void write(QCborStreamWriter &cbor, const QVariant &value, int depth)
{
    if (depth > WireValue::maximumDepth)
        throw NSException(NSInvalidArgumentException, QStringLiteral("a value nested too deep"));
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        cbor.append(nullptr);
        return;
    case QMetaType::QVariant:
        return write(cbor, value.value<QVariant>(), depth + 1);
    case QMetaType::Bool:
        cbor.append(value.toBool());
        return;
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
        cbor.append(value.toLongLong());
        return;
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        cbor.append(static_cast<quint64>(value.toULongLong()));
        return;
    case QMetaType::Float:
    case QMetaType::Double:
        cbor.append(value.toDouble());
        return;
    case QMetaType::QString:
        cbor.append(QStringView(value.toString()));
        return;
    case QMetaType::QByteArray:
        cbor.append(value.toByteArray());
        return;
    case QMetaType::QDateTime: {
        if (!value.toDateTime().isValid())
            throw NSException(NSInvalidArgumentException, QStringLiteral("a date that is not valid"));
        const WireBlob::Date date = WireBlob::dateParts(value.toDateTime());
        cbor.append(dateTag);
        cbor.startArray(3);
        cbor.append(static_cast<qint64>(date.milliseconds));
        cbor.append(static_cast<qint64>(date.offset));
        cbor.append(QLatin1StringView(date.zone));
        cbor.endArray();
        return;
    }
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        const QVariantList list = value.toList();
        cbor.startArray(static_cast<quint64>(list.size()));
        for (const QVariant &element : list)
            write(cbor, element, depth + 1);
        cbor.endArray();
        return;
    }
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        cbor.startMap(static_cast<quint64>(map.size()));
        for (auto it = map.begin(); it != map.end(); ++it) {
            cbor.append(QStringView(it.key()));
            write(cbor, it.value(), depth + 1);
        }
        cbor.endMap();
        return;
    }
    default:
        throw NSException(
            NSInvalidArgumentException,
            QStringLiteral("a value of type %1 cannot travel").arg(QString::fromLatin1(value.typeName())));
    }
}

class BlobReader
{
public:
    explicit BlobReader(const QByteArray &blob) : m_cbor(blob), m_size(static_cast<quint64>(blob.size())) {}

    bool whole(QVariant *result)
    {
        return read(result, 0) && m_cbor.lastError() == QCborError::NoError &&
               m_cbor.currentOffset() == static_cast<qint64>(m_size);
    }

private:
    // Lengths are checked against the block before anything is allocated for them.
    bool lengthFits() { return m_cbor.isLengthKnown() && m_cbor.length() <= m_size; }

    bool read(QVariant *result, int depth)
    {
        if (depth > WireValue::maximumDepth)
            return false;
        switch (m_cbor.type()) {
        case QCborStreamReader::UnsignedInteger: {
            const quint64 number = m_cbor.toUnsignedInteger();
            if (number <= static_cast<quint64>(std::numeric_limits<qint64>::max()))
                *result = QVariant(static_cast<qlonglong>(number));
            else
                *result = QVariant(static_cast<qulonglong>(number));
            return m_cbor.next();
        }
        case QCborStreamReader::NegativeInteger: {
            const auto beyondZero = static_cast<quint64>(m_cbor.toNegativeInteger()); // n stands for -n
            if (beyondZero == 0 || beyondZero > static_cast<quint64>(std::numeric_limits<qint64>::max()) + 1)
                return false;
            *result = QVariant(static_cast<qlonglong>(-static_cast<qint64>(beyondZero - 1) - 1));
            return m_cbor.next();
        }
        case QCborStreamReader::Double:
            *result = m_cbor.toDouble();
            return m_cbor.next();
        case QCborStreamReader::String: {
            QString text;
            if (!string(&text))
                return false;
            *result = text;
            return true;
        }
        case QCborStreamReader::ByteArray:
            return bytes(result);
        case QCborStreamReader::Array:
            return array(result, depth);
        case QCborStreamReader::Map:
            return map(result, depth);
        case QCborStreamReader::Tag:
            return m_cbor.toTag() == dateTag && m_cbor.next() && date(result);
        case QCborStreamReader::SimpleType:
            if (m_cbor.isBool())
                *result = m_cbor.toBool();
            else if (m_cbor.isNull())
                *result = QVariant();
            else
                return false;
            return m_cbor.next();
        default:
            return false;
        }
    }

    bool string(QString *text)
    {
        if (!m_cbor.isString() || !lengthFits())
            return false;
        *text = QLatin1StringView(""); // empty is not null
        auto chunk = m_cbor.readString();
        while (chunk.status == QCborStreamReader::Ok) {
            *text += chunk.data;
            chunk = m_cbor.readString();
        }
        return chunk.status == QCborStreamReader::EndOfString;
    }

    bool bytes(QVariant *result)
    {
        if (!lengthFits())
            return false;
        QByteArray data("");
        auto chunk = m_cbor.readByteArray();
        while (chunk.status == QCborStreamReader::Ok) {
            data += chunk.data;
            chunk = m_cbor.readByteArray();
        }
        *result = data;
        return chunk.status == QCborStreamReader::EndOfString;
    }

    bool array(QVariant *result, int depth)
    {
        if (!lengthFits() || !m_cbor.enterContainer())
            return false;
        QVariantList list;
        while (m_cbor.lastError() == QCborError::NoError && m_cbor.hasNext()) {
            if (!read(&list.emplaceBack(), depth + 1))
                return false;
        }
        *result = list;
        return m_cbor.lastError() == QCborError::NoError && m_cbor.leaveContainer();
    }

    bool map(QVariant *result, int depth)
    {
        if (!lengthFits() || !m_cbor.enterContainer())
            return false;
        QVariantMap entries;
        while (m_cbor.lastError() == QCborError::NoError && m_cbor.hasNext()) {
            QString key;
            if (!string(&key) || !read(&entries[key], depth + 1))
                return false;
        }
        *result = entries;
        return m_cbor.lastError() == QCborError::NoError && m_cbor.leaveContainer();
    }

    bool date(QVariant *result)
    {
        QVariant parts;
        if (m_cbor.type() != QCborStreamReader::Array || !array(&parts, WireValue::maximumDepth - 1))
            return false;
        const QVariantList list = parts.toList();
        if (list.size() != 3 || list[0].typeId() != QMetaType::LongLong ||
            list[1].typeId() != QMetaType::LongLong || list[2].typeId() != QMetaType::QString)
            return false;
        *result = WireBlob::dateFromParts(
            {list[0].toLongLong(), list[1].toLongLong(), list[2].toString().toLatin1()});
        return result->toDateTime().isValid();
    }

    QCborStreamReader m_cbor;
    quint64 m_size;
};
} // namespace

WireBlob::Date WireBlob::dateParts(const QDateTime &date)
{
    Date parts{date.toMSecsSinceEpoch(), date.offsetFromUtc(), {}};
    if (date.timeSpec() == Qt::UTC)
        parts.zone = "UTC";
    else if (date.timeSpec() == Qt::TimeZone)
        parts.zone = date.timeZone().id();
    else if (date.timeSpec() == Qt::LocalTime)
        parts.zone = QTimeZone::systemTimeZoneId();
    return parts;
}

QDateTime WireBlob::dateFromParts(const Date &parts)
{
    if (parts.zone == "UTC")
        return QDateTime::fromMSecsSinceEpoch(parts.milliseconds, Qt::UTC);
    if (!parts.zone.isEmpty() && parts.zone.size() <= maximumZoneName) {
        if (const QTimeZone zone(parts.zone); zone.isValid())
            return QDateTime::fromMSecsSinceEpoch(parts.milliseconds, zone);
    }
    constexpr int64_t largestOffset = 18 * 3600; // more is no place on earth
    if (parts.offset < -largestOffset || parts.offset > largestOffset)
        return {};
    return QDateTime::fromMSecsSinceEpoch(parts.milliseconds, Qt::OffsetFromUTC,
                                          static_cast<int>(parts.offset));
}

QByteArray WireValue::toBlob(const QVariant &value)
{
    QByteArray blob;
    QCborStreamWriter cbor(&blob);
    if (value.userType() == qMetaTypeId<NSNotification>()) {
        const auto notification = value.value<NSNotification>();
        cbor.startArray(3);
        write(cbor, notification.name().isNull() ? QVariant() : QVariant(notification.name()), 1);
        write(cbor, notification.object(), 1);
        write(cbor, notification.userInfo(), 1);
        cbor.endArray();
    } else {
        write(cbor, value, 0);
    }
    if (blob.size() > maximumSize)
        throw NSException(NSInvalidArgumentException,
                          QStringLiteral("a message of more than %1 bytes").arg(maximumSize));
    return blob;
}

bool WireValue::fromBlob(const QByteArray &blob, QVariant *value)
{
    return blob.size() <= maximumSize && BlobReader(blob).whole(value);
}

bool WireValue::notificationFromBlob(const QByteArray &blob, NSNotification *notification)
{
    QVariant value;
    if (!fromBlob(blob, &value) || value.typeId() != QMetaType::QVariantList)
        return false;
    const QVariantList parts = value.toList();
    if (parts.size() != 3 || (parts[0].isValid() && parts[0].typeId() != QMetaType::QString) ||
        parts[2].typeId() != QMetaType::QVariantMap)
        return false;
    *notification = NSNotification(parts[0].toString(), parts[1], parts[2].toMap());
    return true;
}

bool WireBlobs::valueFrom(const QByteArray &block, QVariant *value)
{
    return WireValue::fromBlob(block, value);
}

bool WireBlobs::notificationFrom(const QByteArray &block, NSNotification *notification)
{
    return WireValue::notificationFromBlob(block, notification);
}
