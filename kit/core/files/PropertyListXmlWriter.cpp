// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyListValue_p.h"
#include "DozelyKit/core/files/PropertyListXml_p.h"

#include <algorithm>
#include <cmath>

namespace dozely
{

namespace
{
using PropertyListValue::Kind;

constexpr char head[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                        "<plist version=\"1.0\">\n";

/// One element a line, indented with tabs.
class XmlWriter
{
public:
    QByteArray write(const QVariant &root)
    {
        m_xml = head;
        value(root, 0);
        return m_xml + "</plist>\n";
    }

private:
    void line(qsizetype depth, const QByteArray &content)
    {
        m_xml += QByteArray(depth, '\t') + content + '\n';
    }

    void element(qsizetype depth, const char *name, const QByteArray &content)
    {
        line(depth, QByteArray("<") + name + '>' + content + "</" + name + '>');
    }

    /// As a text of XML; quotation marks need no escape there.
    static QByteArray escaped(const QString &text)
    {
        QByteArray utf8 = text.toUtf8();
        return utf8.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;");
    }

    void value(const QVariant &value, qsizetype depth)
    {
        switch (PropertyListValue::kindOf(value)) {
        case Kind::None:
            break; // never let pass
        case Kind::Boolean:
            line(depth, value.toBool() ? "<true/>" : "<false/>");
            break;
        case Kind::Integer:
            element(depth, "integer", value.toString().toLatin1());
            break;
        case Kind::Real:
            element(depth, "real", real(value.toDouble()));
            break;
        case Kind::Text:
            element(depth, "string", escaped(value.toString()));
            break;
        case Kind::Data:
            data(depth, value.toByteArray());
            break;
        case Kind::Date:
            element(depth, "date", value.toDateTime().toUTC().toString(u"yyyy-MM-ddTHH:mm:ssZ").toLatin1());
            break;
        case Kind::DamagedDate:
            element(depth, "date",
                    escaped(QString::fromUtf8(value.value<PropertyList::DamagedDate>().content)));
            break;
        case Kind::Array:
            array(depth, value.toList());
            break;
        case Kind::Dictionary:
            dictionary(depth, value.toMap());
            break;
        }
    }

    /// Seventeen digits tell every double; a zero has a fraction, so that it looks like a real.
    static QByteArray real(double number)
    {
        if (number == 0)
            return std::signbit(number) ? "-0.0" : "0.0";
        return QByteArray::number(number, 'g', 17);
    }

    /// Lines of Base64 that end at column 76 when a tab is eight wide, and move no further in than eight
    /// tabs.
    void data(qsizetype depth, const QByteArray &bytes)
    {
        const qsizetype indent = std::min<qsizetype>(depth, 8);
        const qsizetype width = 76 - 8 * indent;
        const QByteArray encoded = bytes.toBase64();
        line(depth, "<data>");
        for (qsizetype at = 0; at < encoded.size(); at += width)
            line(indent, encoded.mid(at, width));
        line(depth, "</data>");
    }

    void array(qsizetype depth, const QVariantList &list)
    {
        if (list.isEmpty())
            return line(depth, "<array/>");
        line(depth, "<array>");
        for (const QVariant &item : list)
            value(item, depth + 1);
        line(depth, "</array>");
    }

    void dictionary(qsizetype depth, const QVariantMap &map)
    {
        if (map.isEmpty())
            return line(depth, "<dict/>");
        line(depth, "<dict>");
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            element(depth + 1, "key", escaped(entry.key()));
            value(entry.value(), depth + 1);
        }
        line(depth, "</dict>");
    }

    QByteArray m_xml;
};
} // namespace

QByteArray PropertyListXml::write(const QVariant &value)
{
    return XmlWriter().write(value);
}

} // namespace dozely
