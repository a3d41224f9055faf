// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"

#include <cstdint>
#include <cstdlib>

/// Whatever bytes are read as a property list: reading ends, and what was read and can be written is read
/// again.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QString error;
    PropertyList::Format format{};
    const auto value = PropertyList::fromData(bytes, &error, &format);
    if (!value) {
        if (error.isEmpty())
            std::abort(); // every refusal says why
        return 0;
    }
    const QByteArray written = PropertyList::toData(*value, format);
    if (!written.isNull() && !PropertyList::fromData(written))
        std::abort();
    return 0;
}
