// SPDX-License-Identifier: MIT
#pragma once

#include <span>

/// What the daemon and the library are known to say.
namespace KnownReasons
{
/// A text as its author writes it, where what is filled in has a number. A sentence ends with a full stop, a
/// clause does not.
struct Reason {
    const char *text;
    int firstReason = 0; ///< From this number on, what is filled in are reasons themselves; 0 for none.
};

/// The first that fits counts.
std::span<const Reason> all();
} // namespace KnownReasons
