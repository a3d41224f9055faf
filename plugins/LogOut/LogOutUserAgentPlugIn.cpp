// SPDX-License-Identifier: MIT
#include "plugins/LogOut/LogOutUserAgentPlugIn.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"

using namespace dozely;

namespace
{
/// Each without a question to the user of its own, but with one for programs that object.
QList<SessionService> desktops()
{
    constexpr quint32 withoutConfirmation = 1;
    constexpr bool showsDialog = false;
    constexpr bool mayBeSaved = true;
    return {{"org.gnome.SessionManager",
             {"org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager", "Logout"},
             "u",
             {withoutConfirmation}},
            {"org.kde.ksmserver", {"org.kde.Shutdown", "/Shutdown", "org.kde.Shutdown", "logout"}},
            {"org.xfce.SessionManager",
             {"org.xfce.SessionManager", "/org/xfce/SessionManager", "org.xfce.Session.Manager", "Logout"},
             "bb",
             {showsDialog, mayBeSaved}},
            {"org.lxqt.session", {"org.lxqt.session", "/LXQtSession", "org.lxqt.session", "logout"}}};
}
} // namespace

LogOutUserAgentPlugIn::LogOutUserAgentPlugIn() : SessionAction("LogOut"), m_desktops(desktops()) {}

void LogOutUserAgentPlugIn::begin()
{
    m_desktops.ask([this](const Result<void> &asked) {
        if (!asked) {
            ZDRLog("LogOut: the session is ended by the login manager: %@.",
                   logLabel(asked.error().text, wholeText));
            terminate();
        } else if (longIntegerParameter(PowerKey::force) == 1) {
            Port<Clock>::current()->callAfter(patience, this, [this] { terminate(); });
        } else {
            end();
        }
    });
}

void LogOutUserAgentPlugIn::terminate()
{
    m_session.call("Terminate", [this](const Result<void> &ended) {
        if (ended)
            end();
        else
            fail(QString("the session was not ended: %1").arg(ended.error().text));
    });
}
