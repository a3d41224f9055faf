// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyListXmlLeaf_p.h"

#include "DozelyKit/core/files/PropertyListValue_p.h"

#include <QStringList>

#include <charconv>

namespace dozely
{

namespace
{
QVariant truth(bool value, QStringView content)
{
    return content.isEmpty() ? QVariant(value) : QVariant();
}

/// Signed or unsigned, 64 bits, decimal or hexadecimal.
QVariant integer(QStringView text)
{
    const bool isNegative = text.startsWith(u'-');
    if (isNegative || text.startsWith(u'+'))
        text = text.sliced(1);
    const bool isHex = text.startsWith(u"0x") || text.startsWith(u"0X");
    if (isHex)
        text = text.sliced(2);
    bool isNumber = !text.isEmpty() && text[0].isLetterOrNumber(); // not a second sign
    const quint64 number = isNumber ? text.toULongLong(&isNumber, isHex ? 16 : 10) : 0;
    constexpr quint64 lowest = 1ULL << 63;
    if (!isNumber || (isNegative && number > lowest))
        return {};
    return isNegative ? QVariant(static_cast<qint64>(0 - number)) : PropertyListValue::integer(number);
}

/// As C writes them, "nan" and "infinity" among them.
QVariant real(const QString &text)
{
    const bool hasPlus = text.startsWith('+') && !text.startsWith("+-");
    const QByteArray digits = text.mid(hasPlus ? 1 : 0).toUtf8();
    double number = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number);
    return error == std::errc() && end == digits.end() ? QVariant(number) : QVariant();
}

/// ISO 8601; UTC where it names no zone.
QVariant date(const QString &text)
{
    constexpr qsizetype withoutZone = 19; // yyyy-MM-ddTHH:mm:ss
    const QDateTime date = QDateTime::fromString(text.size() == withoutZone ? text + 'Z' : text, Qt::ISODate);
    if (!date.isValid() || date.timeSpec() == Qt::LocalTime)
        return {};
    // The offset of a zone may lead out of the years that can be written.
    return PropertyListValue::fits(date, PropertyList::Format::Xml) ? QVariant(date.toUTC()) : QVariant();
}

/// Base64, with blanks anywhere and with or without the padding at its end.
QVariant data(QString text)
{
    text.removeIf(PropertyListXmlLeaf::isBlank);
    if (text.size() % 4 == 1) // six bits are no byte
        return {};
    const auto decoded =
        QByteArray::fromBase64Encoding(text.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? QVariant(decoded.decoded) : QVariant();
}
} // namespace

bool PropertyListXmlLeaf::isBlank(QChar c)
{
    return c == ' ' || c == '\t' || c == '\n';
}

bool PropertyListXmlLeaf::isName(QStringView name)
{
    static const QStringList names{"true", "false", "integer", "real", "string", "date", "data"};
    return names.contains(name);
}

QVariant PropertyListXmlLeaf::read(QStringView name, const QString &content)
{
    const QString trimmed = content.trimmed();
    if (name == u"string")
        return content;
    if (name == u"true" || name == u"false")
        return truth(name == u"true", trimmed);
    if (name == u"integer")
        return integer(trimmed);
    if (name == u"real")
        return real(trimmed);
    if (name == u"date")
        return date(trimmed);
    return data(content);
}

} // namespace dozely
