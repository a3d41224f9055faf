// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/admin/CommandTable.h"

#include <QCommandLineOption>
#include <QList>
#include <QString>

/// What `--help` shows of the tool.
namespace AdminHelp
{
/// What it does, its commands and how it ends.
QString description();

/// One command alone, with its options.
QString of(const CommandTable::Command &command);

/// The options of all commands.
QList<QCommandLineOption> options();
} // namespace AdminHelp
