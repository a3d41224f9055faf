// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace dozely
{

/// Port: notifications from one process to others, whoever they are.
///
/// Anybody can post anything. All that can be believed of a notification is the user id beside it.
///
/// THREADING: the main thread, with an event loop for what is heard.
class DOZELYKIT_EXPORT DistributedNotifications
{
public:
    /// Who is to hear a notification.
    enum class Reach {
        Session,     ///< The processes of this login session.
        AllSessions, ///< Those of every session, and of none.
    };

    /// A notification that came.
    struct Posted {
        NSNotification notification;
        bool deliverImmediately = false; ///< Whether it is for those, too, that are suspended.
        std::optional<quint32>
            sender; ///< The user id of who posted it; absent when it could not be found out.
    };

    /// Hearing ends when this is destroyed.
    class Listening
    {
    public:
        virtual ~Listening() = default;
        /// What is heard from now on: notifications of these names, or of every name.
        virtual void setNames(const QStringList &names, bool everyName) = 0;
    };

    virtual ~DistributedNotifications() = default;

    /// Posts the notification. False, after a line that says why (reportProblem), when it could not be handed
    /// over: its values cannot travel or are too large, or there is nothing to post to. BLOCKING: until it
    /// has been handed over, two seconds at most.
    virtual bool post(const NSNotification &notification, Reach reach, bool deliverImmediately) = 0;

    /// Hears what is posted; `handler` is called from the event loop and may do anything.
    virtual std::unique_ptr<Listening> listen(std::function<void(const Posted &)> handler) = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<DistributedNotifications> &Port<DistributedNotifications>::current();

} // namespace dozely
