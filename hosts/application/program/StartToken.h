// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

class QWidget;

/// By what a desktop knows that a program was started by a person: its window may then come to the front.
/// Wayland calls it an activation token, X11 a startup identifier. A second start hands its own to the first,
/// which shows its window in its stead.
namespace StartToken
{
/// The one that this process was started with; empty without. Before the application object is made, which
/// takes it away.
QString ofThisStart();

/// Makes the widget's window, which is shown, the active one, by the token if there is one.
/// THREADING: the main thread.
void activate(QWidget &widget, const QString &token);

/// When the person acted, as the X server counts it: what a startup identifier ends with; absent where it
/// does not say so.
std::optional<quint32> timeOf(const QString &startupIdentifier);
} // namespace StartToken
