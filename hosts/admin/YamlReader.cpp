// SPDX-License-Identifier: MIT
#include "hosts/admin/YamlReader.h"

#include "hosts/admin/AdminText.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <QRegularExpression>

#include <cmath>
#include <cstring>
#include <yaml.h>

using namespace dozely;

namespace
{
/// Reads events one after the other. Aliases are refused, since few of them unfold to gigabytes, and nesting
/// is limited, since each level is one of the stack.
class Reader
{
public:
    explicit Reader(const QByteArray &data)
    {
        yaml_parser_initialize(&m_parser);
        yaml_parser_set_input_string(&m_parser, reinterpret_cast<const unsigned char *>(data.constData()),
                                     static_cast<size_t>(data.size()));
    }
    ~Reader()
    {
        yaml_event_delete(&m_event);
        yaml_parser_delete(&m_parser);
    }
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;

    Result<QVariant> document()
    {
        if (!next() || !next())
            return m_fault;
        if (m_event.type == YAML_STREAM_END_EVENT)
            return Error{AdminText::tr("it is empty")};
        if (!next())
            return m_fault;
        const QVariant value = node(0);
        if (!m_fault.text.isEmpty())
            return m_fault;
        if (!next() || !next())
            return m_fault;
        if (m_event.type != YAML_STREAM_END_EVENT)
            return Error{AdminText::tr("it has more than one document")};
        return value;
    }

private:
    bool next()
    {
        yaml_event_delete(&m_event);
        if (yaml_parser_parse(&m_parser, &m_event) == 1)
            return true;
        fail(m_parser.problem ? QString::fromUtf8(m_parser.problem) : AdminText::tr("it cannot be read"),
             m_parser.problem_mark.line);
        return false;
    }

    void fail(const QString &what, size_t line)
    {
        if (m_fault.text.isEmpty())
            m_fault = Error{AdminText::tr("%1, in line %2").arg(what).arg(line + 1)};
    }
    void fail(const QString &what) { fail(what, m_event.start_mark.line); }

    /// The value that begins with the present event; the event is its last one afterwards.
    QVariant node(int depth)
    {
        if (depth > PropertyList::maximumDepth)
            fail(AdminText::tr("it is nested too deeply"));
        else if (++m_nodes > PropertyList::ofTheSystem.nodes)
            fail(AdminText::tr("it has too many values"));
        else if (m_event.type == YAML_ALIAS_EVENT)
            fail(AdminText::tr("aliases are not understood"));
        if (!m_fault.text.isEmpty())
            return {};
        switch (m_event.type) {
        case YAML_SCALAR_EVENT:
            return scalar();
        case YAML_SEQUENCE_START_EVENT:
            return sequence(depth);
        case YAML_MAPPING_START_EVENT:
            return mapping(depth);
        default:
            fail(AdminText::tr("a value is missing"));
            return {};
        }
    }

    QVariant sequence(int depth)
    {
        QVariantList list;
        refuseTag(m_event.data.sequence_start.tag);
        while (next() && m_event.type != YAML_SEQUENCE_END_EVENT) {
            list += node(depth + 1);
            if (!m_fault.text.isEmpty())
                return {};
        }
        return list;
    }

    QVariant mapping(int depth)
    {
        QVariantMap map;
        refuseTag(m_event.data.mapping_start.tag);
        while (next() && m_event.type != YAML_MAPPING_END_EVENT) {
            if (m_event.type != YAML_SCALAR_EVENT) {
                fail(AdminText::tr("a key is not a text"));
                return {};
            }
            const QString key = text();
            if (map.contains(key))
                fail(AdminText::tr("a key stands there twice"));
            if (!next() || !m_fault.text.isEmpty())
                return {};
            map.insert(key, node(depth + 1));
            if (!m_fault.text.isEmpty())
                return {};
        }
        return map;
    }

    void refuseTag(const unsigned char *tag)
    {
        if (tag)
            fail(AdminText::tr("tags are not understood"));
    }

    QString text() const
    {
        return QString::fromUtf8(reinterpret_cast<const char *>(m_event.data.scalar.value),
                                 static_cast<qsizetype>(m_event.data.scalar.length));
    }

    QVariant scalar()
    {
        static const QRegularExpression integer(R"(\A[-+]?[0-9]+\z)");
        static const QRegularExpression real(R"(\A[-+]?(\.[0-9]+|[0-9]+(\.[0-9]*)?)([eE][-+]?[0-9]+)?\z)");
        static const QRegularExpression nothing(R"(\A(~|null|Null|NULL|)\z)");
        static const QRegularExpression yes(R"(\A(true|True|TRUE)\z)");
        static const QRegularExpression no(R"(\A(false|False|FALSE)\z)");
        refuseTag(m_event.data.scalar.tag);
        const QString value = text();
        if (m_event.data.scalar.style != YAML_PLAIN_SCALAR_STYLE)
            return value;
        if (nothing.match(value).hasMatch())
            return {};
        if (yes.match(value).hasMatch() || no.match(value).hasMatch())
            return value.startsWith('t', Qt::CaseInsensitive);
        bool isNumber = false;
        if (integer.match(value).hasMatch()) {
            const qint64 number = value.toLongLong(&isNumber);
            if (isNumber)
                return number;
        }
        if (real.match(value).hasMatch()) {
            const double number = value.toDouble(&isNumber);
            if (isNumber && std::isfinite(number))
                return number;
        }
        return value;
    }

    yaml_parser_t m_parser{};
    yaml_event_t m_event{};
    int m_nodes = 0;
    Error m_fault{};
};
} // namespace

Result<QVariant> YamlReader::parse(const QByteArray &data)
{
    return Reader(data).document();
}
