// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyListBinary_p.h"
#include "DozelyKit/core/files/PropertyListValue_p.h"

#include <QHash>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace dozely
{

namespace
{
using PropertyListValue::Kind;

QByteArray bigEndian(quint64 number, int width)
{
    QByteArray bytes;
    for (int i = width - 1; i >= 0; --i)
        bytes += i < 8 ? static_cast<char>(number >> (8 * i)) : '\0';
    return bytes;
}

/// How many bytes `number` needs.
int widthOf(quint64 number)
{
    return std::max(1, (static_cast<int>(std::bit_width(number)) + 7) / 8);
}

/// Numbers the objects from the root down and writes each different text, number or date once.
class BinaryWriter
{
public:
    QByteArray write(const QVariant &root)
    {
        add(root);
        const int referenceWidth = widthOf(static_cast<quint64>(m_objects.size()));
        QByteArray list = "bplist00";
        QList<qsizetype> offsets;
        for (const Object &object : std::as_const(m_objects)) {
            offsets += list.size();
            list += object.bytes;
            for (const quint64 member : object.members)
                list += bigEndian(member, referenceWidth);
        }
        const qsizetype table = list.size();
        const int offsetWidth = widthOf(static_cast<quint64>(table));
        for (const qsizetype offset : std::as_const(offsets))
            list += bigEndian(static_cast<quint64>(offset), offsetWidth);
        return list + QByteArray(6, '\0') + static_cast<char>(offsetWidth) +
               static_cast<char>(referenceWidth) + bigEndian(static_cast<quint64>(m_objects.size()), 8) +
               bigEndian(0, 8) + bigEndian(static_cast<quint64>(table), 8);
    }

private:
    struct Object {
        QByteArray bytes;
        QList<quint64> members; ///< behind the bytes, as numbers of objects
    };

    /// Returns the number of the value's object.
    quint64 add(const QVariant &value)
    {
        const Kind kind = PropertyListValue::kindOf(value);
        if (kind != Kind::Array && kind != Kind::Dictionary)
            return leaf(encoded(kind, value));
        const auto number = static_cast<quint64>(m_objects.size());
        m_objects += Object{};
        QList<quint64> members;
        QList<quint64> values;
        qsizetype count = 0;
        if (kind == Kind::Array) {
            const QVariantList list = value.toList();
            count = list.size();
            for (const QVariant &item : list)
                members += add(item);
        } else {
            const QVariantMap map = value.toMap();
            count = map.size();
            for (auto entry = map.begin(); entry != map.end(); ++entry) {
                members += leaf(text(entry.key()));
                values += add(entry.value());
            }
        }
        m_objects[static_cast<qsizetype>(number)] = {marked(kind == Kind::Array ? 0xa0 : 0xd0, count),
                                                     members + values};
        return number;
    }

    quint64 leaf(const QByteArray &bytes)
    {
        const auto known = m_leaves.constFind(bytes);
        if (known != m_leaves.constEnd())
            return *known;
        const auto number = static_cast<quint64>(m_objects.size());
        m_objects += Object{bytes, {}};
        m_leaves.insert(bytes, number);
        return number;
    }

    static QByteArray encoded(Kind kind, const QVariant &value)
    {
        switch (kind) {
        case Kind::Boolean:
            return QByteArray(1, value.toBool() ? '\x09' : '\x08');
        case Kind::Integer:
            return value.typeId() == QMetaType::ULong || value.typeId() == QMetaType::ULongLong
                       ? integer(value.toULongLong())
                       : integer(value.toLongLong());
        case Kind::Real:
            return real(value.toDouble());
        case Kind::Text:
            return text(value.toString());
        case Kind::Data:
            return marked(0x40, value.toByteArray().size()) + value.toByteArray();
        case Kind::Date:
            return '\x33' +
                   bigEndian(std::bit_cast<quint64>(PropertyListValue::secondsAfter2001(value.toDateTime())),
                             8);
        case Kind::DamagedDate:
            return '\x33' + value.value<PropertyList::DamagedDate>().content;
        default:
            return {};
        }
    }

    /// One, two or four bytes have no sign, eight have one; sixteen are for what is larger.
    static QByteArray integer(quint64 number)
    {
        constexpr quint64 signBit = 1ULL << 63;
        const int power = number < 0x100           ? 0
                          : number < 0x1'0000      ? 1
                          : number < 0x1'0000'0000 ? 2
                          : number < signBit       ? 3
                                                   : 4;
        return static_cast<char>(0x10 | power) + bigEndian(number, 1 << power);
    }

    static QByteArray integer(qint64 number)
    {
        return number < 0 ? '\x13' + bigEndian(static_cast<quint64>(number), 8)
                          : integer(static_cast<quint64>(number));
    }

    /// Four bytes where they tell the same number.
    static QByteArray real(double number)
    {
        if (std::abs(number) <= std::numeric_limits<float>::max()) {
            const auto narrow = static_cast<float>(number);
            if (static_cast<double>(narrow) == number)
                return '\x22' + bigEndian(std::bit_cast<quint32>(narrow), 4);
        }
        return '\x23' + bigEndian(std::bit_cast<quint64>(number), 8);
    }

    /// A byte a character where all are of ASCII, else two.
    static QByteArray text(const QString &text)
    {
        const bool narrow = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
        QByteArray bytes = marked(narrow ? 0x50 : 0x60, text.size());
        for (const QChar c : text)
            bytes += bigEndian(c.unicode(), narrow ? 1 : 2);
        return bytes;
    }

    /// The byte that tells the kind and a count, and the count in an object of its own when it is large.
    static QByteArray marked(int kind, qsizetype count)
    {
        const auto number = static_cast<quint64>(count);
        return count < 0x0f ? QByteArray(1, static_cast<char>(kind | count))
                            : static_cast<char>(kind | 0x0f) + integer(number);
    }

    QList<Object> m_objects;
    QHash<QByteArray, quint64> m_leaves;
};
} // namespace

QByteArray PropertyListBinary::write(const QVariant &value)
{
    return BinaryWriter().write(value);
}

} // namespace dozely
