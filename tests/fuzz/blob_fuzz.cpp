// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/linux/WireValue_p.h"

#include <cstdint>

// The one-block form of a value: whatever decodes must encode again, and decode to the same.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray block(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QVariant value;
    if (!WireValue::fromBlob(block, &value))
        return 0;
    QVariant again;
    if (!WireValue::fromBlob(WireValue::toBlob(value), &again))
        __builtin_trap();
    NSNotification notification;
    WireValue::notificationFromBlob(block, &notification);
    return 0;
}
