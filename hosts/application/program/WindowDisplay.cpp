// SPDX-License-Identifier: MIT
#include "hosts/application/program/WindowDisplay.h"

#include <QByteArray>
#include <QGuiApplication>

namespace
{
constexpr char platformVariable[] = "QT_QPA_PLATFORM";
constexpr char nothing[] = "offscreen";

bool wasChosen = false; // here, not by the environment
} // namespace

bool WindowDisplay::isNamed()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty(platformVariable);
}

void WindowDisplay::choose()
{
    if (!qEnvironmentVariableIsEmpty(platformVariable))
        return;
    QByteArrayList platforms;
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        platforms += "wayland";
    if (!qEnvironmentVariableIsEmpty("DISPLAY"))
        platforms += "xcb";
    platforms += nothing;
    qputenv(platformVariable, platforms.join(';'));
    wasChosen = true;
}

bool WindowDisplay::isThere()
{
    if (wasChosen)
        qunsetenv(platformVariable); // what this process starts chooses for itself
    return !wasChosen || QGuiApplication::platformName() != nothing;
}
