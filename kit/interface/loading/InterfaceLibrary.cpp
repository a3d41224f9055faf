// SPDX-License-Identifier: MIT
// What happens when a process loads this library.
#include "DozelyKit/core/bundles/NSBundle.h"

namespace
{
const char inThisLibrary = 0;

/// The classes of this library lie in the kit's own bundle, as do its images.
[[maybe_unused]] const bool registered = [] {
    NSBundle::registerPartOfKit(&inThisLibrary);
    return true;
}();
} // namespace
