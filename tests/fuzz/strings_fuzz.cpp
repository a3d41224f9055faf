// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/StringsFile_p.h"

#include <cstdint>
#include <cstdlib>

using namespace dozely;

/// Whatever bytes are read as a table of texts: reading ends, with a table or with a sentence.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto table = StringsFile::parse(bytes);
    if (!table && table.error().text.isEmpty())
        std::abort();
    return 0;
}
