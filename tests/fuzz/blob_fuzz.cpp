// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/CborBlock_p.h"

#include <cstdint>

using namespace dozely;

// The one-block form of a value: whatever decodes must encode again, and decode to the same.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray block(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto value = CborBlock::decode(block);
    if (!value)
        return 0;
    const auto again = CborBlock::encode(*value);
    if (!again || !CborBlock::decode(*again))
        __builtin_trap();
    (void)CborBlock::decodeNotification(block);
    return 0;
}
