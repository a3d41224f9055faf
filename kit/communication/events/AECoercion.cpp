// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEDesc.h"
#include "DozelyKit/communication/events/AEMacRoman_p.h"

#include <QLocale>
#include <QStringDecoder>

#include <cmath>
#include <cstring>
#include <limits>
#include <variant>

using namespace dozely;

namespace
{
using Number = std::variant<qint64, double>;

template<class Value>
std::optional<Number> integerOf(const AEDesc &desc)
{
    const auto value = desc.value<Value>();
    return value ? std::optional<Number>(static_cast<qint64>(*value)) : std::nullopt;
}

std::optional<QString> textOf(const AEDesc &desc)
{
    const QByteArray data = desc.data();
    switch (desc.descriptorType()) {
    case typeText:
        return AEMacRoman::decoded(data);
    case typeUTF8Text: {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        QString text = decoder(data);
        return decoder.hasError() ? std::nullopt : std::optional<QString>(text);
    }
    case typeUnicodeText: {
        if (data.size() % static_cast<qsizetype>(sizeof(char16_t)) != 0)
            return {};
        QString text(data.size() / static_cast<qsizetype>(sizeof(char16_t)), Qt::Uninitialized);
        if (!data.isEmpty())
            std::memcpy(text.data(), data.constData(), static_cast<size_t>(data.size()));
        return text;
    }
    default:
        return {};
    }
}

std::optional<Number> numberInText(const QString &text)
{
    bool isNumber = false;
    const qint64 integer = text.trimmed().toLongLong(&isNumber);
    if (isNumber)
        return integer;
    const double real = text.trimmed().toDouble(&isNumber);
    return isNumber ? std::optional<Number>(real) : std::nullopt;
}

std::optional<Number> numberOf(const AEDesc &desc)
{
    switch (desc.descriptorType()) {
    case typeSInt16:
        return integerOf<qint16>(desc);
    case typeSInt32:
        return integerOf<qint32>(desc);
    case typeUInt32:
        return integerOf<quint32>(desc);
    case typeSInt64:
        return integerOf<qint64>(desc);
    case typeIEEE64BitFloatingPoint: {
        const auto value = desc.value<double>();
        return value ? std::optional<Number>(*value) : std::nullopt;
    }
    case typeBoolean: {
        const auto value = desc.value<quint8>();
        return value ? std::optional<Number>(qint64{*value != 0}) : std::nullopt;
    }
    case typeTrue:
        return Number(qint64{1});
    case typeFalse:
        return Number(qint64{0});
    default: {
        const auto text = textOf(desc);
        return text ? numberInText(*text) : std::nullopt;
    }
    }
}

/// The number as a whole one, the nearest; absent beyond 64 bits.
std::optional<qint64> wholeNumber(const Number &number)
{
    if (const auto *integer = std::get_if<qint64>(&number))
        return *integer;
    const double rounded = std::round(std::get<double>(number));
    constexpr double limit = 9223372036854775808.0; // 2 to the power of 63
    return rounded >= -limit && rounded < limit ? std::optional<qint64>(static_cast<qint64>(rounded))
                                                : std::nullopt;
}

template<class Value>
std::optional<AEDesc> asInteger(const AEDesc &desc)
{
    const auto number = numberOf(desc);
    const auto whole = number ? wholeNumber(*number) : std::nullopt;
    if (!whole || *whole < qint64{std::numeric_limits<Value>::min()} ||
        *whole > qint64{std::numeric_limits<Value>::max()})
        return {};
    constexpr DescType type = std::is_same_v<Value, qint16>    ? typeSInt16
                              : std::is_same_v<Value, qint32>  ? typeSInt32
                              : std::is_same_v<Value, quint32> ? typeUInt32
                                                               : typeSInt64;
    return AEDesc::of(type, static_cast<Value>(*whole));
}

std::optional<AEDesc> asReal(const AEDesc &desc)
{
    const auto number = numberOf(desc);
    if (!number)
        return {};
    const auto *integer = std::get_if<qint64>(&*number);
    return AEDesc::of(typeIEEE64BitFloatingPoint,
                      integer ? static_cast<double>(*integer) : std::get<double>(*number));
}

/// Only what is a truth value already, or the numbers 0 and 1.
std::optional<AEDesc> asBoolean(const AEDesc &desc)
{
    const auto number = textOf(desc) ? std::nullopt : numberOf(desc);
    const auto *integer = number ? std::get_if<qint64>(&*number) : nullptr;
    if (!integer || *integer < 0 || *integer > 1)
        return {};
    return AEDesc::of(typeBoolean, static_cast<quint8>(*integer));
}

/// Four characters for a code, digits for a number, text for text.
std::optional<QString> written(const AEDesc &desc)
{
    const DescType type = desc.descriptorType();
    if (const auto text = textOf(desc))
        return text;
    if (type == typeType || type == typeEnumerated) {
        const auto code = desc.value<OSType>();
        return code ? std::optional<QString>(NSFileTypeForHFSTypeCode(*code).mid(1, 4)) : std::nullopt;
    }
    if (type == typeBoolean || type == typeTrue || type == typeFalse) {
        const auto truth = numberOf(desc);
        return truth ? std::optional<QString>(std::get<qint64>(*truth) != 0 ? "true" : "false")
                     : std::nullopt;
    }
    const auto number = numberOf(desc);
    if (!number)
        return {};
    const auto *integer = std::get_if<qint64>(&*number);
    return integer ? QString::number(*integer)
                   : QString::number(std::get<double>(*number), 'g', QLocale::FloatingPointShortest);
}

std::optional<AEDesc> asText(const AEDesc &desc, DescType type)
{
    const auto text = written(desc);
    if (!text)
        return {};
    if (type == typeText)
        return AEDesc(type, AEMacRoman::encoded(*text));
    if (type == typeUTF8Text)
        return AEDesc(type, text->toUtf8());
    return AEDesc(type, QByteArray(reinterpret_cast<const char *>(text->utf16()),
                                   text->size() * static_cast<qsizetype>(sizeof(char16_t))));
}

std::optional<AEDesc> asCode(const AEDesc &desc, DescType type)
{
    const DescType from = desc.descriptorType();
    std::optional<OSType> code;
    if (from == typeType || from == typeEnumerated)
        code = desc.value<OSType>();
    else if (const auto text = textOf(desc))
        code = codeOfCharacters(*text);
    return code ? std::optional<AEDesc>(AEDesc::of(type, *code)) : std::nullopt;
}
} // namespace

std::optional<AEDesc> AEDesc::coerced(DescType type) const
{
    if (type == m_type || type == typeWildCard)
        return *this;
    if (isContainer() || isContainerType(type) || !hasData())
        return {};
    switch (type) {
    case typeSInt16:
        return asInteger<qint16>(*this);
    case typeSInt32:
        return asInteger<qint32>(*this);
    case typeUInt32:
        return asInteger<quint32>(*this);
    case typeSInt64:
        return asInteger<qint64>(*this);
    case typeIEEE64BitFloatingPoint:
        return asReal(*this);
    case typeBoolean:
        return asBoolean(*this);
    case typeText:
    case typeUTF8Text:
    case typeUnicodeText:
        return asText(*this, type);
    case typeType:
    case typeEnumerated:
        return asCode(*this, type);
    case typeData:
        return AEDesc(typeData, m_data);
    default:
        return {};
    }
}
