// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Makes the folder and those above it that are missing, writable for their owner alone. True when it is
/// there afterwards.
bool makeTrustedFolder(const QString &folder);
