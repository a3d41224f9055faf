// SPDX-License-Identifier: MIT
#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QString>

/// What `--help` shows of the tool.
namespace AdminHelp
{
/// What it does, its commands and how it ends.
QString description();

/// The options of all commands.
QList<QCommandLineOption> options();
} // namespace AdminHelp
