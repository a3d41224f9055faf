// SPDX-License-Identifier: MIT
#pragma once

#include "plugins/common/session/OwnSession.h"
#include "plugins/common/session/SessionAction.h"
#include "plugins/common/session/SessionServices.h"

/// Locks the screen of the user's session: the login manager tells whatever locks it, and a program that does
/// so by itself is asked, too. To lock twice does no harm.
class LockScreenUserAgentPlugIn : public SessionAction
{
    Q_OBJECT
public:
    LockScreenUserAgentPlugIn();

protected:
    void begin() override;

private:
    OwnSession m_session;
    SessionServices m_lockers;
};
