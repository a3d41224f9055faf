// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyListValue_p.h"

#include <QStringConverter>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>

namespace dozely
{

namespace
{
using PropertyList::DamagedDate;
using PropertyList::Format;
using PropertyList::Terms;
using PropertyListValue::Kind;

constexpr qint64 startOf2001 = 978'307'200'000; // milliseconds since 1970 UTC
/// Two roundings of a double stay below half a millisecond up to here.
constexpr qint64 maximumMilliseconds = 1LL << 51;

/// Walks a value before it is written.
class Examination
{
public:
    Examination(Format format, const Terms &terms) : m_format(format), m_terms(terms) {}

    /// `depth` counts the containers around the value.
    bool fits(const QVariant &value, int depth = 0)
    {
        if (++m_nodes > m_terms.nodes)
            return false;
        switch (PropertyListValue::kindOf(value)) {
        case Kind::None:
            return false;
        case Kind::Boolean:
        case Kind::Integer:
            return true;
        case Kind::Real:
            return std::isfinite(value.toDouble());
        case Kind::Text:
            return text(value.toString());
        case Kind::Data:
            return bytes(value.toByteArray().size());
        case Kind::Date:
            return date(value.toDateTime());
        case Kind::DamagedDate:
            return m_terms.keepsDamagedDates && damagedDate(value.value<DamagedDate>().content);
        case Kind::Array: {
            const QVariantList list = value.toList();
            return depth < PropertyList::maximumDepth &&
                   std::all_of(list.begin(), list.end(),
                               [&](const QVariant &item) { return fits(item, depth + 1); });
        }
        case Kind::Dictionary:
            return depth < PropertyList::maximumDepth && dictionary(value.toMap(), depth);
        }
        return false;
    }

private:
    bool dictionary(const QVariantMap &map, int depth)
    {
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            ++m_nodes; // the key
            if (!text(entry.key()) || !fits(entry.value(), depth + 1))
                return false;
        }
        return true;
    }

    /// NUL ends a text for many readers, half a surrogate pair is no character, and XML has no place for most
    /// control characters.
    bool text(const QString &text)
    {
        const auto unfit = [this](QChar c) {
            const char16_t code = c.unicode();
            const bool control = code < 0x20 && code != '\t' && code != '\n';
            return code == 0 || (m_format == Format::Xml && (control || code >= 0xfffe));
        };
        return bytes(2 * text.size()) && text.isValidUtf16() && std::none_of(text.begin(), text.end(), unfit);
    }

    /// What is written once for many references counts for each of them when it is read.
    bool bytes(qsizetype count)
    {
        m_bytes += count;
        return m_bytes <= m_terms.unfoldedBytes;
    }

    /// XML has four digits for a year.
    bool date(const QDateTime &date) const
    {
        if (!date.isValid())
            return false;
        const int year = date.toUTC().date().year();
        if (m_format == Format::Xml)
            return year >= 1 && year <= 9999;
        // No difference is taken: it need not be a number any more.
        const qint64 milliseconds = date.toMSecsSinceEpoch();
        return milliseconds >= startOf2001 - maximumMilliseconds &&
               milliseconds <= startOf2001 + maximumMilliseconds;
    }

    /// Only where it came from a list of this form.
    bool damagedDate(const QByteArray &content)
    {
        if (m_format == Format::Binary)
            return content.size() == sizeof(double);
        const auto characters = PropertyListValue::fromUtf8(content);
        return characters && text(*characters);
    }

    Format m_format;
    const Terms &m_terms;
    int m_nodes = 0;
    qint64 m_bytes = 0;
};
} // namespace

PropertyListValue::Kind PropertyListValue::kindOf(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<DamagedDate>())
        return Kind::DamagedDate;
    switch (value.typeId()) {
    case QMetaType::Bool:
        return Kind::Boolean;
    case QMetaType::SChar:
    case QMetaType::Char:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return Kind::Integer;
    case QMetaType::Float:
    case QMetaType::Double:
        return Kind::Real;
    case QMetaType::QString:
        return Kind::Text;
    case QMetaType::QByteArray:
        return Kind::Data;
    case QMetaType::QDateTime:
        return Kind::Date;
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return Kind::Array;
    case QMetaType::QVariantMap:
        return Kind::Dictionary;
    default:
        return Kind::None;
    }
}

bool PropertyListValue::fits(const QVariant &value, Format format, const Terms &terms)
{
    return Examination(format, terms).fits(value);
}

QVariant PropertyListValue::integer(quint64 number)
{
    const bool isSigned = number <= static_cast<quint64>(std::numeric_limits<qint64>::max());
    return isSigned ? QVariant(static_cast<qint64>(number)) : QVariant(number);
}

std::optional<QDateTime> PropertyListValue::dateAfter2001(double seconds)
{
    const double milliseconds = seconds * 1000;
    if (!(std::abs(milliseconds) <= static_cast<double>(maximumMilliseconds))) // NaN compares as false
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(startOf2001 + std::llround(milliseconds), Qt::UTC);
}

double PropertyListValue::secondsAfter2001(const QDateTime &date)
{
    return static_cast<double>(date.toMSecsSinceEpoch() - startOf2001) / 1000;
}

std::optional<QString> PropertyListValue::fromUtf8(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder.decode(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

QString PropertyListValue::tooDeep()
{
    return QString("it nests deeper than %1 levels").arg(PropertyList::maximumDepth);
}

QString PropertyListValue::tooMany(const Terms &terms)
{
    return QString("it holds more than %1 values").arg(terms.nodes);
}

} // namespace dozely
