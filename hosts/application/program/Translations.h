// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// The window's texts in the user's language.
namespace Translations
{
/// Has texts of this program and of Qt's own translated from now on, into the first of the languages
/// ("de", "pt-BR") that there is a translation for; English where there is none. Sets the direction of
/// reading. Needs the application object.
void install(const QStringList &languages);
} // namespace Translations
