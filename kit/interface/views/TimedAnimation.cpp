// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/views/TimedAnimation_p.h"

#include "DozelyKit/core/foundation/Clock.h"

#include <algorithm>
#include <utility>

namespace dozely
{

using std::chrono::milliseconds;

void TimedAnimation::start(milliseconds duration, Step step, Completion completion)
{
    stop();
    m_run = std::make_unique<QObject>();
    m_begin = Port<Clock>::current()->steadyTime();
    m_duration = duration;
    m_step = std::move(step);
    m_completion = std::move(completion);
    advance();
}

void TimedAnimation::stop()
{
    ++m_runs;
    m_run.reset();
    m_step = nullptr;
    m_completion = nullptr;
}

void TimedAnimation::advance()
{
    const auto clock = Port<Clock>::current();
    const milliseconds passed = clock->steadyTime() - m_begin;
    if (passed >= m_duration) {
        const Completion completion = std::exchange(m_completion, nullptr);
        stop();
        completion();
        return;
    }
    const quint64 run = m_runs;
    const Step step = m_step; // which may stop this animation, or start another
    step(static_cast<double>(passed.count()) / static_cast<double>(m_duration.count()));
    if (run == m_runs)
        clock->callAfter(std::min(stepTime, m_duration - passed), m_run.get(), [this] { advance(); });
}

} // namespace dozely
