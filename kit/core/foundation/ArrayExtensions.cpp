// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ArrayExtensions.h"

#include "DozelyKit/core/foundation/NSException.h"

#include <limits>
#include <utility>

void zandorSoftwaresExtensions::moveObjectToIndex(QVariantList &list, const QVariant &object, quint32 index)
{
    const qsizetype found = list.indexOf(object);
    const quint32 old = found < 0 ? std::numeric_limits<quint32>::max() : static_cast<quint32>(found);
    if (old == index)
        return;
    const qsizetype target = old < index ? qsizetype(index) - 1 : qsizetype(index);
    // Before anything is taken out: a caller who catches the exception finds the list as it was.
    const qsizetype rest = list.size() - list.count(object);
    if (target > rest) {
        throw NSException(QStringLiteral("NSRangeException"),
                          QStringLiteral("index %1 beyond the end of a list of %2").arg(target).arg(rest));
    }
    QVariant moved = object; // it may be an element of the list itself
    list.removeAll(moved);
    list.insert(target, std::move(moved));
}
