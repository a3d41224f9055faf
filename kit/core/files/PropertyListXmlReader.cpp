// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyListValue_p.h"
#include "DozelyKit/core/files/PropertyListXmlLeaf_p.h"
#include "DozelyKit/core/files/PropertyListXml_p.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <optional>
#include <utility>

namespace dozely
{

namespace
{
using PropertyListXmlLeaf::isBlank;

/// Reads strictly: whatever two readers might take for different things (attributes, half comments, elements
/// that close out of order) is refused. An invalid variant or a null text stands for a refusal, and m_refusal
/// says why.
class XmlReader
{
public:
    XmlReader(QStringView document, const PropertyList::Terms &terms) : m_text(document), m_terms(terms) {}

    Result<QVariant> read()
    {
        const QVariant value = document();
        if (!value.isValid())
            return Error{m_refusal};
        return value;
    }

private:
    struct Tag {
        QStringView name;
        bool closes = false;  ///< </name>
        bool isEmpty = false; ///< <name/>
    };

    QVariant document()
    {
        while (skipBlanks() && rest().startsWith(u"<!")) {
            if (!documentType())
                return {};
        }
        const bool isWrapped = m_refusal.isEmpty() && rest().startsWith(u"<plist") && plistTag();
        const QVariant root = m_refusal.isEmpty() && skipBlanks() ? value(tag(), 0) : QVariant();
        if (!root.isValid() || !skipBlanks())
            return {};
        if (isWrapped) {
            const Tag end = tag();
            if (!m_refusal.isEmpty() || !end.closes || end.name != u"plist" || !skipBlanks())
                return malformed();
        }
        return rest().isEmpty() ? root : refuse("something follows its end");
    }

    QStringView rest() const { return m_text.sliced(m_at); }

    QVariant refuse(const QString &why)
    {
        if (m_refusal.isEmpty())
            m_refusal = why;
        return {};
    }

    /// Nobody needs to hear of bad form where there is nothing left.
    QVariant malformed() { return refuse(rest().isEmpty() ? "it is cut off" : "it is not well formed"); }

    /// Skips what begins with `begin` and ends with the first `end` after that.
    bool skip(QStringView begin, QStringView end)
    {
        const qsizetype close = m_text.indexOf(end, m_at + begin.size());
        if (close < 0) {
            refuse("it is cut off");
            return false;
        }
        m_at = close + end.size();
        return true;
    }

    /// Skips blanks, comments and processing instructions; false when one of them is damaged.
    bool skipBlanks()
    {
        for (;;) {
            while (m_at < m_text.size() && isBlank(m_text[m_at]))
                ++m_at;
            // Nearly always what begins here is an element.
            const QChar next = m_at + 1 < m_text.size() ? m_text[m_at + 1] : QChar();
            if (next != u'!' && next != u'?')
                return true;
            if (!rest().startsWith(u"<!--") && !rest().startsWith(u"<?"))
                return true;
            if (!(rest().startsWith(u"<?") ? processingInstruction() : comment()))
                return false;
        }
    }

    bool processingInstruction()
    {
        if (!rest().startsWith(u"<?>"))
            return skip(u"<?", u"?>");
        malformed();
        return false;
    }

    bool comment()
    {
        if (!rest().startsWith(u"<!-->") && !rest().startsWith(u"<!--->"))
            return skip(u"<!--", u"-->");
        malformed();
        return false;
    }

    /// From here to the next closing bracket, with it; null when there is none.
    QStringView untilBracket()
    {
        const qsizetype close = m_text.indexOf(u'>', m_at);
        if (close < 0) {
            refuse("it is cut off");
            return {};
        }
        return m_text.sliced(m_at, close + 1 - m_at);
    }

    /// Whether no quotation reaches beyond the tag, and no other tag begins in it.
    static bool isWhole(QStringView tag)
    {
        return tag.count(u'"') % 2 == 0 && tag.count(u'\'') % 2 == 0 && tag.lastIndexOf(u'<') == 0;
    }

    /// It names an external file, which is never opened, and declares nothing of its own.
    bool documentType()
    {
        const QStringView tag = untilBracket();
        if (tag.contains(u'[') || tag.contains(u"ENTITY"))
            refuse("it declares entities of its own");
        else if (!tag.startsWith(u"<!DOCTYPE") || !isWhole(tag))
            malformed();
        m_at += tag.size();
        return m_refusal.isEmpty();
    }

    /// The only element that may have attributes. They mean nothing.
    bool plistTag()
    {
        const QStringView tag = untilBracket();
        const QChar next = tag.size() > 6 ? tag[6] : QChar();
        if ((next != '>' && !isBlank(next)) || !isWhole(tag) || tag.endsWith(u"/>"))
            malformed();
        m_at += tag.size();
        return m_refusal.isEmpty();
    }

    /// The tag that begins here.
    Tag tag()
    {
        const QStringView whole = untilBracket();
        if (!whole.startsWith(u'<')) {
            malformed();
            return {};
        }
        Tag tag;
        QStringView inside = whole.sliced(1).chopped(1);
        tag.closes = inside.startsWith(u'/');
        tag.isEmpty = !tag.closes && inside.endsWith(u'/');
        inside = inside.sliced(tag.closes ? 1 : 0).chopped(tag.isEmpty ? 1 : 0);
        while (!inside.isEmpty() && isBlank(inside.back()))
            inside.chop(1);
        tag.name = inside;
        m_at += whole.size();
        return tag;
    }

    /// The value whose tag has just been read. Recursion is bounded by the depth limit; `depth` counts the
    /// containers around it.
    QVariant value(const Tag &tag, int depth)
    {
        if (!m_refusal.isEmpty() || !countsOneMore())
            return {};
        if (tag.closes)
            return malformed();
        if (tag.name == u"dict" || tag.name == u"array") {
            if (depth >= PropertyList::maximumDepth)
                return refuse(PropertyListValue::tooDeep());
            return tag.name == u"dict" ? dictionary(tag, depth + 1) : array(tag, depth + 1);
        }
        if (!PropertyListXmlLeaf::isName(tag.name))
            return malformed();
        const QString content = text(tag);
        const QVariant value =
            m_refusal.isEmpty() ? PropertyListXmlLeaf::read(tag.name, content) : QVariant();
        if (!value.isValid() && m_refusal.isEmpty() && tag.name == u"date" && m_terms.keepsDamagedDates)
            return QVariant::fromValue(PropertyList::DamagedDate{content.toUtf8()});
        return value.isValid() ? value : refuse(QString("it holds a damaged %1").arg(tag.name));
    }

    bool countsOneMore()
    {
        if (++m_nodes > m_terms.nodes)
            refuse(PropertyListValue::tooMany(m_terms));
        return m_refusal.isEmpty();
    }

    QVariant array(const Tag &begin, int depth)
    {
        QVariantList list;
        while (!begin.isEmpty && skipBlanks()) {
            const Tag next = tag();
            if (next.closes && next.name == begin.name)
                break;
            list += value(next, depth);
            if (!list.constLast().isValid())
                return {};
        }
        return m_refusal.isEmpty() ? list : QVariant();
    }

    QVariant dictionary(const Tag &begin, int depth)
    {
        QVariantMap map;
        while (!begin.isEmpty && skipBlanks()) {
            const Tag next = tag();
            if (next.closes && next.name == begin.name)
                break;
            if (next.closes || next.name != u"key")
                return malformed();
            const QString key = countsOneMore() ? shared(text(next)) : QString();
            const QVariant item = m_refusal.isEmpty() && skipBlanks() ? value(tag(), depth) : QVariant();
            if (!item.isValid())
                return {};
            map.insert(map.cend(), key, item); // as a rule they stand in order
        }
        return m_refusal.isEmpty() ? map : QVariant();
    }

    /// A list has the same few keys again and again: they share their memory.
    QString shared(const QString &key) { return *m_keys.insert(key); }

    /// What stands between the tag that has just been read and its end.
    QString text(const Tag &begin)
    {
        if (const auto plain = begin.isEmpty ? std::nullopt : plainText(begin))
            return *plain;
        QString text("");
        while (!begin.isEmpty && m_refusal.isEmpty()) {
            qsizetype run = 0;
            while (run < rest().size() && rest()[run] != '<' && rest()[run] != '&')
                ++run;
            text += rest().first(run);
            m_at += run;
            if (rest().startsWith(u'&')) {
                text += reference();
            } else if (rest().startsWith(u"<![CDATA[")) {
                const qsizetype start = m_at + 9;
                if (skip(u"<![CDATA[", u"]]>"))
                    text += m_text.sliced(start, m_at - 3 - start);
            } else if (rest().startsWith(u"<!--")) {
                comment();
            } else {
                const Tag end = tag();
                if (end.closes && end.name == begin.name)
                    break;
                malformed();
            }
        }
        return text;
    }

    /// The same where there is nothing but characters; absent, and nothing read, where there is more.
    std::optional<QString> plainText(const Tag &begin)
    {
        const qsizetype size = rest().indexOf(u'<');
        const QStringView characters = rest().first(std::max<qsizetype>(size, 0));
        const QStringView end = rest().sliced(characters.size());
        const qsizetype endSize = begin.name.size() + 3; // "</" and ">"
        if (size < 0 || characters.contains(u'&') || end.size() < endSize || !end.startsWith(u"</") ||
            end.sliced(2, begin.name.size()) != begin.name || end[endSize - 1] != u'>')
            return {};
        m_at += size + endSize;
        return size == 0 ? QString("") : characters.toString();
    }

    /// The character for which the reference stands that begins here.
    QString reference()
    {
        constexpr qsizetype longest = 12; // "&#x0010FFFF;"
        const qsizetype end = rest().first(std::min(longest, rest().size())).indexOf(u';');
        const QStringView name = end < 0 ? QStringView() : rest().sliced(1, end - 1);
        static const QHash<QStringView, QChar> named{
            {u"lt", '<'}, {u"gt", '>'}, {u"amp", '&'}, {u"quot", '"'}, {u"apos", '\''}};
        m_at += end + 1;
        if (named.contains(name))
            return named.value(name);
        bool isNumber = false;
        const bool isHex = name.startsWith(u"#x") || name.startsWith(u"#X");
        const QStringView digits = name.sliced(std::min<qsizetype>(isHex ? 2 : 1, name.size()));
        const char32_t code = digits.toUInt(&isNumber, isHex ? 16 : 10);
        if (name.startsWith(u'#') && isNumber && digits[0].isLetterOrNumber() && isCharacter(code))
            return QString::fromUcs4(&code, 1);
        malformed();
        return {};
    }

    /// What XML takes for a character.
    static bool isCharacter(char32_t code)
    {
        return code == '\t' || code == '\n' || code == '\r' || (code >= 0x20 && code < 0xd800) ||
               (code > 0xdfff && code < 0xfffe) || (code > 0xffff && code <= 0x10ffff);
    }

    QStringView m_text;
    const PropertyList::Terms &m_terms;
    qsizetype m_at = 0;
    QString m_refusal;
    int m_nodes = 0;
    QSet<QString> m_keys;
};

/// Characters that have no place in XML, NUL among them.
bool isOutOfPlace(QChar c)
{
    const char16_t code = c.unicode();
    return (code < 0x20 && !isBlank(c)) || code == 0xfffe || code == 0xffff;
}
} // namespace

Result<QVariant> PropertyListXml::read(QByteArrayView data, const PropertyList::Terms &terms)
{
    auto document = PropertyListValue::fromUtf8(data);
    if (!document)
        return Error{"it is not in UTF-8"};
    if (document->contains('\r'))
        document->replace("\r\n", "\n").replace('\r', '\n');
    for (const QChar c : std::as_const(*document)) {
        if (isOutOfPlace(c))
            return Error{"it holds a character that XML does not know"};
    }
    return XmlReader(*document, terms).read();
}

} // namespace dozely
