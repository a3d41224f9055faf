// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/broadcast/DistributedNotifications.h"
#include "DozelyKit/core/broadcast/linux/DistributedQuota_p.h"

#include <vector>

namespace dozely
{

class DistributedBus;

/// Distributed notifications as signals of the message buses: to the own session on the session bus, to all
/// sessions on the system bus, whose stock policy lets every user broadcast and hear signals. Both are
/// listened to.
class DOZELYKIT_AUTOTEST_EXPORT DistributedSignals : public DistributedNotifications
{
public:
    DistributedSignals();
    ~DistributedSignals() override;

    bool post(const NSNotification &notification, Reach reach, bool deliverImmediately) override;
    std::unique_ptr<Listening> listen(std::function<void(const Posted &)> handler) override;

private:
    struct Private;
    class Listener;
    std::shared_ptr<Private> state();

    std::shared_ptr<Private> d; ///< Made at the first use, which is on the main thread.
};

} // namespace dozely
