// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// The colours in which the gallery shows everything.
namespace Theme
{
/// The desktop's own, and others to compare with.
enum Look { Desktop, Light, Dark, HighContrast };

/// The names of the looks, for a command line and for a person, in the order of the enumeration.
QStringList names();

/// For the whole application, from now on. Until the first call the look is the desktop's.
void set(Look look);
} // namespace Theme
