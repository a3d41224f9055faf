// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>

class QWidget;

namespace dozely
{

/// The colours of the platform, as they are in a view; without one, as they are in the application.
namespace ViewPalette
{
QPalette of(const QWidget *view);

/// The standard text colour, whether the view has the focus or not.
QColor textColor(const QWidget *view);

/// The grey of texts that cannot be used now.
QColor grayColor(const QWidget *view);

Qt::LayoutDirection layoutDirection(const QWidget *view);
} // namespace ViewPalette

} // namespace dozely
