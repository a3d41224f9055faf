// SPDX-License-Identifier: MIT
#include "Theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace
{
QPalette paletteOf(Theme::Look look)
{
    if (look == Theme::HighContrast) {
        // On a black ground the style would draw its frames in black.
        QPalette palette(Qt::white, Qt::white);
        for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
            palette.setColor(role, Qt::black);
            palette.setColor(QPalette::Disabled, role, QColor("#595959"));
        }
        palette.setColor(QPalette::Base, Qt::white);
        palette.setColor(QPalette::AlternateBase, QColor("#f0f0f0"));
        // Under black text as well: that of schedules stays what it is when they are selected.
        palette.setColor(QPalette::Highlight, Qt::yellow);
        palette.setColor(QPalette::HighlightedText, Qt::black);
        return palette;
    }
    const bool dark = look == Theme::Dark;
    const QColor ground(dark ? "#2d2f33" : "#efefef");
    QPalette palette(QColor(dark ? "#3a3d42" : "#e6e6e6"), ground);
    palette.setColor(QPalette::Base, QColor(dark ? "#1e1f22" : "#ffffff"));
    palette.setColor(QPalette::AlternateBase, QColor(dark ? "#26282c" : "#f4f6f8"));
    palette.setColor(QPalette::Highlight, QColor(dark ? "#3d6fb4" : "#3374d6"));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}
} // namespace

QStringList Theme::names()
{
    return {"desktop", "light", "dark", "high-contrast"};
}

void Theme::set(Look look)
{
    static const QString desktopsStyle = QApplication::style()->name();
    // Fusion takes all its colours from the palette.
    QApplication::setStyle(QStyleFactory::create(look == Desktop ? desktopsStyle : QString("Fusion")));
    QApplication::setPalette(look == Desktop ? QPalette() : paletteOf(look));
}
