// SPDX-License-Identifier: MIT
#pragma once

/// The function `dozely.sendEvent`, with which scripts send Apple events (docs/scripts.md).
namespace EventScriptFunction
{
/// Gives it to scripts that are compiled from now on, beside the functions of the library.
void registerFunction();
} // namespace EventScriptFunction
