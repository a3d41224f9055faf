// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A text that comes from elsewhere, fit to stand within one log line: control and separator characters
/// become blanks, what goes beyond 200 characters is cut.
QString logLabel(const QString &text);
