// SPDX-License-Identifier: MIT
#include "hosts/daemon/StringPool.h"

QVariant StringPool::shared(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return shared(value.toString());
    case QMetaType::QVariantMap:
        return shared(value.toMap());
    case QMetaType::QVariantList: {
        QVariantList list;
        for (const QVariant &member : value.toList())
            list += shared(member);
        return list;
    }
    default:
        return value;
    }
}

QVariantMap StringPool::shared(const QVariantMap &map)
{
    QVariantMap copy;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        copy.insert(shared(entry.key()), shared(entry.value()));
    return copy;
}
