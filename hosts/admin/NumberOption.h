// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

class AdminOptions;

/// The option that says how many to show.
namespace NumberOption
{
/// `-n`, 1 to 100,000; `usual` without it. Raises AdminError when it is no such number.
qsizetype read(const AdminOptions &options, qsizetype usual);
} // namespace NumberOption
