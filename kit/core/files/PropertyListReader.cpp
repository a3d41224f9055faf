// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyListNode_p.h"

#include <limits>

namespace
{
using PropertyListNode::epoch;
using PropertyListNode::Memory;

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
        const auto value = item ? PropertyListNode::valueOf(item) : std::nullopt;
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
        const auto value = item && key ? PropertyListNode::valueOf(item) : std::nullopt;
        if (!value)
            return std::nullopt;
        map.insert(QString::fromUtf8(key.get()), *value);
    }
    return map;
}

} // namespace

std::optional<QVariant> PropertyListNode::valueOf(plist_t node)
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
