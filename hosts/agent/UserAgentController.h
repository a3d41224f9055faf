// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/PlugInLoader.h"
#include "hosts/common/RunningActions.h"

#include <QObject>

struct ReceivedEvent;
class WDUserAgentPlugIn;

/// The agent's work: performs, in the session of its user, what the daemon hands over. Orders are taken from
/// the system alone; code is loaded from folders of the system's owner and from the user's own folder of
/// plug-ins.
class UserAgentController : public QObject
{
    Q_OBJECT
public:
    /// Listens for events from now on.
    UserAgentController();

    /// Interrupts the actions that go on.
    ~UserAgentController() override;

private:
    void userAgentMustAct(const ReceivedEvent &event);
    std::shared_ptr<WDUserAgentPlugIn> makePlugIn(const QString &bundlePath, QString *error);

    PlugInLoader m_loader; // outlives the plug-in objects
    RunningActions m_running;
};
