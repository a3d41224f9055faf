// SPDX-License-Identifier: MIT
#pragma once

class AlertWindow;

/// What a screen reader learns of an alert: its window has the role of an alert, and all that it says as its
/// description, and is announced when it appears. THREADING: the main thread.
namespace AlertAccessible
{
/// Once in a process; again does no harm.
void install();

/// For a window that has just appeared.
void announce(AlertWindow &window);
} // namespace AlertAccessible
