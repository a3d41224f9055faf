// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

/// The application's icon: a moon before an evening sky, and the hands of a clock.
namespace AppIcon
{
/// That of the desktop's theme, where it was installed and can be read, else the same painted here.
QIcon icon();

/// The painted one.
QIcon painted();
} // namespace AppIcon
