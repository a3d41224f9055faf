// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// What a person, or a screen reader, has of a widget and all in it, as text: a line for each, indented below
/// its parent, with its class, object name, place, and what of it is not as Qt makes it: texts, focus,
/// limits, colours, shortcuts, items. What is hidden is named and not described. At the end the order in
/// which Tab goes.
///
/// The widget should be laid out. Its own position is not in it.
QString describe(const QWidget &widget);
