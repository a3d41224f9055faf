// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ArrayExtensions.h"

#include "DozelyKit/core/foundation/Equality.h"
#include "DozelyKit/core/foundation/NSException.h"

#include <algorithm>
#include <limits>
#include <utility>

void zandorSoftwaresExtensions::moveObjectToIndex(QVariantList &list, const QVariant &object, quint32 index)
{
    const auto isObject = [&object](const QVariant &element) { return dozely::isEqual(element, object); };
    const auto found = std::find_if(list.cbegin(), list.cend(), isObject);
    const quint32 old = found == list.cend() ? std::numeric_limits<quint32>::max()
                                             : static_cast<quint32>(found - list.cbegin());
    if (old == index)
        return;
    const qsizetype target = old < index ? qsizetype(index) - 1 : qsizetype(index);
    // Before anything is taken out: a caller who catches the exception finds the list as it was.
    const qsizetype rest = list.size() - std::count_if(list.cbegin(), list.cend(), isObject);
    if (target > rest) {
        throw NSException(QStringLiteral("NSRangeException"),
                          QStringLiteral("index %1 beyond the end of a list of %2").arg(target).arg(rest));
    }
    QVariant moved = object; // it may be an element of the list itself
    list.removeIf([&moved](const QVariant &element) { return dozely::isEqual(element, moved); });
    list.insert(target, std::move(moved));
}
