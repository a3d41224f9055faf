// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

namespace dozely
{

/// Something that changes evenly for a while, then is complete. Time comes from the port Clock.
///
/// THREADING: the main thread.
class DOZELYINTERFACE_AUTOTEST_EXPORT TimedAnimation
{
public:
    /// The time between two steps: finer than any common screen's, so that no frame of a screen lacks one.
    static constexpr std::chrono::milliseconds stepTime{8};

    /// Called with a progress from 0 to below 1.
    using Step = std::function<void(double progress)>;
    using Completion = std::function<void()>;

    TimedAnimation() = default;
    TimedAnimation(const TimedAnimation &) = delete;
    TimedAnimation &operator=(const TimedAnimation &) = delete;

    /// Steps at once and from the event loop; calls `completion` once `duration` has passed, at once when
    /// that is 0. An animation that goes on is dropped without completion. `completion` may destroy this
    /// object.
    void start(std::chrono::milliseconds duration, Step step, Completion completion);

    /// Drops what goes on, without completion.
    void stop();

    bool isRunning() const { return m_run != nullptr; }

private:
    void advance();

    std::unique_ptr<QObject> m_run; // context of the timer: what is due of an earlier run dies with it
    quint64 m_runs = 0;             // tells a step that its run is over
    std::chrono::milliseconds m_begin{0};
    std::chrono::milliseconds m_duration{0};
    Step m_step;
    Completion m_completion;
};

} // namespace dozely
