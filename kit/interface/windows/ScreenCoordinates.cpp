// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/ScreenCoordinates_p.h"

#include <QGuiApplication>
#include <QScreen>

namespace dozely
{

namespace
{
/// Qt's coordinates of the kit's origin.
QPointF origin()
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    const QRectF frame = screen ? QRectF(screen->geometry()) : QRectF();
    return {frame.x(), frame.y() + frame.height()};
}
} // namespace

QPointF ScreenCoordinates::toKit(const QPointF &qtPoint)
{
    const QPointF corner = origin();
    return {qtPoint.x() - corner.x(), corner.y() - qtPoint.y()};
}

QRectF ScreenCoordinates::toKit(const QRectF &qtRect)
{
    return {toKit(QPointF(qtRect.x(), qtRect.y() + qtRect.height())), qtRect.size()};
}

QRect ScreenCoordinates::toQt(const QRectF &kitRect)
{
    const QPointF corner = origin();
    const int left = qRound(kitRect.x() + corner.x());
    const int right = qRound(kitRect.x() + kitRect.width() + corner.x());
    const int upper = qRound(corner.y() - kitRect.y() - kitRect.height());
    const int lower = qRound(corner.y() - kitRect.y());
    return {left, upper, right - left, lower - upper};
}

QRectF ScreenCoordinates::mainScreenFrame()
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    return screen ? toKit(QRectF(screen->geometry())) : QRectF();
}

} // namespace dozely
