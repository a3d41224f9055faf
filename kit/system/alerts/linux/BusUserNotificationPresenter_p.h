// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/UserNotificationPresenter.h"
#include "DozelyKit/system/alerts/linux/UserNotificationServer_p.h"

#include <vector>

namespace dozely
{

/// Shows alerts as notifications of the desktop: keeps which alert has which id at the server.
///
/// Signals that name no id of ours are not kept, so other clients' notifications cost nothing. Memory is a
/// few words for each alert of ours that shows.
class DOZELYKIT_AUTOTEST_EXPORT BusUserNotificationPresenter : public UserNotificationPresenter
{
public:
    BusUserNotificationPresenter();
    ~BusUserNotificationPresenter() override;

    void setEvents(Events events) override { m_events = std::move(events); }
    void show(const Notification &notification) override;
    void close(const Notification &notification) override;

private:
    struct Alert {
        Notification notification;
        UserNotificationServer::Content content; // as it was when it was last delivered
        quint32 id = 0;                          // at the server; 0 while it has none
        bool isWaiting = true;                   // the content is to be sent
        bool isSent = false;                     // the server has not answered yet
        bool isWithdrawn = false;                // to be closed once the server has answered
    };
    using AlertPointer = std::shared_ptr<Alert>;

    AlertPointer find(const Notification &notification) const;
    AlertPointer find(quint32 id) const;
    void send(const AlertPointer &alert);
    void sendWaiting();
    void serverHasAnswered(const AlertPointer &alert, const Result<quint32> &id);
    void serverHasClosed(quint32 id);
    void serverHasCancelled(quint32 id);
    void dropAll(const QString &why);

    Events m_events;
    std::vector<AlertPointer> m_alerts;
    UserNotificationServer m_server;
};

} // namespace dozely
