// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that adds a schedule.
namespace AddCommand
{
/// Adds the schedule that the options describe and prints its identifier. Raises AdminError when the
/// description is wrong or the store cannot be changed.
void run(const AdminOptions &options);
} // namespace AddCommand
