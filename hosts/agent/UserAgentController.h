// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/agent/AgentOrder.h"
#include "hosts/agent/AlertDetails.h"
#include "hosts/agent/AlertKeeper.h"
#include "hosts/agent/FailureNotices.h"
#include "hosts/agent/Postponement.h"
#include "hosts/agent/SessionActions.h"
#include "hosts/agent/TestAlert.h"
#include "hosts/common/plugins/PlugInLoader.h"

#include <QObject>

struct ReceivedOrder;
class WDUserAgentPlugIn;

/// The agent's work: announces, in the session of its user, what the daemon is about to perform, and has
/// performed what the daemon hands over. Orders are taken from the system alone; code is loaded from folders
/// of the system's owner and from the user's own folder of plug-ins.
///
/// When it goes, the alerts are withdrawn, and the actions that go on asked to end.
class UserAgentController : public QObject
{
    Q_OBJECT
public:
    /// Listens for orders from now on.
    UserAgentController();

    /// Asks the daemon for what it had announced to an agent before this one. BLOCKING: as a request of
    /// WDCommunicationCenter.
    static void askForAnnouncements();

    /// Whether this alert announces an action that the daemon may be asked to put off.
    bool mayBePutOff(const std::shared_ptr<NSUserNotification> &alert) const;

    /// What there is to say of the action that this alert announces; nothing for any other alert.
    AlertDetails detailsOf(const std::shared_ptr<NSUserNotification> &alert) const;

    /// Asks the daemon to put off what the alert announces, and withdraws the alert when the daemon does;
    /// otherwise the log says so, and false comes back. BLOCKING: as a request of
    /// WDCommunicationCenter.
    bool putOff(const std::shared_ptr<NSUserNotification> &alert, Postponement choice);

private:
    /// Absent, with a line in the log, when the order is refused.
    static std::optional<AgentOrder> orderIn(const ReceivedOrder &received);

    void userAgentMustPrepare(const ReceivedOrder &received);
    void userAgentMustAct(const ReceivedOrder &received);
    void userAgentMustAnticipate(const ReceivedOrder &received);
    void userAgentMustWithdraw(const ReceivedOrder &received);
    void userAgentMustTellFailure(const ReceivedOrder &received);
    void userAgentMustTestAlert(const ReceivedOrder &received);
    dozely::Result<std::shared_ptr<WDUserAgentPlugIn>> makePlugIn(const QString &bundlePath);

    PlugInLoader m_loader; // outlives the plug-in objects
    AlertKeeper m_alerts;
    SessionActions m_actions;
    FailureNotices m_failures;
    TestAlert m_testAlert;
};
