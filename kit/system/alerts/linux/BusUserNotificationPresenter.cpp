// SPDX-License-Identifier: MIT
#include "DozelyKit/system/alerts/linux/BusUserNotificationPresenter_p.h"

#include "DozelyKit/core/foundation/ProblemReport.h"

#include <algorithm>
#include <utility>

namespace dozely
{

using Failures = UserNotificationServer::Failures;

BusUserNotificationPresenter::BusUserNotificationPresenter()
    : m_server({
          .ready = [this] { sendWaiting(); },
          .absent = [this](const QString &why) { dropAll("An alert was not shown: " + why); },
          .lost =
              [this] { dropAll("The notification server has ended or been replaced: its alerts are gone"); },
          .closed = [this](quint32 id) { serverHasClosed(id); },
          .cancelled = [this](quint32 id) { serverHasCancelled(id); },
      })
{
}

BusUserNotificationPresenter::~BusUserNotificationPresenter() = default;

BusUserNotificationPresenter::AlertPointer
BusUserNotificationPresenter::find(const Notification &notification) const
{
    const auto found = std::ranges::find_if(m_alerts, [&](const AlertPointer &alert) {
        return alert->notification == notification && !alert->isWithdrawn;
    });
    return found == m_alerts.end() ? nullptr : *found;
}

BusUserNotificationPresenter::AlertPointer BusUserNotificationPresenter::find(quint32 id) const
{
    const auto found =
        id == 0 ? m_alerts.end()
                : std::ranges::find(m_alerts, id, [](const AlertPointer &alert) { return alert->id; });
    return found == m_alerts.end() ? nullptr : *found;
}

void BusUserNotificationPresenter::show(const Notification &notification)
{
    AlertPointer alert = find(notification);
    if (!alert) {
        alert = std::make_shared<Alert>();
        alert->notification = notification;
        m_alerts.push_back(alert);
    }
    alert->content = {notification->title(), notification->informativeText(),
                      notification->actionButtonTitle(), notification->soundName()};
    alert->isWaiting = true;
    if (m_server.isReady())
        send(alert);
    else
        m_server.need();
}

void BusUserNotificationPresenter::close(const Notification &notification)
{
    const AlertPointer alert = find(notification);
    if (!alert)
        return;
    if (alert->isSent) {
        alert->isWithdrawn = true; // its id is still to come
        return;
    }
    std::erase(m_alerts, alert);
    if (alert->id != 0)
        m_server.close(alert->id, Failures::Told);
}

void BusUserNotificationPresenter::sendWaiting()
{
    for (const AlertPointer &alert : std::vector(m_alerts))
        send(alert);
}

void BusUserNotificationPresenter::send(const AlertPointer &alert)
{
    // One at a time for each alert: the next one is to replace what this one shows, and needs its id.
    if (!alert->isWaiting || alert->isSent || alert->isWithdrawn)
        return;
    alert->isWaiting = false;
    alert->isSent = true;
    m_server.notify(alert->content, alert->id,
                    [this, alert](const Result<quint32> &id) { serverHasAnswered(alert, id); });
}

void BusUserNotificationPresenter::serverHasAnswered(const AlertPointer &alert, const Result<quint32> &id)
{
    alert->isSent = false;
    const quint32 replaced = alert->id;
    if (id) {
        alert->id = *id;
        // A server that does not replace shows both.
        if (replaced != 0 && replaced != *id)
            m_server.close(replaced, Failures::Ignored);
    }
    if (alert->isWithdrawn) {
        std::erase(m_alerts, alert);
        if (alert->id != 0)
            m_server.close(alert->id, Failures::Told);
        return;
    }
    const Notification notification = alert->notification;
    if (id) {
        m_events.shown(notification);
    } else {
        reportProblem("An alert was not shown: " + id.error().text);
        if (alert->id == 0 && !alert->isWaiting) {
            std::erase(m_alerts, alert);
            m_events.closed(notification);
        }
    }
    send(alert); // what was delivered meanwhile
}

void BusUserNotificationPresenter::serverHasClosed(quint32 id)
{
    const AlertPointer alert = find(id);
    if (!alert)
        return;
    alert->id = 0;
    if (alert->isSent)
        return; // shown afresh by what is on its way
    std::erase(m_alerts, alert);
    m_events.closed(alert->notification);
}

void BusUserNotificationPresenter::serverHasCancelled(quint32 id)
{
    const AlertPointer alert = find(id);
    if (!alert || alert->isWithdrawn)
        return;
    if (alert->isSent) {
        alert->isWithdrawn = true; // what replaces it is closed when it comes
        alert->id = 0;
    } else {
        std::erase(m_alerts, alert);
    }
    // Most servers have closed it by themselves.
    m_server.close(id, Failures::Ignored);
    m_events.activated(alert->notification);
}

void BusUserNotificationPresenter::dropAll(const QString &why)
{
    const auto dropped = std::exchange(m_alerts, {});
    if (std::ranges::any_of(dropped, [](const AlertPointer &alert) { return !alert->isWithdrawn; }))
        reportProblem(why);
    for (const AlertPointer &alert : dropped) {
        if (!alert->isWithdrawn)
            m_events.closed(alert->notification);
    }
}

template<>
std::shared_ptr<UserNotificationPresenter> &Port<UserNotificationPresenter>::current()
{
    static auto *const port =
        new std::shared_ptr<UserNotificationPresenter>(std::make_shared<BusUserNotificationPresenter>());
    return *port;
}

} // namespace dozely
