// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QDateTime>
#include <QObject>
#include <QSemaphore>

#include <chrono>
#include <functional>
#include <memory>

namespace dozely
{

/// Fires once when the machine's calendar clock reaches a date, and tells when that clock was set by hand.
/// Lives on one thread, which must run an event loop.
class DOZELYKIT_EXPORT AbsoluteTimer : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Waits for `due`, replacing what was waited for; a date in the past fires as soon as the loop runs.
    virtual void start(const QDateTime &due) = 0;
    virtual void stop() = 0;

    /// False for one that the machine refused, which never fires.
    virtual bool isWorking() const { return true; }

Q_SIGNALS:
    /// The date has come. The timer is stopped.
    void due();
    /// The calendar clock jumped. The timer goes on waiting for its date.
    void clockChanged();
};

/// Port: time. The calendar date, durations, one-shot timers and bounded waiting.
///
/// THREADING: every operation may be called from any thread.
class DOZELYKIT_EXPORT Clock
{
public:
    virtual ~Clock() = default;

    /// The calendar date, UTC.
    virtual QDateTime currentDate() const = 0;

    /// Time on a clock that never jumps; only differences mean something.
    virtual std::chrono::milliseconds steadyTime() const = 0;

    /// The same on a clock that goes on while the machine sleeps: time since it was started.
    virtual std::chrono::milliseconds bootTime() const = 0;

    /// Whether something that knows the time has set the calendar clock and nobody has changed it since.
    virtual bool isSynchronised() const = 0;

    /// Runs `action` once on the calling thread's event loop, `delay` from now, unless `context` is destroyed
    /// first.
    virtual void callAfter(std::chrono::milliseconds delay, QObject *context,
                           std::function<void()> action) = 0;

    /// Takes one unit of `semaphore`, waiting at most `limit`; false when it was not to be had. Blocks.
    virtual bool acquire(QSemaphore &semaphore, std::chrono::milliseconds limit) = 0;

    virtual std::unique_ptr<AbsoluteTimer> makeAbsoluteTimer() = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<Clock> &Port<Clock>::current();

} // namespace dozely
