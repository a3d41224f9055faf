// SPDX-License-Identifier: MIT
#include "LinuxClock_p.h"

#include "DozelyKit/core/foundation/DescriptorWatch.h"
#include "DozelyKit/core/foundation/StringFormat.h"

#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <limits>
#include <poll.h>
#include <sys/timerfd.h>
#include <sys/timex.h>
#include <unistd.h>

namespace dozely
{

using std::chrono::milliseconds;

namespace
{
// What one timer of the event loop, and one wait for a semaphore, can take: nearly 25 days.
constexpr milliseconds longestWait(std::numeric_limits<int>::max());

milliseconds bounded(milliseconds duration)
{
    return std::clamp(duration, milliseconds(0), longestWait);
}

void runAfter(milliseconds delay, QObject *context, std::function<void()> action)
{
    if (delay > longestWait) {
        action = [rest = delay - longestWait, context, action = std::move(action)] {
            runAfter(rest, context, action);
        };
    }
    QTimer::singleShot(bounded(delay), Qt::PreciseTimer, context, std::move(action));
}
} // namespace

LinuxAbsoluteTimer::LinuxAbsoluteTimer()
    : m_descriptor(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_descriptor < 0) {
        NSLog("Could not create a calendar timer (errno: %d)", errno);
        return;
    }
    m_watch = std::make_unique<DescriptorWatch>([this] { readable(); });
    m_watch->watch(m_descriptor, POLLIN);
}

LinuxAbsoluteTimer::~LinuxAbsoluteTimer()
{
    m_watch.reset(); // before its descriptor's number is free again
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void LinuxAbsoluteTimer::start(const QDateTime &due)
{
    m_due = due;
    arm();
}

void LinuxAbsoluteTimer::stop()
{
    m_due = {};
    arm();
}

void LinuxAbsoluteTimer::arm()
{
    itimerspec setting{};
    if (!m_due.isValid()) {
        ::timerfd_settime(m_descriptor, 0, &setting, nullptr);
        return;
    }
    // All zeros would disarm; a date before 1970 has long come, as one nanosecond after its beginning.
    const qint64 due = std::max<qint64>(m_due.toMSecsSinceEpoch(), 0);
    setting.it_value.tv_sec = due / 1000;
    setting.it_value.tv_nsec = std::max<long>(due % 1000 * 1'000'000, 1);
    if (::timerfd_settime(m_descriptor, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &setting, nullptr) == 0)
        return;
    // The timer is armed all the same: the kernel tells here of a jump that nobody had read yet.
    if (errno == ECANCELED)
        QMetaObject::invokeMethod(this, &AbsoluteTimer::clockChanged, Qt::QueuedConnection);
    else
        NSLog("Could not set a calendar timer (errno: %d)", errno);
}

int LinuxAbsoluteTimer::takeExpiration()
{
    quint64 expirations = 0;
    return ::read(m_descriptor, &expirations, sizeof expirations) == sizeof expirations ? 0 : errno;
}

void LinuxAbsoluteTimer::readable()
{
    const int error = takeExpiration();
    if (!m_due.isValid())
        return;
    if (error == ECANCELED) {
        arm();
        Q_EMIT clockChanged();
    } else if (error == 0) {
        m_due = {};
        Q_EMIT due();
    }
}

QDateTime LinuxClock::currentDate() const
{
    return QDateTime::currentDateTimeUtc();
}

milliseconds LinuxClock::steadyTime() const
{
    return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

milliseconds LinuxClock::bootTime() const
{
    timespec time{};
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::seconds(time.tv_sec) +
           std::chrono::duration_cast<milliseconds>(std::chrono::nanoseconds(time.tv_nsec));
}

bool LinuxClock::isSynchronised() const
{
    // Setting the clock by hand puts the error that the kernel estimates to its maximum, and so does time
    // that passes without a word from who synchronises.
    constexpr long largestError = 16'000'000; // microseconds
    timex state{};
    return ::adjtimex(&state) >= 0 && state.maxerror < largestError;
}

void LinuxClock::callAfter(milliseconds delay, QObject *context, std::function<void()> action)
{
    runAfter(delay, context, std::move(action));
}

bool LinuxClock::acquire(QSemaphore &semaphore, milliseconds limit)
{
    return semaphore.tryAcquire(1, static_cast<int>(bounded(limit).count()));
}

std::unique_ptr<AbsoluteTimer> LinuxClock::makeAbsoluteTimer()
{
    return std::make_unique<LinuxAbsoluteTimer>();
}

template<>
std::shared_ptr<Clock> &Port<Clock>::current()
{
    static auto *const port = new std::shared_ptr<Clock>(std::make_shared<LinuxClock>());
    return *port;
}

} // namespace dozely
