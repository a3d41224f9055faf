// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QSocketNotifier;
class QTimer;

namespace dozely
{

/// Has Qt's event loop look at a file descriptor and at a moment in time for somebody who does his own input
/// and output.
///
/// THREADING: belongs to the thread that made it, which needs an event loop; `wake` is called from that loop
/// alone, never from within a function of this class. LIFETIME: `wake` may do anything, destroy this object
/// included. The descriptor stays the caller's, who closes it after this has let go of it: its number may
/// soon be somebody else's. Nothing blocks.
class DOZELYKIT_EXPORT DescriptorWatch
{
public:
    using Moment = std::chrono::steady_clock::time_point;

    /// `wake` is called whenever the descriptor has what was asked for, and once the deadline has come.
    explicit DescriptorWatch(std::function<void()> wake);
    ~DescriptorWatch();
    DescriptorWatch(const DescriptorWatch &) = delete;
    DescriptorWatch &operator=(const DescriptorWatch &) = delete;

    /// From now on looks at this descriptor, -1 for none, and for these poll events: POLLIN, POLLOUT, both,
    /// or 0 for nothing.
    void watch(int descriptor, short events);

    /// From now on the deadline is this one; a moment that has passed comes with the loop's next turn.
    void setDeadline(std::optional<Moment> deadline);

private:
    void notify(std::unique_ptr<QSocketNotifier> &notifier, int type, bool isWanted);
    void arm(Moment moment);
    void timedOut();

    const std::function<void()> m_wake;
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_readable; ///< Null until it is needed, as are the others.
    std::unique_ptr<QSocketNotifier> m_writable;
    std::unique_ptr<QTimer> m_timer;
    std::optional<Moment> m_deadline;
    std::optional<Moment> m_armed; ///< When the timer fires.
};

} // namespace dozely
