// SPDX-License-Identifier: MIT
#include "support/FakeClock.h"

#include <algorithm>

using namespace dozely;

using std::chrono::milliseconds;

class FakeClock::Timer : public AbsoluteTimer
{
public:
    explicit Timer(FakeClock *clock) : m_clock(clock) { m_clock->m_timers += this; }
    ~Timer() override
    {
        if (m_clock)
            m_clock->m_timers.removeAll(this);
    }
    void start(const QDateTime &due) override { m_due = due; }
    void stop() override { m_due = {}; }

    FakeClock *m_clock;
    QDateTime m_due;
};

FakeClock::FakeClock(QDateTime now) : m_date(std::move(now)) {}

FakeClock::~FakeClock()
{
    for (Timer *timer : m_timers)
        timer->m_clock = nullptr;
}

void FakeClock::callAfter(milliseconds delay, QObject *context, std::function<void()> action)
{
    m_shots += Shot{m_steady + delay, delay, context, std::move(action)};
}

bool FakeClock::acquire(QSemaphore &semaphore, milliseconds limit)
{
    if (semaphore.tryAcquire())
        return true;
    failedWaits += limit;
    m_steady += limit;
    m_date = m_date.addMSecs(limit.count());
    return false;
}

std::unique_ptr<AbsoluteTimer> FakeClock::makeAbsoluteTimer()
{
    return std::make_unique<Timer>(this);
}

bool FakeClock::runNext(milliseconds until)
{
    const auto passTo = [this](milliseconds moment) {
        if (moment > m_steady) {
            m_date = m_date.addMSecs((moment - m_steady).count());
            m_steady = moment;
        }
    };
    const auto shot = std::min_element(m_shots.begin(), m_shots.end(),
                                       [](const Shot &a, const Shot &b) { return a.due < b.due; });
    Timer *timer = nullptr;
    for (Timer *candidate : m_timers) {
        if (candidate->m_due.isValid() && (!timer || candidate->m_due < timer->m_due))
            timer = candidate;
    }
    const milliseconds timerDue =
        timer ? m_steady + milliseconds(std::max<qint64>(0, m_date.msecsTo(timer->m_due)))
              : milliseconds::max();
    const milliseconds shotDue = shot != m_shots.end() ? shot->due : milliseconds::max();
    if (std::min(timerDue, shotDue) > until)
        return false;
    if (timerDue <= shotDue) {
        passTo(timerDue);
        timer->stop();
        Q_EMIT timer->due();
        return true;
    }
    const Shot now = *shot;
    m_shots.erase(shot);
    passTo(now.due);
    if (now.context)
        now.action();
    return true;
}

void FakeClock::advance(milliseconds duration)
{
    const milliseconds until = m_steady + duration;
    while (runNext(until)) {
    }
    if (until > m_steady) {
        m_date = m_date.addMSecs((until - m_steady).count());
        m_steady = until;
    }
}

void FakeClock::jumpTo(const QDateTime &date)
{
    m_date = date;
    for (Timer *timer : QList<Timer *>(m_timers)) {
        if (m_timers.contains(timer) && timer->m_due.isValid())
            Q_EMIT timer->clockChanged();
    }
}

void FakeClock::sleep(milliseconds duration)
{
    m_slept += duration;
    jumpTo(m_date.addMSecs(duration.count()));
}

QList<milliseconds> FakeClock::pendingDelays() const
{
    QList<milliseconds> delays;
    for (const Shot &shot : m_shots)
        delays += shot.delay;
    return delays;
}
