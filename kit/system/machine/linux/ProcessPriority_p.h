// SPDX-License-Identifier: MIT
#pragma once

namespace dozely::ProcessPriority
{

/// In a child between fork and exec: gives back the nice value that was there before it was raised. Neither
/// allocates nor locks.
void giveBackInChild();

} // namespace dozely::ProcessPriority
