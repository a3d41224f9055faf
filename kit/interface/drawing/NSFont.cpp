// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/NSFont.h"

#include <QFontInfo>
#include <QGuiApplication>

#include <algorithm>

namespace
{
constexpr double usualSystemFontSize = 13;
} // namespace

double NSFont::smallSystemFontSize()
{
    // With the resolution of the screen, by which desktops make all fonts larger.
    const int size = QFontInfo(QGuiApplication::font()).pixelSize();
    return usualSmallSystemFontSize * std::max(1.0, size / usualSystemFontSize);
}

QFont NSFont::userFontOfSize(double size)
{
    QFont font(QGuiApplication::font().family());
    font.setPixelSize(qRound(size));
    return font;
}
