// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/TxtRecord_p.h"

#include <cstdint>

using namespace dozely;

namespace
{
void require(bool condition)
{
    if (!condition)
        __builtin_trap();
}
} // namespace

// The TXT record of a service, which anybody on the network may have written. What was read of it can be
// written again, unless it is larger than what may be published, and reads as the same.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray record(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QVariantMap entries = TxtRecord::decode(record);
    const auto again = TxtRecord::encode(entries);
    require(again || record.size() > TxtRecord::largestPublished);
    require(!again || (TxtRecord::isWellFormed(*again) && TxtRecord::decode(*again) == entries));
    require(!again || again->size() <= qMax<qsizetype>(1, record.size()));
    const QByteArrayList strings = TxtRecord::strings(record);
    require(TxtRecord::strings(TxtRecord::fromStrings(strings)) == strings);
    require(TxtRecord::decode(TxtRecord::fromStrings(strings)) == entries);
    return 0;
}
