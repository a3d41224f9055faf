// SPDX-License-Identifier: MIT
#include "Theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

void Theme::set(bool dark)
{
    QApplication::setStyle(QStyleFactory::create("Fusion")); // which takes all its colours from the palette
    const QColor ground(dark ? "#2d2f33" : "#efefef");
    QPalette palette(QColor(dark ? "#3a3d42" : "#e6e6e6"), ground);
    palette.setColor(QPalette::Base, QColor(dark ? "#1e1f22" : "#ffffff"));
    palette.setColor(QPalette::AlternateBase, QColor(dark ? "#26282c" : "#f4f6f8"));
    palette.setColor(QPalette::Highlight, QColor(dark ? "#3d6fb4" : "#3374d6"));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    QApplication::setPalette(palette);
}
