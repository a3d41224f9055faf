// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"

#include <QList>
#include <QPointer>

/// A clock that stands still until the test moves it; advancing runs what falls due, in order. A bounded wait
/// that would block lets its whole limit pass and fails.
class FakeClock : public dozely::Clock
{
public:
    explicit FakeClock(QDateTime now = QDateTime({2026, 3, 14}, {6, 0}, Qt::UTC));
    ~FakeClock() override;

    QDateTime currentDate() const override { return m_date; }
    std::chrono::milliseconds steadyTime() const override { return m_steady; }
    std::chrono::milliseconds bootTime() const override { return m_steady + m_slept; }
    bool isSynchronised() const override { return synchronised; }
    void callAfter(std::chrono::milliseconds delay, QObject *context, std::function<void()> action) override;
    bool acquire(QSemaphore &semaphore, std::chrono::milliseconds limit) override;
    std::unique_ptr<dozely::AbsoluteTimer> makeAbsoluteTimer() override;

    /// Lets time pass: one-shot timers and absolute timers that fall due run, each at its own time.
    void advance(std::chrono::milliseconds duration);

    /// Sets the calendar clock without letting time pass, as a person or a time server does.
    void jumpTo(const QDateTime &date);

    /// The machine sleeps: the calendar goes on and timers stand still.
    void sleep(std::chrono::milliseconds duration);

    /// Whether the calendar was set by something that knows the time.
    bool synchronised = true;

    /// The delays of the one-shot timers still to come, in the order in which they were asked for.
    QList<std::chrono::milliseconds> pendingDelays() const;

    /// The limits of the waits that failed.
    QList<std::chrono::milliseconds> failedWaits;

private:
    class Timer;
    struct Shot {
        std::chrono::milliseconds due;
        std::chrono::milliseconds delay;
        QPointer<QObject> context;
        std::function<void()> action;
    };
    bool runNext(std::chrono::milliseconds until);

    QDateTime m_date;
    std::chrono::milliseconds m_steady{0};
    std::chrono::milliseconds m_slept{0};
    QList<Shot> m_shots;
    QList<Timer *> m_timers;
};
