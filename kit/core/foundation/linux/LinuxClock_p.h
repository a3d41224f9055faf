// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"

namespace dozely
{

class DescriptorWatch;

/// Waits on a timer descriptor of the calendar clock, which the kernel cancels whenever that clock is set.
class DOZELYKIT_AUTOTEST_EXPORT LinuxAbsoluteTimer : public AbsoluteTimer
{
    Q_OBJECT
public:
    LinuxAbsoluteTimer();
    ~LinuxAbsoluteTimer() override;

    void start(const QDateTime &due) override;
    void stop() override;
    bool isWorking() const override { return m_descriptor >= 0; }

protected:
    /// Reads the descriptor: 0 when the date has come, else the error number: ECANCELED when the clock was
    /// set, EAGAIN when there is nothing to read.
    virtual int takeExpiration();

private:
    void arm();
    void readable();

    int m_descriptor;
    std::unique_ptr<DescriptorWatch> m_watch;
    QDateTime m_due; // null while stopped
};

/// The clocks of the Linux kernel and the timers of Qt's event loop.
class DOZELYKIT_AUTOTEST_EXPORT LinuxClock : public Clock
{
public:
    QDateTime currentDate() const override;
    std::chrono::milliseconds steadyTime() const override;
    std::chrono::milliseconds bootTime() const override;
    bool isSynchronised() const override;
    void callAfter(std::chrono::milliseconds delay, QObject *context, std::function<void()> action) override;
    bool acquire(QSemaphore &semaphore, std::chrono::milliseconds limit) override;
    std::unique_ptr<AbsoluteTimer> makeAbsoluteTimer() override;
};

} // namespace dozely
