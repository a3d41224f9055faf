// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/NSUserNotification.h"
#include "plugins/common/session/SessionAction.h"

/// Shows a text to the user, with a sound where the desktop plays it: as a notification of the desktop, or in
/// a window where it has none. The action is over once the text is there; the text stays until it is
/// dismissed.
class MessageUserAgentPlugIn : public SessionAction
{
    Q_OBJECT
public:
    MessageUserAgentPlugIn() : SessionAction("Message") {}

protected:
    void begin() override;

private:
    void showInWindow();

    std::shared_ptr<NSUserNotification> m_message;
};
