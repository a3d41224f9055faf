// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DescriptorWatch.h"

#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <limits>
#include <poll.h>

namespace dozely
{

using std::chrono::milliseconds;

DescriptorWatch::DescriptorWatch(std::function<void()> wake) : m_wake(std::move(wake)) {}

DescriptorWatch::~DescriptorWatch() = default;

void DescriptorWatch::watch(int descriptor, short events)
{
    if (descriptor != m_descriptor) {
        m_readable.reset();
        m_writable.reset();
        m_descriptor = descriptor;
    }
    notify(m_readable, QSocketNotifier::Read, (events & POLLIN) != 0);
    notify(m_writable, QSocketNotifier::Write, (events & POLLOUT) != 0);
}

void DescriptorWatch::notify(std::unique_ptr<QSocketNotifier> &notifier, int type, bool isWanted)
{
    if (notifier) {
        notifier->setEnabled(isWanted);
    } else if (isWanted && m_descriptor >= 0) {
        notifier = std::make_unique<QSocketNotifier>(m_descriptor, static_cast<QSocketNotifier::Type>(type));
        QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] {
            const auto wake = m_wake; // which may end this object, and what it is called from
            wake();
        });
    }
}

// The timer is left alone when it fires soon enough: most deadlines are met and never looked at again.
void DescriptorWatch::setDeadline(std::optional<Moment> deadline)
{
    m_deadline = deadline;
    if (!deadline) {
        if (std::exchange(m_armed, std::nullopt))
            m_timer->stop();
    } else if (!m_armed || *deadline < *m_armed) {
        arm(*deadline);
    }
}

void DescriptorWatch::arm(Moment moment)
{
    if (!m_timer) {
        m_timer = std::make_unique<QTimer>();
        m_timer->setSingleShot(true);
        QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this] { timedOut(); });
    }
    const Moment now = std::chrono::steady_clock::now();
    constexpr milliseconds longest(std::numeric_limits<int>::max());
    const auto left = moment <= now ? milliseconds(0) : std::chrono::ceil<milliseconds>(moment - now);
    m_armed = moment;
    m_timer->start(std::min(left, longest));
}

void DescriptorWatch::timedOut()
{
    m_armed.reset();
    if (!m_deadline)
        return;
    if (std::chrono::steady_clock::now() < *m_deadline)
        return arm(*m_deadline);
    m_deadline.reset();
    const auto wake = m_wake;
    wake();
}

} // namespace dozely
