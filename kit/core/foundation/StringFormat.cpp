// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/StringFormat.h"

#include <QObject>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <locale.h>

using namespace dozely;

namespace
{
// One conversion of a format: %[position$][flags][width][.precision][modifier]type
struct Conversion {
    QByteArray flags;
    int width = 0;
    int precision = -1; // -1: not given
    int bits = 32;      // of an integer
    char type = 0;

    bool isPlain() const { return flags.isEmpty() && width == 0 && precision < 0; }
};

// Width and precision are cut here: no text of the system needs more, and a slip in a translated format must
// not fill the memory.
constexpr int widest = 300;

// Room for what the arguments of a usual message add to its format.
constexpr qsizetype usualGrowth = 64;

QString nothing()
{
    return QStringLiteral("(null)");
}

QString padded(const QString &text, const Conversion &conversion)
{
    if (conversion.isPlain())
        return text;
    const QString cut = conversion.precision >= 0 ? text.left(conversion.precision) : text;
    return conversion.flags.contains('-') ? cut.leftJustified(conversion.width)
                                          : cut.rightJustified(conversion.width);
}

// The argument's bits: a negative number is extended by its sign, a fraction cut. What is no number is 0.
quint64 integerArgument(const QVariant &argument)
{
    switch (argument.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float: {
        constexpr double limit = 9223372036854775808.0; // 2^63
        const double number = argument.toDouble();
        return number >= -limit && number < limit ? static_cast<quint64>(static_cast<qint64>(number)) : 0;
    }
    case QMetaType::QChar:
        return argument.toChar().unicode();
    case QMetaType::QString:
    case QMetaType::QByteArray:
        return 0;
    default:
        return argument.toULongLong();
    }
}

QString integerText(const Conversion &conversion, const QVariant &argument)
{
    const int unused = 64 - conversion.bits;
    const quint64 shifted = integerArgument(argument) << unused;
    const bool isSigned = conversion.type == 'd' || conversion.type == 'i';
    if (isSigned && conversion.isPlain()) // nearly every one, and the log is to cost little
        return QString::number(static_cast<qint64>(shifted) >> unused);
    QByteArray cFormat = '%' + conversion.flags + QByteArray::number(conversion.width);
    if (conversion.precision >= 0)
        cFormat += '.' + QByteArray::number(conversion.precision);
    cFormat += "ll";
    cFormat += conversion.type;
    std::array<char, widest + 32> text{};
    if (isSigned)
        std::snprintf(text.data(), text.size(), cFormat.constData(),
                      static_cast<long long>(static_cast<qint64>(shifted) >> unused));
    else
        std::snprintf(text.data(), text.size(), cFormat.constData(),
                      static_cast<unsigned long long>(shifted >> unused));
    return QString::fromLatin1(text.data());
}

// While it lives, this thread prints numbers with a point, whatever language its user speaks.
class PlainLocale
{
public:
    PlainLocale() : m_former(::uselocale(plain())) {}
    ~PlainLocale() { ::uselocale(m_former); }
    PlainLocale(const PlainLocale &) = delete;
    PlainLocale &operator=(const PlainLocale &) = delete;

private:
    // Null, which changes nothing, when there is no memory for it.
    static locale_t plain()
    {
        static locale_t const locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t m_former;
};

// Not QString::asprintf: it rounds 0.5 up and knows no negative 0.
QString fractionText(const Conversion &conversion, const QVariant &argument)
{
    const bool isNumber =
        argument.typeId() != QMetaType::QString && argument.typeId() != QMetaType::QByteArray;
    const QByteArray cFormat =
        '%' + conversion.flags + QByteArray::number(conversion.width) +
        (conversion.precision >= 0 ? '.' + QByteArray::number(conversion.precision) : QByteArray()) +
        conversion.type;
    constexpr std::size_t mostDigits = 310; // before the point
    std::array<char, mostDigits + widest + 32> text{};
    const PlainLocale locale;
    std::snprintf(text.data(), text.size(), cFormat.constData(), isNumber ? argument.toDouble() : 0.0);
    return QString::fromLatin1(text.data());
}

QString textArgument(const QVariant &argument)
{
    if (argument.typeId() == QMetaType::QByteArray)
        return argument.toByteArray().isNull() ? nothing() : QString::fromUtf8(argument.toByteArray());
    if (argument.metaType() == QMetaType::fromType<const char *>() ||
        argument.metaType() == QMetaType::fromType<char *>()) {
        const char *const text = *static_cast<const char *const *>(argument.constData());
        return text ? QString::fromUtf8(text) : nothing();
    }
    return descriptionOf(argument);
}

QString pointerText(const QVariant &argument)
{
    const bool isPointer = argument.metaType().flags() & (QMetaType::IsPointer | QMetaType::PointerToQObject);
    const void *const pointer = isPointer ? *static_cast<const void *const *>(argument.constData()) : nullptr;
    return QStringLiteral("0x") + QString::number(reinterpret_cast<quintptr>(pointer), 16);
}

QString converted(const Conversion &conversion, const QVariant &argument)
{
    switch (conversion.type) {
    case '@':
        return padded(descriptionOf(argument), conversion);
    case 's':
        return padded(textArgument(argument), conversion);
    case 'c':
        return padded(QChar(static_cast<char16_t>(integerArgument(argument))), conversion);
    case 'p':
        return padded(pointerText(argument), conversion);
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
        return fractionText(conversion, argument);
    default:
        return integerText(conversion, argument);
    }
}

// Reads formats from left to right and hands out the arguments in turn.
class Formatter
{
public:
    Formatter(const QString &format, const QVariantList &arguments) : m_format(format), m_arguments(arguments)
    {
    }

    QString text()
    {
        QString result;
        result.reserve(m_format.size() + usualGrowth);
        qsizetype literal = 0;
        while ((m_next = m_format.indexOf(u'%', m_next)) >= 0) {
            result += QStringView(m_format).mid(literal, m_next - literal);
            result += conversionText();
            literal = m_next;
        }
        return result += QStringView(m_format).mid(literal);
    }

private:
    char16_t peek() const { return m_next < m_format.size() ? m_format.at(m_next).unicode() : u'\0'; }

    bool skip(char16_t character)
    {
        if (peek() != character)
            return false;
        ++m_next;
        return true;
    }

    // -1 when there are no digits.
    int number()
    {
        int value = -1;
        for (; peek() >= u'0' && peek() <= u'9'; ++m_next)
            value = std::min(std::max(value, 0) * 10 + (peek() - u'0'), widest);
        return value;
    }

    int numberOrArgument() { return skip(u'*') ? std::clamp(argument().toInt(), -widest, widest) : number(); }

    QVariant argument() { return m_arguments.value(m_nextArgument++); }

    void readFlags(Conversion &conversion)
    {
        for (; peek() && QStringView(u"-+ #0").contains(QChar(peek())); ++m_next)
            conversion.flags += static_cast<char>(peek());
    }

    void readWidth(Conversion &conversion)
    {
        const int width = numberOrArgument();
        if (width < -1)
            conversion.flags += '-';
        conversion.width = width == -1 ? 0 : std::abs(width);
    }

    void readModifier(Conversion &conversion)
    {
        if (skip(u'h'))
            conversion.bits = skip(u'h') ? 8 : 16;
        else if (skip(u'l')) {
            skip(u'l');
            conversion.bits = 64;
        } else if (skip(u'q') || skip(u'z'))
            conversion.bits = 64;
    }

    // The text of the conversion that begins here. What is no known conversion stands as it is.
    QString conversionText()
    {
        const qsizetype begin = m_next++;
        if (skip(u'%'))
            return QStringLiteral("%");
        Conversion conversion;
        const qsizetype afterPercent = m_next;
        qsizetype position = -1;
        if (const int digits = number(); digits > 0 && skip(u'$'))
            position = digits - 1;
        else
            m_next = afterPercent;
        readFlags(conversion);
        readWidth(conversion);
        if (skip(u'.'))
            conversion.precision = std::max(numberOrArgument(), 0);
        readModifier(conversion);
        if (!peek() || !QStringView(u"diuxXocfFeEgGsp@").contains(QChar(peek())))
            return m_format.mid(begin, m_next - begin);
        conversion.type = static_cast<char>(peek());
        ++m_next;
        return converted(conversion, position >= 0 ? m_arguments.value(position) : argument());
    }

    const QString &m_format;
    const QVariantList &m_arguments;
    qsizetype m_next = 0;
    qsizetype m_nextArgument = 0;
};
} // namespace

QString dozely::stringWithFormat(const QString &format, const QVariantList &arguments)
{
    return Formatter(format, arguments).text();
}

void NSLogText(const QString &message)
{
    const QByteArray line = message.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}
