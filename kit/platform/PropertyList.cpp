// SPDX-License-Identifier: MIT
#include "platform/PropertyList.h"

#include "platform/PropertyListCheck_p.h"
#include "platform/RegularFile_p.h"

#include <QDateTime>
#include <QStringList>
#include <QTimeZone>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <plist/plist.h>
#include <type_traits>

namespace
{
struct FreeNode {
    void operator()(void *node) const { plist_free(node); }
};
using Node = std::unique_ptr<std::remove_pointer_t<plist_t>, FreeNode>;

struct FreeMemory {
    void operator()(void *memory) const
    {
        std::free(memory);
    } // NOLINT(cppcoreguidelines-no-malloc): the parser's
};
template<class T>
using Memory = std::unique_ptr<T, FreeMemory>;

/// Dates count from here in the parser's interface, in 32 bits: 1932 to 2069.
const QDateTime &epoch()
{
    static const QDateTime date({2001, 1, 1}, {0, 0}, Qt::UTC);
    return date;
}

std::optional<QVariant> valueOf(plist_t node);

std::optional<QVariant> dateOf(plist_t node)
{
    qint32 seconds = 0;
    qint32 microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    // What a date out of range is cut to; reading it as a date of our own would be a wrong date.
    if (seconds == std::numeric_limits<qint32>::min() || seconds == std::numeric_limits<qint32>::max())
        return std::nullopt;
    const qint64 fraction = seconds < 0 ? -microseconds : microseconds;
    return epoch().addMSecs(seconds * 1000LL + fraction / 1000);
}

std::optional<QVariant> listOf(plist_t node)
{
    QVariantList list;
    const quint32 size = plist_array_get_size(node);
    plist_array_iter made = nullptr;
    plist_array_new_iter(node, &made);
    const Memory<void> iterator(made);
    for (quint32 i = 0; i < size; ++i) {
        plist_t item = nullptr;
        plist_array_next_item(node, iterator.get(), &item);
        const auto value = item ? valueOf(item) : std::nullopt;
        if (!value)
            return std::nullopt;
        list += *value;
    }
    return list;
}

std::optional<QVariant> mapOf(plist_t node)
{
    QVariantMap map;
    const quint32 size = plist_dict_get_size(node);
    plist_dict_iter made = nullptr;
    plist_dict_new_iter(node, &made);
    const Memory<void> iterator(made);
    for (quint32 i = 0; i < size; ++i) {
        char *text = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator.get(), &text, &item);
        const Memory<char> key(text);
        const auto value = item && key ? valueOf(item) : std::nullopt;
        if (!value)
            return std::nullopt;
        map.insert(QString::fromUtf8(key.get()), *value);
    }
    return map;
}

/// Absent for a value that this system does not know. Recursion is bounded by the check that came before.
std::optional<QVariant> valueOf(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        quint8 value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: { // signed as well
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return static_cast<qint64>(value);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING: {
        char *text = nullptr;
        plist_get_string_val(node, &text);
        const Memory<char> owned(text);
        return QString::fromUtf8(owned ? owned.get() : "");
    }
    case PLIST_DATA: {
        char *bytes = nullptr;
        uint64_t size = 0;
        plist_get_data_val(node, &bytes, &size);
        const Memory<char> owned(bytes);
        return QByteArray(owned ? owned.get() : "", static_cast<qsizetype>(size));
    }
    case PLIST_DATE:
        return dateOf(node);
    case PLIST_ARRAY:
        return listOf(node);
    case PLIST_DICT:
        return mapOf(node);
    default:
        return std::nullopt;
    }
}

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
            Node item = isText(entry.key()) ? node(entry.value(), depth + 1) : Node();
            if (!item)
                return {};
            ++m_nodes; // the key
            plist_dict_set_item(made.get(), entry.key().toUtf8().constData(), item.release());
        }
        return made;
    }

    PropertyList::Format m_format;
    int m_nodes = 0;
};

std::nullopt_t refuse(QString *error, const QString &sentence)
{
    if (error)
        *error = "This is no property list that can be read. " + sentence;
    return std::nullopt;
}

constexpr char binaryMagic[] = "bplist00";
constexpr char byteOrderMark[] = "\xef\xbb\xbf";
} // namespace

std::optional<QVariant> PropertyList::fromData(const QByteArray &data, QString *error, Format *format)
{
    if (data.size() > maximumSize)
        return refuse(error, QString("It is larger than %1 bytes.").arg(maximumSize));
    const bool binary = data.startsWith(binaryMagic);
    const QByteArray content = data.startsWith(byteOrderMark) ? data.mid(3).trimmed() : data.trimmed();
    if (!binary && !content.startsWith('<'))
        return refuse(error, "It is neither XML nor binary.");
    const QString refusal = binary ? PropertyListCheck::binary(data) : PropertyListCheck::xml(content);
    if (!refusal.isEmpty())
        return refuse(error, refusal);

    plist_t parsed = nullptr;
    if (binary)
        plist_from_bin(data.constData(), static_cast<quint32>(data.size()), &parsed);
    else
        plist_from_xml(content.constData(), static_cast<quint32>(content.size()), &parsed);
    const Node root(parsed);
    if (!root)
        return refuse(error, "It is damaged.");
    const auto value = valueOf(root.get());
    if (!value)
        return refuse(error, "It holds a value of an unknown kind, or a date out of range.");
    if (format)
        *format = binary ? Format::Binary : Format::Xml;
    return value;
}

std::optional<QVariant> PropertyList::fromFile(const QString &path, QString *error, Format *format,
                                               bool followLinks)
{
    const auto content = readRegularFile(path, maximumSize, followLinks, error);
    if (!content)
        return std::nullopt;
    const auto value = fromData(*content, error, format);
    if (!value && error)
        *error = QString("\"%1\": %2").arg(path, *error);
    return value;
}

QByteArray PropertyList::toData(const QVariant &value, Format format)
{
    const Node root = Builder(format).node(value);
    if (!root)
        return {};
    char *bytes = nullptr;
    uint32_t size = 0;
    if (format == Format::Binary)
        plist_to_bin(root.get(), &bytes, &size);
    else
        plist_to_xml(root.get(), &bytes, &size);
    const Memory<char> owned(bytes);
    // What is too large to be read back must not replace what can be.
    return bytes && size <= maximumSize ? QByteArray(bytes, static_cast<qsizetype>(size)) : QByteArray();
}
