// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/broadcast/DistributedNotifications.h"

/// Notes what is posted; the test says what is heard. For one listener.
class FakeDistributedNotifications : public dozely::DistributedNotifications
{
public:
    struct Post {
        NSNotification notification;
        Reach reach;
        bool deliverImmediately;
    };

    bool post(const NSNotification &notification, Reach reach, bool deliverImmediately) override
    {
        posts += Post{notification, reach, deliverImmediately};
        return true;
    }

    std::unique_ptr<Listening> listen(std::function<void(const Posted &)> handler) override
    {
        hear = std::move(handler);
        return std::make_unique<Running>(*this);
    }

    QList<Post> posts;
    std::function<void(const Posted &)> hear; ///< Null when nobody listens.
    QStringList names;
    bool everyName = false;

private:
    class Running : public Listening
    {
    public:
        explicit Running(FakeDistributedNotifications &bus) : m_bus(bus) {}
        ~Running() override { m_bus.hear = nullptr; }
        Running(const Running &) = delete;
        Running &operator=(const Running &) = delete;
        void setNames(const QStringList &wanted, bool every) override
        {
            m_bus.names = wanted;
            m_bus.everyName = every;
        }

    private:
        FakeDistributedNotifications &m_bus;
    };
};
