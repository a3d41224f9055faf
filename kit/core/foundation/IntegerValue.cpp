// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/IntegerValue.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace dozely
{

namespace
{
bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

// Saturates at the ends of 64 bits.
qint64 longIntegerValue(const QString &text)
{
    constexpr qint64 highest = std::numeric_limits<qint64>::max();
    constexpr qint64 lowest = std::numeric_limits<qint64>::min();
    auto next = text.cbegin();
    const auto end = text.cend();
    while (next != end && next->isSpace())
        ++next;
    const bool negative = next != end && *next == u'-';
    if (next != end && (*next == u'-' || *next == u'+'))
        ++next;
    qint64 value = 0; // grows away from 0 in the direction of its sign
    for (; next != end && isDigit(*next); ++next) {
        const int digit = next->unicode() - u'0';
        if (negative ? value < (lowest + digit) / 10 : value > (highest - digit) / 10)
            return negative ? lowest : highest;
        value = value * 10 + (negative ? -digit : digit);
    }
    return value;
}

// Cuts the fraction. What 64 bits cannot hold saturates; no number at all is 0.
qint64 truncated(double number)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (std::isnan(number))
        return 0;
    if (number >= limit)
        return std::numeric_limits<qint64>::max();
    if (number < -limit)
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(number);
}
} // namespace

qint32 integerValue(const QString &text)
{
    return static_cast<qint32>(std::clamp<qint64>(longIntegerValue(text), std::numeric_limits<qint32>::min(),
                                                  std::numeric_limits<qint32>::max()));
}

qint32 integerValue(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString)
        return integerValue(value.toString());
    return static_cast<qint32>(longIntegerValue(value));
}

qint64 longIntegerValue(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return longIntegerValue(value.toString());
    case QMetaType::Double:
    case QMetaType::Float:
        return truncated(value.toDouble());
    case QMetaType::Bool:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return static_cast<qint64>(value.toULongLong());
    default:
        return 0;
    }
}

} // namespace dozely
