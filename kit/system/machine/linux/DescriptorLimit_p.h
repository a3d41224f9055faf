// SPDX-License-Identifier: MIT
#pragma once

namespace dozely::DescriptorLimit
{

/// In a child between fork and exec: gives back the limit that was there before it was raised. Neither
/// allocates nor locks.
void giveBackInChild();

} // namespace dozely::DescriptorLimit
