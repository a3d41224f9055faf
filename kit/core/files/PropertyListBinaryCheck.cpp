// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyListCheck_p.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <QByteArrayView>
#include <QtEndian>

#include <vector>

namespace
{
/// Walks a binary list from its top object the way its parser will, objects that are referred to twice twice.
class BinaryWalker
{
public:
    explicit BinaryWalker(QByteArrayView data) : m_data(data) {}

    QString check()
    {
        if (m_data.size() < headerSize + trailerSize)
            return "It is cut off.";
        const QByteArrayView trailer = m_data.last(trailerSize);
        m_offsetWidth = static_cast<quint8>(trailer[6]);
        m_referenceWidth = static_cast<quint8>(trailer[7]);
        m_objects = qFromBigEndian<quint64>(trailer.data() + 8);
        const auto top = qFromBigEndian<quint64>(trailer.data() + 16);
        m_table = qFromBigEndian<quint64>(trailer.data() + 24);
        const auto end = static_cast<quint64>(m_data.size() - trailerSize);
        if (m_offsetWidth < 1 || m_offsetWidth > 8 || m_referenceWidth < 1 || m_referenceWidth > 8)
            return "Its trailer is damaged.";
        // Dividing, so that a huge number cannot wrap around.
        if (m_objects == 0 || top >= m_objects || m_table < headerSize || m_table > end ||
            m_objects > (end - m_table) / m_offsetWidth)
            return "Its table of objects is damaged.";
        if (m_objects > static_cast<quint64>(PropertyList::maximumNodes))
            return PropertyListCheck::tooMany();
        m_onTheWay.assign(m_objects, false);
        return object(top, 0);
    }

private:
    static constexpr qsizetype headerSize = 8;
    static constexpr qsizetype trailerSize = 32;
    /// Bytes of texts and data after unfolding: each reference to a text makes a copy of it.
    static constexpr quint64 maximumUnfoldedBytes = 16 * PropertyList::maximumSize;

    quint64 number(quint64 at, quint64 width) const
    {
        quint64 value = 0;
        for (quint64 i = 0; i < width; ++i)
            value = value << 8 | byte(at + i);
        return value;
    }

    quint8 byte(quint64 at) const { return static_cast<quint8>(m_data[static_cast<qsizetype>(at)]); }

    /// Recursion is bounded by the depth limit. `depth` counts the containers around this object.
    QString object(quint64 index, int depth)
    {
        if (index >= m_objects)
            return "It refers to an object that it does not hold.";
        if (++m_nodes > PropertyList::maximumNodes)
            return PropertyListCheck::tooMany();
        if (m_onTheWay[index])
            return "A container in it holds itself.";
        quint64 at = number(m_table + index * m_offsetWidth, m_offsetWidth);
        if (at < headerSize || at >= m_table)
            return outside();
        const quint8 marker = byte(at++);
        const int type = marker >> 4;
        quint64 count = marker & 0x0f;
        if (type == 0x4 || type == 0x5 || type == 0x6 || type == 0xa || type == 0xd) {
            if (count == 0x0f && !longCount(at, count))
                return "A length in it is damaged.";
        }
        switch (type) {
        case 0x0: // no value, or a boolean
            return marker == 0x08 || marker == 0x09 ? QString() : unknown();
        case 0x1: // an integer of 2^n bytes
            return count <= 4 ? leaf(at, 1, 1ULL << count) : unknown();
        case 0x2: // a real of 2^n bytes
            return count == 2 || count == 3 ? leaf(at, 1, 1ULL << count) : unknown();
        case 0x3: // a date
            return marker == 0x33 ? leaf(at, 1, 8) : unknown();
        case 0x4: // bytes
            return leaf(at, count, 1);
        case 0x5:
        case 0x6:
            return text(at, count, type == 0x5 ? 1 : 2);
        case 0xa:
            return container(index, at, count, 0, depth);
        case 0xd:
            return container(index, at, count, count, depth);
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

    QString leaf(quint64 at, quint64 count, quint64 width)
    {
        if (count > (m_table - at) / width)
            return outside();
        m_bytes += count * width;
        return m_bytes > maximumUnfoldedBytes ? QString("It unfolds to too many bytes.") : QString();
    }

    QString text(quint64 at, quint64 count, quint64 width)
    {
        QString refusal = leaf(at, count, width);
        if (!refusal.isEmpty())
            return refusal;
        for (quint64 i = 0; i < count; ++i) {
            // The parser takes it for the end of the text; two different keys would become the same one.
            if (number(at + i * width, width) == 0)
                return "A text in it holds a NUL character.";
        }
        return {};
    }

    QString container(quint64 index, quint64 at, quint64 count, quint64 keys, int depth)
    {
        if (depth >= PropertyList::maximumDepth)
            return PropertyListCheck::tooDeep();
        if (count > (m_table - at) / m_referenceWidth || keys > (m_table - at) / m_referenceWidth - count)
            return outside();
        m_onTheWay[index] = true;
        for (quint64 i = 0; i < count + keys; ++i) {
            const quint64 member = number(at + i * m_referenceWidth, m_referenceWidth);
            if (i < keys && !isText(member))
                return "A key in it is not a text.";
            QString refusal = object(member, depth + 1);
            if (!refusal.isEmpty())
                return refusal;
        }
        m_onTheWay[index] = false;
        return {};
    }

    bool isText(quint64 index) const
    {
        if (index >= m_objects)
            return false;
        const quint64 at = number(m_table + index * m_offsetWidth, m_offsetWidth);
        return at >= headerSize && at < m_table && (byte(at) >> 4 == 0x5 || byte(at) >> 4 == 0x6);
    }

    static QString outside() { return "An object in it reaches beyond its end."; }
    static QString unknown() { return "It holds a value of an unknown kind."; }

    QByteArrayView m_data;
    quint64 m_offsetWidth = 0;
    quint64 m_referenceWidth = 0;
    quint64 m_objects = 0;
    quint64 m_table = 0;
    int m_nodes = 0;
    quint64 m_bytes = 0;
    std::vector<bool> m_onTheWay;
};
} // namespace

QString PropertyListCheck::binary(const QByteArray &data)
{
    return BinaryWalker(data).check();
}
