// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEDesc.h"

#include <cstdint>

namespace
{
/// Everything in a descriptor as every type there is.
void convertAll(const AEDesc &desc)
{
    for (const DescType type :
         {typeBoolean, typeSInt16, typeSInt32, typeUInt32, typeSInt64, typeIEEE64BitFloatingPoint, typeType,
          typeEnumerated, typeText, typeUnicodeText, typeUTF8Text, typeData, typeProcessSerialNumber}) {
        const auto converted = desc.coerced(type);
        if (converted && converted->descriptorType() != type)
            __builtin_trap();
    }
    for (qsizetype i = 0; i < desc.count(); ++i)
        convertAll(desc.at(i));
}
} // namespace

// A flattened event: whatever is taken is what flatten writes, byte for byte.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    AEDesc desc;
    if (AEDesc::unflatten(bytes, &desc) != noErr)
        return 0;
    QByteArray again;
    if (desc.flatten(&again) != noErr || again != bytes)
        __builtin_trap();
    convertAll(desc);
    return 0;
}
