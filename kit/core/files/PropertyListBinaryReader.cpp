// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyListBinary_p.h"
#include "DozelyKit/core/files/PropertyListValue_p.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <vector>

namespace dozely
{

namespace
{
/// Reads from the top object down, objects that are referred to twice twice. An invalid variant stands for a
/// refusal, and m_refusal says why.
class BinaryReader
{
public:
    BinaryReader(QByteArrayView data, const PropertyList::Terms &terms) : m_data(data), m_terms(terms) {}

    Result<QVariant> read()
    {
        const QVariant value = top();
        if (!value.isValid())
            return Error{m_refusal};
        return value;
    }

private:
    static constexpr qsizetype headerSize = 8;
    static constexpr qsizetype trailerSize = 32;

    QVariant top()
    {
        if (m_data.size() < headerSize + trailerSize)
            return refuse("it is cut off");
        const QByteArrayView trailer = m_data.last(trailerSize);
        m_offsetWidth = static_cast<quint8>(trailer[6]);
        m_referenceWidth = static_cast<quint8>(trailer[7]);
        m_objects = qFromBigEndian<quint64>(trailer.data() + 8);
        const auto top = qFromBigEndian<quint64>(trailer.data() + 16);
        m_table = qFromBigEndian<quint64>(trailer.data() + 24);
        const auto end = static_cast<quint64>(m_data.size() - trailerSize);
        if (m_offsetWidth < 1 || m_offsetWidth > 8 || m_referenceWidth < 1 || m_referenceWidth > 8)
            return refuse("its trailer is damaged");
        // Dividing, so that a huge number cannot wrap around.
        if (m_objects == 0 || top >= m_objects || m_table < headerSize || m_table > end ||
            m_objects > (end - m_table) / m_offsetWidth)
            return refuse("its table of objects is damaged");
        if (m_objects > static_cast<quint64>(m_terms.nodes))
            return refuse(PropertyListValue::tooMany(m_terms));
        m_onTheWay.assign(m_objects, false);
        return object(top, 0);
    }

    QVariant refuse(const QString &why)
    {
        if (m_refusal.isEmpty())
            m_refusal = why;
        return {};
    }

    quint8 byte(quint64 at) const { return static_cast<quint8>(m_data[static_cast<qsizetype>(at)]); }

    /// Of an integer wider than eight bytes the last eight.
    quint64 number(quint64 at, quint64 width) const
    {
        quint64 value = 0;
        for (quint64 i = 0; i < width; ++i)
            value = value << 8 | byte(at + i);
        return value;
    }

    /// Recursion is bounded by the depth limit. `depth` counts the containers around this object.
    QVariant object(quint64 index, int depth)
    {
        if (index >= m_objects)
            return refuse("it refers to an object that it does not hold");
        if (++m_nodes > m_terms.nodes)
            return refuse(PropertyListValue::tooMany(m_terms));
        if (m_onTheWay[index])
            return refuse("a container in it holds itself");
        quint64 at = number(m_table + index * m_offsetWidth, m_offsetWidth);
        if (at < headerSize || at >= m_table)
            return outside();
        const quint8 marker = byte(at++);
        const int type = marker >> 4;
        quint64 count = marker & 0x0f;
        const bool counts = type == 0x4 || type == 0x5 || type == 0x6 || type == 0xa || type == 0xd;
        if (counts && count == 0x0f && !longCount(at, count))
            return refuse("a length in it is damaged");
        switch (type) {
        case 0x0: // no value, or a boolean
            return marker == 0x08 || marker == 0x09 ? QVariant(marker == 0x09) : unknown();
        case 0x1:
            return count <= 4 ? integer(at, 1ULL << count) : unknown();
        case 0x2:
            return count == 2 || count == 3 ? real(at, 1ULL << count) : unknown();
        case 0x3:
            return marker == 0x33 ? date(at) : unknown();
        case 0x4:
            return lies(at, count, 1) ? m_data.sliced(qsizetype(at), qsizetype(count)).toByteArray()
                                      : QVariant();
        case 0x5:
            return narrowText(at, count);
        case 0x6:
            return wideText(at, count);
        case 0xa:
        case 0xd:
            return container(index, at, count, type == 0xd, depth);
        default:
            return unknown();
        }
    }

    /// A count of 15 or more follows as an integer object.
    bool longCount(quint64 &at, quint64 &count) const
    {
        if (at >= m_table || (byte(at) & 0xfc) != 0x10) // 1, 2, 4 or 8 bytes
            return false;
        const quint64 width = 1ULL << (byte(at) & 0x03);
        ++at;
        if (m_table - at < width)
            return false;
        count = number(at, width);
        at += width;
        return true;
    }

    /// Whether `count` units of `width` bytes from here on lie inside, and are not too many when unfolded.
    bool lies(quint64 at, quint64 count, quint64 width)
    {
        if (count > (m_table - at) / width) {
            outside();
            return false;
        }
        // A list may refer to one text thousands of times, and each reference makes a copy of it.
        m_bytes += count * width;
        if (m_bytes > static_cast<quint64>(m_terms.unfoldedBytes))
            refuse("it unfolds to too many bytes");
        return m_refusal.isEmpty();
    }

    /// Up to four bytes have no sign, eight have one, and sixteen are there for what is larger.
    QVariant integer(quint64 at, quint64 width)
    {
        if (!lies(at, 1, width))
            return {};
        const quint64 value = number(at, width);
        if (width < 8)
            return PropertyListValue::integer(value);
        const auto withSign = static_cast<qint64>(value);
        if (width == 8)
            return withSign;
        const quint64 high = number(at, 8);
        if (high == 0)
            return PropertyListValue::integer(value);
        return high == ~0ULL && withSign < 0 ? QVariant(withSign)
                                             : refuse("an integer in it has more than 64 bits");
    }

    QVariant real(quint64 at, quint64 width)
    {
        if (!lies(at, 1, width))
            return {};
        const quint64 bits = number(at, width);
        return width == 4 ? static_cast<double>(std::bit_cast<float>(static_cast<quint32>(bits)))
                          : std::bit_cast<double>(bits);
    }

    QVariant date(quint64 at)
    {
        if (!lies(at, 1, 8))
            return {};
        const auto date = PropertyListValue::dateAfter2001(std::bit_cast<double>(number(at, 8)));
        if (date)
            return *date;
        return m_terms.keepsDamagedDates ? QVariant::fromValue(PropertyList::DamagedDate{
                                               m_data.sliced(qsizetype(at), 8).toByteArray()})
                                         : refuse("a date in it is out of range");
    }

    QVariant narrowText(quint64 at, quint64 count)
    {
        if (!lies(at, count, 1))
            return {};
        return text(PropertyListValue::fromUtf8(m_data.sliced(qsizetype(at), qsizetype(count))));
    }

    QVariant wideText(quint64 at, quint64 count)
    {
        if (!lies(at, count, 2))
            return {};
        QString wide(qsizetype(count), Qt::Uninitialized);
        for (quint64 i = 0; i < count; ++i)
            wide[qsizetype(i)] = QChar(static_cast<char16_t>(number(at + 2 * i, 2)));
        return text(wide.isValidUtf16() ? std::optional(wide) : std::nullopt);
    }

    QVariant text(const std::optional<QString> &text)
    {
        if (!text)
            return refuse("a text in it is no Unicode");
        // Whoever takes it for the end of the text sees the same key twice in a dictionary.
        return text->contains(QChar(0)) ? refuse("a text in it holds a NUL character") : QVariant(*text);
    }

    /// The keys of a dictionary stand before its values.
    QVariant container(quint64 index, quint64 at, quint64 count, bool hasKeys, int depth)
    {
        if (depth >= PropertyList::maximumDepth)
            return refuse(PropertyListValue::tooDeep());
        const quint64 room = (m_table - at) / m_referenceWidth;
        if (count > room || (hasKeys && count > room - count))
            return outside();
        m_onTheWay[index] = true;
        QVariantList keys;
        for (quint64 i = 0; hasKeys && i < count; ++i) {
            keys += member(at, i, depth);
            if (keys.constLast().typeId() != QMetaType::QString)
                return refuse("a key in it is not a text");
        }
        QVariantList values;
        for (quint64 i = 0; i < count; ++i) {
            values += member(at, hasKeys ? count + i : i, depth);
            if (!values.constLast().isValid())
                return {};
        }
        m_onTheWay[index] = false;
        if (!hasKeys)
            return values;
        QVariantMap map;
        for (qsizetype i = 0; i < keys.size(); ++i)
            map.insert(keys[i].toString(), values[i]);
        return map;
    }

    QVariant member(quint64 at, quint64 i, int depth)
    {
        return object(number(at + i * m_referenceWidth, m_referenceWidth), depth + 1);
    }

    QVariant outside() { return refuse("an object in it reaches beyond its end"); }
    QVariant unknown() { return refuse("it holds a value of an unknown kind"); }

    QByteArrayView m_data;
    const PropertyList::Terms &m_terms;
    QString m_refusal;
    quint64 m_offsetWidth = 0;
    quint64 m_referenceWidth = 0;
    quint64 m_objects = 0;
    quint64 m_table = 0;
    int m_nodes = 0;
    quint64 m_bytes = 0;
    std::vector<bool> m_onTheWay;
};
} // namespace

Result<QVariant> PropertyListBinary::read(const QByteArray &data, const PropertyList::Terms &terms)
{
    return BinaryReader(data, terms).read();
}

} // namespace dozely
