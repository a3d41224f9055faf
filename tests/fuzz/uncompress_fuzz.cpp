// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DataExtensions.h"

#include <cstdint>
#include <cstdlib>

/// Unpacks whatever bytes come, with and without a limit. What does unpack must survive being packed again,
/// and must be refused by a limit that is one byte too small.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    using namespace zandorSoftwaresExtensions;
    const auto packed =
        QByteArray::fromRawData(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    const QByteArray data = uncompress(packed);
    if (data.isNull() || packed.isEmpty())
        return 0;
    if (uncompress(compress(data)) != data)
        std::abort();
    if (uncompress(packed, data.size()) != data ||
        (!data.isEmpty() && !uncompress(packed, data.size() - 1).isNull()))
        std::abort();
    return 0;
}
