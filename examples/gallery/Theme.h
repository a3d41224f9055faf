// SPDX-License-Identifier: MIT
#pragma once

/// The two looks in which the gallery shows everything.
namespace Theme
{
/// For the whole application, from now on.
void set(bool dark);
} // namespace Theme
