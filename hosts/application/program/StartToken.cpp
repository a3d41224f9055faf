// SPDX-License-Identifier: MIT
#include "hosts/application/program/StartToken.h"

#include "DozelyKit/interface/windows/ActivationX11.h"

#include <QGuiApplication>
#include <QWidget>

using namespace dozely;

namespace
{
constexpr char waylandVariable[] = "XDG_ACTIVATION_TOKEN";
constexpr char x11Variable[] = "DESKTOP_STARTUP_ID";
} // namespace

QString StartToken::ofThisStart()
{
    const QString token = qEnvironmentVariable(waylandVariable);
    return token.isEmpty() ? qEnvironmentVariable(x11Variable) : token;
}

std::optional<quint32> StartToken::timeOf(const QString &startupIdentifier)
{
    const QString mark = "_TIME";
    const qsizetype place = startupIdentifier.lastIndexOf(mark);
    if (place < 0)
        return {};
    bool isNumber = false;
    const quint32 time = startupIdentifier.mid(place + mark.size()).toUInt(&isNumber);
    return isNumber ? std::optional(time) : std::nullopt;
}

void StartToken::activate(QWidget &widget, const QString &token)
{
    const bool isWayland = QGuiApplication::platformName().startsWith("wayland");
    if (isWayland && !token.isEmpty())
        qputenv(waylandVariable, token.toUtf8()); // where Qt looks for it
    widget.activateWindow();
    qunsetenv(waylandVariable); // it is good for once, and no business of what is started from here
    if (const auto time = timeOf(token); time && !isWayland)
        ActivationX11::activate(widget.windowHandle(), *time);
}
