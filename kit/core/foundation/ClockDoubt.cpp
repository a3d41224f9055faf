// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ClockDoubt.h"

#include "DozelyKit/core/foundation/Clock.h"

namespace dozely
{

using std::chrono::milliseconds;

namespace
{
/// A clock that is being adjusted runs a little faster or slower; that is no jump.
constexpr milliseconds largestDrift(1000);
} // namespace

ClockDoubt::ClockDoubt(const Clock &clock) : m_clock(clock), m_seen(offset())
{
    if (clock.isSynchronised()) {
        m_believed = m_seen;
        return;
    }
    m_since = m_stoodSince = clock.bootTime();
    m_until = clock.currentDate().addDuration(-largestStep);
}

milliseconds ClockDoubt::offset() const
{
    return milliseconds(m_clock.currentDate().toMSecsSinceEpoch()) - m_clock.bootTime();
}

std::chrono::seconds ClockDoubt::step() const
{
    return m_believed ? std::chrono::duration_cast<std::chrono::seconds>(m_seen - *m_believed)
                      : std::chrono::seconds(0);
}

void ClockDoubt::look()
{
    const milliseconds now = m_clock.bootTime();
    const milliseconds former = m_seen;
    m_seen = offset();
    if (m_believed && std::chrono::abs(m_seen - *m_believed) <= largestStep) {
        believe();
        return;
    }
    if (!m_since)
        m_since = now;
    if (std::chrono::abs(m_seen - former) > largestDrift) {
        m_stoodSince = now;
        m_until = !m_believed || m_seen > *m_believed ? m_clock.currentDate() : QDateTime();
    }
    if (m_clock.isSynchronised() || now - m_stoodSince >= timeToStand)
        believe();
}

void ClockDoubt::believe()
{
    m_believed = m_seen;
    if (!m_since)
        return;
    if (m_until.isValid())
        m_excuse = {m_until, m_clock.bootTime() - *m_since};
    m_since.reset();
    m_until = {};
}

} // namespace dozely
