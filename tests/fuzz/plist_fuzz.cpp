// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"

#include <cstdint>
#include <cstdlib>

using namespace dozely;

using PropertyList::Format;

/// Whatever bytes are read as a property list: reading ends, and what was read and can be written is read
/// again as the same, in this form and in the other.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto value = PropertyList::fromData(bytes);
    if (!value) {
        if (value.error().text.isEmpty())
            std::abort(); // every refusal says why
        return 0;
    }
    for (const Format other : {Format::Xml, Format::Binary}) {
        const QByteArray written = PropertyList::toData(*value, other);
        if (written.isNull())
            continue; // a control character in XML, a number without end
        const auto again = PropertyList::fromData(written);
        if (!again || PropertyList::toData(*again, other) != written)
            std::abort();
        // XML drops the fractions of seconds.
        if (other == Format::Binary && *again != *value)
            std::abort();
    }
    return 0;
}
