// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyListNode_p.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
using PropertyListNode::epoch;
using PropertyListNode::Node;

/// Makes the parser's nodes from a value.
class Builder
{
public:
    explicit Builder(PropertyList::Format format) : m_format(format) {}

    /// Null for a value that a property list cannot carry. `depth` counts the containers around it.
    Node node(const QVariant &value, int depth = 0)
    {
        if (++m_nodes > PropertyList::maximumNodes)
            return {};
        switch (value.typeId()) {
        case QMetaType::Bool:
            return Node(plist_new_bool(value.toBool() ? 1 : 0));
        case QMetaType::ULong:
        case QMetaType::ULongLong:
            if (value.toULongLong() > static_cast<quint64>(std::numeric_limits<qint64>::max()))
                return {}; // would be read back as a negative number
            [[fallthrough]];
        case QMetaType::SChar:
        case QMetaType::Char:
        case QMetaType::UChar:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::LongLong:
            return Node(plist_new_uint(static_cast<uint64_t>(value.toLongLong())));
        case QMetaType::Float:
        case QMetaType::Double:
            return std::isfinite(value.toDouble()) ? Node(plist_new_real(value.toDouble())) : Node();
        case QMetaType::QString:
            return isText(value.toString()) ? Node(plist_new_string(value.toString().toUtf8().constData()))
                                            : Node();
        case QMetaType::QByteArray: {
            const QByteArray bytes = value.toByteArray();
            return Node(plist_new_data(bytes.constData(), static_cast<uint64_t>(bytes.size())));
        }
        case QMetaType::QDateTime:
            return date(value.toDateTime());
        case QMetaType::QStringList:
        case QMetaType::QVariantList:
            return array(value.toList(), depth);
        case QMetaType::QVariantMap:
            return dictionary(value.toMap(), depth);
        default:
            return {};
        }
    }

private:
    static Node date(const QDateTime &date)
    {
        const qint64 seconds = date.isValid() ? epoch().secsTo(date) : std::numeric_limits<qint64>::max();
        if (std::abs(seconds) >= std::numeric_limits<qint32>::max())
            return {};
        const qint64 milliseconds = epoch().msecsTo(date) - seconds * 1000;
        return Node(
            plist_new_date(static_cast<qint32>(seconds), static_cast<qint32>(std::abs(milliseconds) * 1000)));
    }

    /// NUL ends a text, half a surrogate pair has no UTF-8, and XML has no place for most control characters.
    bool isText(const QString &text) const
    {
        const auto unfit = [this](QChar c) {
            const char16_t code = c.unicode();
            const bool control = code < 0x20 && code != '\t' && code != '\n';
            return code == 0 || (m_format == PropertyList::Format::Xml && (control || code >= 0xfffe));
        };
        return text.isValidUtf16() && std::none_of(text.begin(), text.end(), unfit);
    }

    Node array(const QVariantList &list, int depth)
    {
        if (depth >= PropertyList::maximumDepth)
            return {};
        Node made(plist_new_array());
        for (const QVariant &value : list) {
            Node item = node(value, depth + 1);
            if (!item)
                return {};
            plist_array_append_item(made.get(), item.release());
        }
        return made;
    }

    Node dictionary(const QVariantMap &map, int depth)
    {
        if (depth >= PropertyList::maximumDepth)
            return {};
        Node made(plist_new_dict());
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            ++m_nodes; // the key
            Node item = isText(entry.key()) ? node(entry.value(), depth + 1) : Node();
            if (!item)
                return {};
            plist_dict_set_item(made.get(), entry.key().toUtf8().constData(), item.release());
        }
        return made;
    }

    PropertyList::Format m_format;
    int m_nodes = 0;
};

} // namespace

PropertyListNode::Node PropertyListNode::nodeOf(const QVariant &value, PropertyList::Format format)
{
    return Builder(format).node(value);
}
