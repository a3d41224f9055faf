// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/admin/CommandTable.h"

#include <QString>

/// What `--help` shows of the tool, in the person's language.
namespace AdminHelp
{
/// What it does, its commands, all options, and how it ends.
QString ofTool();

/// One command alone: how it is called, what it does, its options, an example, and how it ends.
QString of(const CommandTable::Command &command);
} // namespace AdminHelp
