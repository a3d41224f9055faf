// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/ScriptEngine_p.h"

#include <cstdint>
#include <cstdlib>

using namespace dozely;

/// Whatever bytes lie in a script's file: loading ends, and so does running what was loaded, within the
/// limits, with a result or a sentence.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto source = ScriptEngine::sourceInFile(bytes);
    if (!source) {
        if (source.error().text.isEmpty())
            std::abort();
        return 0;
    }
    NSAppleScript::Limits limits;
    limits.instructions = 20'000;
    limits.memory = 1 << 20;
    const auto made = ScriptEngine::make(
        limits, {{"take", [](const QVariantList &arguments) { return QVariant(arguments); }}});
    if (!made)
        std::abort();
    ScriptEngine &engine = **made;
    if (const auto compiled = engine.compile(*source, "fuzz"); !compiled) {
        if (compiled.error().text.isEmpty())
            std::abort();
        return 0;
    }
    if (const auto result = engine.execute(); !result && result.error().text.isEmpty())
        std::abort();
    return 0;
}
