// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/CborBlock_p.h"

#include <QCborStreamReader>

#include <limits>

namespace dozely
{

namespace
{
class BlockReader
{
public:
    explicit BlockReader(const QByteArray &block) : m_cbor(block), m_size(static_cast<quint64>(block.size()))
    {
    }

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
        if (depth > CborBlock::maximumDepth)
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
            return m_cbor.toTag() == QCborTag(CborBlock::dateTag) && m_cbor.next() && date(result);
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
        if (m_cbor.type() != QCborStreamReader::Array || !array(&parts, CborBlock::maximumDepth - 1))
            return false;
        const QVariantList list = parts.toList();
        if (list.size() != 3 || list[0].typeId() != QMetaType::LongLong ||
            list[1].typeId() != QMetaType::LongLong || list[2].typeId() != QMetaType::QString)
            return false;
        *result = WireDate{list[0].toLongLong(), list[1].toLongLong(), list[2].toString().toLatin1()}.date();
        return result->toDateTime().isValid();
    }

    QCborStreamReader m_cbor;
    quint64 m_size;
};
} // namespace

Result<QVariant> CborBlock::decode(const QByteArray &block)
{
    QVariant value;
    if (block.size() > maximumSize || !BlockReader(block).whole(&value))
        return Error{QStringLiteral("a damaged block")};
    return value;
}

Result<NSNotification> CborBlock::decodeNotification(const QByteArray &block)
{
    const Result<QVariant> value = decode(block);
    if (!value)
        return value.error();
    const QVariantList parts = value->typeId() == QMetaType::QVariantList ? value->toList() : QVariantList();
    if (parts.size() != 3 || (parts[0].isValid() && parts[0].typeId() != QMetaType::QString) ||
        parts[2].typeId() != QMetaType::QVariantMap)
        return Error{QStringLiteral("a block that is no notification")};
    return NSNotification(parts[0].toString(), parts[1], parts[2].toMap());
}

} // namespace dozely
