// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/files/PropertyList.h"

#include <QDateTime>

#include <cstdlib>
#include <memory>
#include <plist/plist.h>
#include <type_traits>

/// Between QVariant and the nodes of the parser.
namespace PropertyListNode
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

/// Dates count from here in the parser's interface, in seconds of 32 bits: 1932 to 2069.
inline QDateTime epoch()
{
    return QDateTime({2001, 1, 1}, {0, 0}, Qt::UTC);
}

/// The value of a node; absent for one that this system does not know, or a date out of range. Recursion is
/// bounded by the check of the list that came before.
std::optional<QVariant> valueOf(plist_t node);

/// A new node; null for a value that a list of this format cannot carry.
Node nodeOf(const QVariant &value, PropertyList::Format format);
} // namespace PropertyListNode
