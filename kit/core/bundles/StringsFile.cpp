// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/StringsFile_p.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <QStringDecoder>

#include <optional>

namespace dozely
{

using namespace dozely;

namespace
{
using Table = QHash<QString, QString>;

/// Reads the classic format from the first character to the last; the position only ever moves forward.
class StringsParser
{
public:
    explicit StringsParser(QStringView text) : m_text(text) {}

    std::optional<Table> parse()
    {
        Table table;
        while (skipBlanks() && m_at < m_text.size()) {
            const auto key = word();
            if (!key || !skipBlanks() || !take(u'='))
                return std::nullopt;
            const auto value = skipBlanks() ? word() : std::nullopt;
            if (!value || !skipBlanks() || !take(u';'))
                return std::nullopt;
            table.insert(*key, *value);
        }
        return m_at == m_text.size() ? std::optional(table) : std::nullopt;
    }

    /// Where reading stopped, from 1.
    qsizetype line() const { return m_text.first(m_at).count(u'\n') + 1; }

private:
    bool take(char16_t expected)
    {
        if (m_at == m_text.size() || m_text[m_at] != expected)
            return false;
        ++m_at;
        return true;
    }

    /// Skips blanks and comments; false inside a comment that does not end.
    bool skipBlanks()
    {
        while (m_at < m_text.size()) {
            const QStringView rest = m_text.sliced(m_at);
            if (rest.front().isSpace()) {
                ++m_at;
            } else if (rest.startsWith(u"//")) {
                const qsizetype end = rest.indexOf(u'\n');
                m_at = end < 0 ? m_text.size() : m_at + end;
            } else if (rest.startsWith(u"/*")) {
                const qsizetype end = rest.indexOf(u"*/", 2);
                if (end < 0)
                    return false;
                m_at += end + 2;
            } else {
                return true;
            }
        }
        return true;
    }

    std::optional<QString> word() { return take(u'"') ? quoted() : bare(); }

    std::optional<QString> bare()
    {
        const qsizetype begin = m_at;
        while (m_at < m_text.size() &&
               (m_text[m_at].isLetterOrNumber() || QStringView(u"_.-/$").contains(m_text[m_at])))
            ++m_at;
        return m_at > begin ? std::optional(m_text.sliced(begin, m_at - begin).toString()) : std::nullopt;
    }

    /// The rest of a text whose opening quote has been read, with its closing one.
    std::optional<QString> quoted()
    {
        QString result;
        while (m_at < m_text.size()) {
            const QChar c = m_text[m_at++];
            if (c == u'"')
                return result;
            if (c != u'\\') {
                result += c;
            } else if (!escape(result)) {
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

    /// What follows a backslash. A character without a meaning of its own stands for itself.
    bool escape(QString &result)
    {
        if (m_at == m_text.size())
            return false;
        const char16_t c = m_text[m_at++].unicode();
        if (c == u'u' || c == u'U')
            return codeUnit(result);
        result += c == u'n' ? QChar(u'\n') : c == u'r' ? QChar(u'\r') : c == u't' ? QChar(u'\t') : QChar(c);
        return true;
    }

    bool codeUnit(QString &result)
    {
        constexpr qsizetype digits = 4;
        if (m_text.size() - m_at < digits)
            return false;
        char16_t code = 0;
        for (const QChar digit : m_text.sliced(m_at, digits)) {
            const qsizetype value = QStringView(u"0123456789abcdef").indexOf(digit.toLower());
            if (value < 0)
                return false;
            code = static_cast<char16_t>(code << 4 | value);
        }
        m_at += digits;
        result += QChar(code);
        return true;
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

Result<Table> tableOf(const QVariant &list)
{
    if (list.typeId() != QMetaType::QVariantMap)
        return Error{"Its root is not a dictionary"};
    Table table;
    const QVariantMap map = list.toMap();
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        if (entry.value().typeId() != QMetaType::QString)
            return Error{QString("\"%1\" is not a text").arg(entry.key())};
        table.insert(entry.key(), entry.value().toString());
    }
    return table;
}
} // namespace

Result<QHash<QString, QString>> StringsFile::parse(const QByteArray &data)
{
    // A table is read into memory whole: without a limit a huge file would fill it.
    if (data.size() > PropertyList::maximumSize)
        return Error{QString("It is larger than %1 bytes").arg(PropertyList::maximumSize)};
    if (data.startsWith("bplist") || data.startsWith("<?xml") || data.startsWith("<!DOCTYPE") ||
        data.startsWith("<plist")) {
        const auto list = PropertyList::fromData(data);
        return list ? tableOf(*list) : list.error();
    }
    const auto encoding = QStringConverter::encodingForData(data).value_or(QStringConverter::Utf8);
    QStringDecoder decode(encoding);
    const QString text = decode(data);
    if (decode.hasError())
        return Error{"Its text is not encoded as it should be"};
    StringsParser parser(text);
    if (auto table = parser.parse())
        return *std::move(table);
    return Error{QString("It is damaged in line %1").arg(parser.line())};
}

} // namespace dozely
