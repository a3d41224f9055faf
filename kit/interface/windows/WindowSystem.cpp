// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/WindowSystem_p.h"

#include "DozelyKit/interface/windows/X11Windows_p.h"

#include <QGuiApplication>
#include <QWindow>

namespace dozely
{

namespace
{
bool isWayland()
{
    return QGuiApplication::platformName().startsWith("wayland");
}
} // namespace

bool WindowSystem::blendsWindows()
{
    return !X11Windows::areUsed() || X11Windows::haveCompositor();
}

bool WindowSystem::hasWindowOpacity()
{
    return X11Windows::areUsed();
}

void WindowSystem::flush()
{
    if (X11Windows::areUsed())
        X11Windows::flush();
}

bool WindowSystem::placesWindows()
{
    return !isWayland();
}

bool WindowSystem::moveByCompositor(QWindow *window)
{
    return window && window->startSystemMove();
}

bool WindowSystem::resizeByCompositor(QWindow *window)
{
    return window && window->startSystemResize(Qt::BottomEdge | Qt::RightEdge);
}

void WindowSystem::setJoinsAllDesktops(QWindow *window, bool joins)
{
    if (X11Windows::areUsed())
        X11Windows::setJoinsAllDesktops(window, joins);
}

void WindowSystem::setHasShadow(QWindow *window, bool hasShadow)
{
    if (X11Windows::areUsed())
        X11Windows::setHasShadow(window, hasShadow);
}

} // namespace dozely
