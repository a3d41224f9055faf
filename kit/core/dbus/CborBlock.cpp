// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/CborBlock_p.h"

#include "DozelyKit/core/foundation/DateExtensions.h"

#include <QCborStreamWriter>
#include <QStringEncoder>
#include <QTimeZone>

#include <algorithm>

namespace dozely
{

namespace
{
constexpr int maximumZoneName = 64; // bytes; no IANA name comes near it

// Whether D-Bus can carry the value as it is: its text has no NUL and no noncharacters, and it is not nested
// deeper than the peers' D-Bus libraries allow.
bool isPlain(const QVariant &value, int depth)
{
    if (depth > CborBlock::plainDepth)
        return false;
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return false;
    case QMetaType::QVariant:
        return isPlain(value.value<QVariant>(), depth + 1);
    case QMetaType::QString:
        return CborBlock::isPlainText(value.toString());
    case QMetaType::QVariantList: {
        const auto list = value.toList();
        return std::all_of(list.begin(), list.end(),
                           [=](const QVariant &v) { return isPlain(v, depth + 1); });
    }
    case QMetaType::QStringList: {
        const auto list = value.toStringList();
        return std::all_of(list.begin(), list.end(), CborBlock::isPlainText);
    }
    case QMetaType::QVariantMap: {
        const auto map = value.toMap();
        for (auto it = map.begin(); it != map.end(); ++it) {
            if (!CborBlock::isPlainText(it.key()) || !isPlain(it.value(), depth + 1))
                return false;
        }
        return true;
    }
    default:
        return true;
    }
}

class BlockWriter
{
public:
    /// The block of what `fill` writes.
    template<typename Fill>
    static Result<QByteArray> blockOf(Fill fill)
    {
        QByteArray block;
        BlockWriter writer(&block);
        if (!fill(writer))
            return Error{writer.m_reason};
        if (block.size() > CborBlock::maximumSize)
            return Error{QStringLiteral("a message of more than %1 bytes").arg(CborBlock::maximumSize)};
        return block;
    }

    bool notification(const NSNotification &notification)
    {
        m_cbor.startArray(3);
        return write(notification.name().isNull() ? QVariant() : QVariant(notification.name()), 1) &&
               write(notification.object(), 1) && write(notification.userInfo(), 1) && m_cbor.endArray();
    }

    bool write(const QVariant &value, int depth)
    {
        if (depth > CborBlock::maximumDepth)
            return fail(QStringLiteral("a value nested too deep"));
        switch (value.typeId()) {
        case QMetaType::UnknownType:
            m_cbor.append(nullptr);
            return true;
        case QMetaType::QVariant:
            return write(value.value<QVariant>(), depth + 1);
        case QMetaType::Bool:
            m_cbor.append(value.toBool());
            return true;
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::LongLong:
            m_cbor.append(value.toLongLong());
            return true;
        case QMetaType::ULong:
        case QMetaType::ULongLong:
            m_cbor.append(static_cast<quint64>(value.toULongLong()));
            return true;
        case QMetaType::Float:
        case QMetaType::Double:
            m_cbor.append(value.toDouble());
            return true;
        case QMetaType::QString:
            text(value.toString());
            return true;
        case QMetaType::QByteArray:
            m_cbor.append(value.toByteArray());
            return true;
        case QMetaType::QDateTime:
            return date(value.toDateTime());
        case QMetaType::QStringList:
        case QMetaType::QVariantList:
            return list(value.toList(), depth);
        case QMetaType::QVariantMap:
            return map(value.toMap(), depth);
        default:
            return fail(QStringLiteral("a value of type %1 cannot travel")
                            .arg(QString::fromLatin1(value.typeName())));
        }
    }

private:
    explicit BlockWriter(QByteArray *block) : m_cbor(block) {}

    bool fail(const QString &reason)
    {
        m_reason = reason;
        return false;
    }

    bool date(const QDateTime &value)
    {
        if (!value.isValid())
            return fail(QStringLiteral("a date that is not valid"));
        const WireDate date = WireDate::of(value);
        m_cbor.append(QCborTag(CborBlock::dateTag));
        m_cbor.startArray(3);
        m_cbor.append(static_cast<qint64>(date.milliseconds));
        m_cbor.append(static_cast<qint64>(date.offset));
        m_cbor.append(QLatin1StringView(date.zone));
        return m_cbor.endArray();
    }

    bool list(const QVariantList &list, int depth)
    {
        m_cbor.startArray(static_cast<quint64>(list.size()));
        return std::all_of(list.begin(), list.end(),
                           [&](const QVariant &element) { return write(element, depth + 1); }) &&
               m_cbor.endArray();
    }

    /// Half of a surrogate pair becomes U+FFFD; the writer of Qt would make it "?".
    void text(const QString &text)
    {
        if (text.isValidUtf16()) {
            m_cbor.append(QStringView(text));
            return;
        }
        const QByteArray bytes = QStringEncoder(QStringEncoder::Utf8)(text);
        m_cbor.appendTextString(bytes.constData(), bytes.size());
    }

    bool map(const QVariantMap &map, int depth)
    {
        m_cbor.startMap(static_cast<quint64>(map.size()));
        for (auto it = map.begin(); it != map.end(); ++it) {
            text(it.key());
            if (!write(it.value(), depth + 1))
                return false;
        }
        return m_cbor.endMap();
    }

    QCborStreamWriter m_cbor;
    QString m_reason;
};

} // namespace

WireDate WireDate::of(const QDateTime &date)
{
    WireDate parts{date.toMSecsSinceEpoch(), date.offsetFromUtc(), {}};
    if (date.timeSpec() == Qt::UTC)
        parts.zone = "UTC";
    else if (date.timeSpec() == Qt::TimeZone)
        parts.zone = date.timeZone().id();
    else if (date.timeSpec() == Qt::LocalTime)
        parts.zone = QTimeZone::systemTimeZoneId();
    return parts;
}

QDateTime WireDate::date() const
{
    if (zone == "UTC")
        return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
    // By name only: Qt opens the file of that name below the folder of zones, and by way of ".." a stranger
    // would have it open a pipe of his own, and wait for whoever writes there.
    if (zone.size() <= maximumZoneName && isTimeZoneName(QString::fromUtf8(zone)))
        return QDateTime::fromMSecsSinceEpoch(milliseconds, QTimeZone(zone));
    constexpr int64_t largestOffset = 18 * 3600; // more is no place on earth
    if (offset < -largestOffset || offset > largestOffset)
        return {};
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::OffsetFromUTC, static_cast<int>(offset));
}

bool CborBlock::isPlainText(const QString &text)
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

bool CborBlock::isNeededFor(const QVariant &value)
{
    return !isPlain(value, 0);
}

Result<QByteArray> CborBlock::encode(const QVariant &value)
{
    if (value.userType() == qMetaTypeId<NSNotification>())
        return BlockWriter::blockOf(
            [&](BlockWriter &writer) { return writer.notification(value.value<NSNotification>()); });
    return BlockWriter::blockOf([&](BlockWriter &writer) { return writer.write(value, 0); });
}

} // namespace dozely
