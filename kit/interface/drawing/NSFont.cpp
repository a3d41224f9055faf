// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/NSFont.h"

#include <QGuiApplication>

double NSFont::smallSystemFontSize()
{
    return 11;
}

QFont NSFont::userFontOfSize(double size)
{
    QFont font(QGuiApplication::font().family());
    font.setPixelSize(qRound(size));
    return font;
}
