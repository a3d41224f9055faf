// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// Runs xdotool with these arguments to its end, on the display that DISPLAY names. Points are those of its
/// screen, in pixels. The windows of this process go on being served: some commands wait for what they cause.
void xdotool(const QStringList &arguments);
