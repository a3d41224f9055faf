// SPDX-License-Identifier: MIT
#pragma once

#include "plugins/common/session/OwnSession.h"
#include "plugins/common/session/SessionAction.h"
#include "plugins/common/session/SessionServices.h"

#include <chrono>

/// Logs the user out: in good order by the desktop, whose programs may object; where no desktop can be asked,
/// and with the parameter "Force" = 1 when the session is still there after a minute, the login manager ends
/// it.
class LogOutUserAgentPlugIn : public SessionAction
{
    Q_OBJECT
public:
    static constexpr std::chrono::minutes patience{1};

    LogOutUserAgentPlugIn();

protected:
    void begin() override;

private:
    void terminate();

    OwnSession m_session;
    SessionServices m_desktops;
};
