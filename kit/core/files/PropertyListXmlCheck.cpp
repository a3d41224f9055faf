// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyListCheck_p.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <QByteArrayList>
#include <QByteArrayView>

#include <algorithm>

namespace
{
/// Reads XML strictly: whatever two parsers might read differently (attributes, half comments, elements that
/// close out of order) is refused, so that the parser behind it cannot see a deeper list than this one did.
class XmlScanner
{
public:
    explicit XmlScanner(QByteArrayView data) : m_data(data) {}

    QString check()
    {
        if (m_data.contains('\0'))
            return "It holds a NUL byte.";
        while ((m_at = m_data.indexOf('<', m_at)) >= 0) {
            QString refusal = rest().startsWith("<?")          ? processingInstruction()
                              : rest().startsWith("<!--")      ? comment()
                              : rest().startsWith("<![CDATA[") ? characterData()
                              : rest().startsWith("<!")        ? documentType()
                              : rest().startsWith("</")        ? endTag()
                                                               : startTag();
            if (!refusal.isEmpty())
                return refusal;
        }
        return m_open.isEmpty() && m_nodes > 0 ? QString() : QString("It is cut off.");
    }

private:
    QByteArrayView rest() const { return m_data.sliced(m_at); }

    /// Skips what begins with `begin` and ends with the first `end` after that.
    QString skip(QByteArrayView begin, QByteArrayView end)
    {
        const qsizetype close = m_data.indexOf(end, m_at + begin.size());
        if (close < 0)
            return "It is cut off.";
        m_at = close + end.size();
        return {};
    }

    QString processingInstruction() { return rest().startsWith("<?>") ? malformed() : skip("<?", "?>"); }

    QString comment()
    {
        const bool half = rest().startsWith("<!-->") || rest().startsWith("<!--->");
        return half ? malformed() : skip("<!--", "-->");
    }

    QString characterData()
    {
        return m_open.isEmpty() || isContainer(m_open.constLast()) ? malformed() : skip("<![CDATA[", "]]>");
    }

    QString documentType()
    {
        const QByteArrayView tag = untilBracket();
        if (tag.contains('[') || tag.contains("ENTITY"))
            return "It declares entities of its own.";
        if (!tag.startsWith("<!DOCTYPE") || m_nodes > 0 || !hasWholeQuotes(tag))
            return malformed();
        m_at += tag.size();
        return {};
    }

    QString startTag()
    {
        const QByteArrayView tag = untilBracket();
        const QByteArray name = nameOf(tag.sliced(1));
        if (!m_open.isEmpty() && !isContainer(m_open.constLast()))
            return malformed();
        if (m_open.isEmpty() && m_nodes > 0)
            return "Something follows its end.";
        const QByteArray remains = tag.sliced(1 + name.size()).toByteArray().trimmed();
        m_at += tag.size();
        if (name == "plist") {
            if (!m_open.isEmpty() || !hasWholeQuotes(tag) || !tag.endsWith('>') || tag.endsWith("/>"))
                return malformed();
            m_open += name;
            return {};
        }
        if (!knownNames().contains(name) || (remains != ">" && remains != "/>"))
            return malformed();
        if (++m_nodes > PropertyList::maximumNodes)
            return PropertyListCheck::tooMany();
        m_open += name;
        const auto depth = std::count_if(m_open.begin(), m_open.end(), [](const QByteArray &open) {
            return open == "dict" || open == "array";
        });
        if (remains == "/>")
            m_open.removeLast();
        return depth > PropertyList::maximumDepth ? PropertyListCheck::tooDeep() : QString();
    }

    QString endTag()
    {
        const QByteArrayView tag = untilBracket();
        const QByteArray name = nameOf(tag.sliced(2));
        if (m_open.isEmpty() || m_open.takeLast() != name || tag.sliced(2 + name.size()).trimmed() != ">")
            return malformed();
        m_at += tag.size();
        return {};
    }

    /// From here to the next closing bracket, with it.
    QByteArrayView untilBracket() const
    {
        const qsizetype close = m_data.indexOf('>', m_at);
        return close < 0 ? rest() : m_data.sliced(m_at, close + 1 - m_at);
    }

    static QByteArray nameOf(QByteArrayView text)
    {
        const auto end = std::find_if(text.begin(), text.end(), [](char c) { return c < 'a' || c > 'z'; });
        return QByteArray(text.data(), end - text.begin());
    }

    /// No quotation that reaches beyond the tag, as far as one parser sees the tag's end and another does
    /// not.
    static bool hasWholeQuotes(QByteArrayView tag)
    {
        return tag.count('"') % 2 == 0 && tag.count('\'') % 2 == 0;
    }

    static bool isContainer(const QByteArray &name)
    {
        return name == "plist" || name == "dict" || name == "array";
    }

    static const QByteArrayList &knownNames()
    {
        static const QByteArrayList names{"dict", "array", "key",   "string", "integer",
                                          "real", "true",  "false", "date",   "data"};
        return names;
    }

    static QString malformed() { return "It is not well formed."; }

    QByteArrayView m_data;
    qsizetype m_at = 0;
    int m_nodes = 0;
    QByteArrayList m_open;
};

} // namespace

QString PropertyListCheck::tooDeep()
{
    return QString("It nests deeper than %1 levels.").arg(PropertyList::maximumDepth);
}

QString PropertyListCheck::tooMany()
{
    return QString("It holds more than %1 values.").arg(PropertyList::maximumNodes);
}

QString PropertyListCheck::xml(const QByteArray &data)
{
    return XmlScanner(data).check();
}
