// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/UserNotificationPresenter.h"

#include <QList>

/// Writes down what it is to show; what becomes of it is the test's to say, through `events`.
class FakeUserNotificationPresenter : public dozely::UserNotificationPresenter
{
public:
    void setEvents(Events newEvents) override { events = std::move(newEvents); }
    void show(const Notification &notification) override { shown += notification; }
    void close(const Notification &notification) override { closed += notification; }

    Events events;
    QList<Notification> shown;
    QList<Notification> closed;
};
