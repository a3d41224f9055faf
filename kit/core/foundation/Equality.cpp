// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Equality.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace dozely
{

namespace
{
enum class Kind { Signed, Unsigned, Fraction, List, Dictionary, Object, Other };

Kind kindOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return Kind::Signed;
    case QMetaType::Bool:
    case QMetaType::UChar:
    case QMetaType::UShort:
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return Kind::Unsigned;
    case QMetaType::Float:
    case QMetaType::Double:
        return Kind::Fraction;
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return Kind::List;
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return Kind::Dictionary;
    default:
        return value.metaType().flags() & QMetaType::PointerToQObject ? Kind::Object : Kind::Other;
    }
}

bool isNumber(Kind kind)
{
    return kind == Kind::Signed || kind == Kind::Unsigned || kind == Kind::Fraction;
}

// Exactly: as a fraction, 2^53 and 2^53 + 1 would be the same.
bool isWholeEqualTo(Kind kind, const QVariant &whole, double fraction)
{
    constexpr double limit = 18446744073709551616.0; // 2^64
    if (kind == Kind::Signed && fraction < 0)
        return fraction >= -limit / 2 && std::trunc(fraction) == fraction &&
               static_cast<qint64>(fraction) == whole.toLongLong();
    return fraction >= 0 && fraction < limit && std::trunc(fraction) == fraction &&
           (kind == Kind::Unsigned || whole.toLongLong() >= 0) &&
           static_cast<quint64>(fraction) == whole.toULongLong();
}

bool areNumbersEqual(Kind kind, const QVariant &one, Kind otherKind, const QVariant &other)
{
    if (kind == Kind::Fraction && otherKind == Kind::Fraction)
        return one.toDouble() == other.toDouble() ||
               (std::isnan(one.toDouble()) && std::isnan(other.toDouble()));
    if (kind == Kind::Fraction)
        return isWholeEqualTo(otherKind, other, one.toDouble());
    if (otherKind == Kind::Fraction)
        return isWholeEqualTo(kind, one, other.toDouble());
    const bool areOfOneSign = (kind == Kind::Unsigned || one.toLongLong() >= 0) ==
                              (otherKind == Kind::Unsigned || other.toLongLong() >= 0);
    return areOfOneSign && one.toULongLong() == other.toULongLong();
}

bool areEntriesEqual(const QVariantMap &one, const QVariantMap &other)
{
    return std::equal(one.keyValueBegin(), one.keyValueEnd(), other.keyValueBegin(), other.keyValueEnd(),
                      [](const auto &entry, const auto &otherEntry) {
                          return entry.first == otherEntry.first && isEqual(entry.second, otherEntry.second);
                      });
}
} // namespace

bool isEqual(const QVariant &one, const QVariant &other)
{
    const Kind kind = kindOf(one);
    const Kind otherKind = kindOf(other);
    if (isNumber(kind) && isNumber(otherKind))
        return areNumbersEqual(kind, one, otherKind, other);
    if (kind != otherKind)
        return false;
    switch (kind) {
    case Kind::List: {
        const QVariantList list = one.toList();
        const QVariantList otherList = other.toList();
        return std::equal(list.begin(), list.end(), otherList.begin(), otherList.end(), isEqual);
    }
    case Kind::Dictionary:
        return areEntriesEqual(one.toMap(), other.toMap());
    case Kind::Object: // an object may be known by its own class to one, by a base class to the other
        return one.value<QObject *>() == other.value<QObject *>();
    default: // Qt would convert one of them
        return one.metaType() == other.metaType() && one == other;
    }
}

} // namespace dozely
