// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/WireCursor_p.h"
#include "DozelyKit/communication/remoting/WireTypes_p.h"
#include "DozelyKit/communication/remoting/WireValues_p.h"
#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "DozelyKit/core/dbus/ObjectPath_p.h"

#include <bit>

namespace dozely
{

namespace
{
class Reader
{
public:
    explicit Reader(const WireMessage &message)
        : m_signature(message.signature), m_cursor(message.body, message.isLittleEndian)
    {
    }

    bool all(QVariantList *values)
    {
        for (QByteArrayView rest = m_signature; !rest.isEmpty();) {
            const QByteArrayView type = WireTypes::firstOf(rest);
            if (type.isEmpty() || !argument(type, &values->emplaceBack()))
                return false;
            rest = rest.sliced(type.size());
        }
        return m_cursor.isAtEnd();
    }

    Error error() const
    {
        const QString text = QStringLiteral("arguments of these types are not known");
        return {m_refused.isEmpty() ? text : text + ": " + QString::fromLatin1(m_refused)};
    }

private:
    bool refuse(QByteArrayView type)
    {
        m_refused = type.toByteArray();
        return false;
    }

    /// Paths of objects are arguments and results alone, never values within others.
    bool argument(QByteArrayView type, QVariant *result)
    {
        if (type != "o")
            return value(type, result, 0);
        QByteArrayView path;
        if (!m_cursor.text(&path) || !WireTypes::isPath(path))
            return false;
        *result = QVariant::fromValue(ObjectPath{path.toByteArray()});
        return true;
    }

    /// One value, which lies within `depth` containers.
    bool value(QByteArrayView type, QVariant *result, int depth)
    {
        switch (type[0]) {
        case 'b':
            return number<quint32>([&](quint32 v) {
                *result = v != 0;
                return v <= 1;
            });
        case 'y':
            return number<quint8>([&](quint8 v) {
                *result = static_cast<uint>(v);
                return true;
            });
        case 'n':
            return number<qint16>([&](qint16 v) {
                *result = static_cast<int>(v);
                return true;
            });
        case 'q':
            return number<quint16>([&](quint16 v) {
                *result = static_cast<uint>(v);
                return true;
            });
        case 'i':
            return number<qint32>([&](qint32 v) {
                *result = v;
                return true;
            });
        case 'u':
            return number<quint32>([&](quint32 v) {
                *result = v;
                return true;
            });
        case 'x':
            return number<qint64>([&](qint64 v) {
                *result = v;
                return true;
            });
        case 't':
            return number<quint64>([&](quint64 v) {
                *result = v;
                return true;
            });
        case 'd':
            return number<quint64>([&](quint64 v) {
                *result = std::bit_cast<double>(v);
                return true;
            });
        case 's': {
            QString text;
            return this->text(&text) && (*result = text, true);
        }
        case 'v':
        case 'a':
        case '(':
            return depth < WireTypes::maximumDepth && container(type, result, depth + 1);
        default:
            return refuse(type);
        }
    }

    bool container(QByteArrayView type, QVariant *result, int depth)
    {
        if (type[0] == 'v')
            return variant(result, depth);
        if (type == "ay")
            return bytes(result);
        if (type == "av" || type == "as")
            return list(type.sliced(1), result, depth);
        if (type == "a{sv}" || type == "a{ss}")
            return dictionary(type.sliced(3, 1), result, depth);
        if (type == "(xis)")
            return date(result);
        return refuse(type);
    }

    template<class Number, class Store>
    bool number(Store store)
    {
        Number v{};
        return m_cursor.number(&v) && store(v);
    }

    bool text(QString *result)
    {
        QByteArrayView utf8;
        if (!m_cursor.text(&utf8))
            return false;
        *result = QString::fromUtf8(utf8);
        return true;
    }

    bool variant(QVariant *result, int depth)
    {
        QByteArrayView type;
        return m_cursor.signature(&type) && !type.isEmpty() &&
               WireTypes::firstOf(type).size() == type.size() && value(type, result, depth);
    }

    bool bytes(QVariant *result)
    {
        quint32 length = 0;
        QByteArrayView contents;
        if (!m_cursor.number(&length) || !m_cursor.bytes(length, &contents))
            return false;
        *result = contents.isEmpty() ? QByteArray("") : contents.toByteArray(); // empty is not null
        return true;
    }

    /// What the open array holds, element by element; it has to end where it says.
    template<class Element>
    bool elements(qsizetype alignment, Element element)
    {
        quint32 length = 0;
        if (!m_cursor.number(&length) || !m_cursor.align(alignment))
            return false;
        const auto end = m_cursor.position() + static_cast<qsizetype>(length);
        while (m_cursor.position() < end) {
            if (!element())
                return false;
        }
        return m_cursor.position() == end;
    }

    bool list(QByteArrayView type, QVariant *result, int depth)
    {
        QVariantList values;
        if (!elements(WireTypes::alignmentOf(type[0]),
                      [&] { return value(type, &values.emplaceBack(), depth); }))
            return false;
        *result = values;
        return true;
    }

    bool dictionary(QByteArrayView type, QVariant *result, int depth)
    {
        QVariantMap map;
        const auto entry = [&] {
            QString name;
            QVariant held;
            if (!m_cursor.align(WireTypes::alignmentOf('{')) || !text(&name) || !value(type, &held, depth))
                return false;
            map.insert(map.cend(), name, held); // they mostly come in order
            return true;
        };
        if (!elements(WireTypes::alignmentOf('{'), entry))
            return false;
        *result = map;
        return true;
    }

    bool date(QVariant *result)
    {
        qint64 milliseconds = 0;
        qint32 offset = 0;
        QByteArrayView zone;
        if (!m_cursor.align(WireTypes::alignmentOf('(')) || !m_cursor.number(&milliseconds) ||
            !m_cursor.number(&offset) || !m_cursor.text(&zone))
            return false;
        const QDateTime date = WireDate{milliseconds, offset, zone.toByteArray()}.date();
        *result = date;
        return date.isValid() || refuse("(xis)");
    }

    QByteArrayView m_signature;
    WireCursor m_cursor;
    QByteArray m_refused; ///< The type that is not in the table.
};
} // namespace

Result<QVariantList> WireValues::read(const WireMessage &message)
{
    Reader reader(message);
    QVariantList values;
    if (!reader.all(&values))
        return reader.error();
    return values;
}

} // namespace dozely
