// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>

/// What pictures depend on, the same on every machine.
namespace InterfaceEnvironment
{
/// Before the application object is made: the platform plug-in, the font of the tests and nothing that a
/// user's environment says about scale, style or theme.
void prepare(const QByteArray &platform);

/// After it was made: style, font, light palette.
void settle();

QPalette lightPalette();
QPalette darkPalette();
} // namespace InterfaceEnvironment
