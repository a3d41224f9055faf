// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/views/ViewPalette_p.h"

#include <QGuiApplication>
#include <QWidget>

namespace dozely
{

QPalette ViewPalette::of(const QWidget *view)
{
    return view ? view->palette() : QGuiApplication::palette();
}

QColor ViewPalette::textColor(const QWidget *view)
{
    return of(view).color(QPalette::Active, QPalette::Text);
}

QColor ViewPalette::grayColor(const QWidget *view)
{
    return of(view).color(QPalette::Disabled, QPalette::Text);
}

Qt::LayoutDirection ViewPalette::layoutDirection(const QWidget *view)
{
    return view ? view->layoutDirection() : QGuiApplication::layoutDirection();
}

} // namespace dozely
