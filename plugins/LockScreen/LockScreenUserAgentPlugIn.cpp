// SPDX-License-Identifier: MIT
#include "plugins/LockScreen/LockScreenUserAgentPlugIn.h"

using namespace dozely;

namespace
{
SessionService locker(const QByteArray &name, const QByteArray &path)
{
    return {QString::fromLatin1(name), {name, path, name, "Lock"}};
}

QList<SessionService> lockers()
{
    SessionService withMessage = locker("org.cinnamon.ScreenSaver", "/org/cinnamon/ScreenSaver");
    withMessage.signature = "s";
    withMessage.arguments = {QString("")};
    return {locker("org.gnome.ScreenSaver", "/org/gnome/ScreenSaver"), withMessage,
            locker("org.mate.ScreenSaver", "/org/mate/ScreenSaver"),
            locker("org.xfce.ScreenSaver", "/org/xfce/ScreenSaver"),
            locker("org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver")};
}
} // namespace

LockScreenUserAgentPlugIn::LockScreenUserAgentPlugIn() : SessionAction("LockScreen"), m_lockers(lockers()) {}

void LockScreenUserAgentPlugIn::begin()
{
    m_session.call("Lock", [this](const Result<void> &byManager) {
        m_lockers.ask([this, byManager](const Result<void> &byDesktop) {
            if (byManager || byDesktop)
                end();
            else
                fail(QString("the screen was not locked: %1; %2")
                         .arg(byManager.error().text, byDesktop.error().text));
        });
    });
}
