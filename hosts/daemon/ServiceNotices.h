// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <chrono>
#include <functional>

namespace dozely
{
class Clock;
}

/// What this process tells the manager of services that started it, by the protocol of sd_notify(3): when it
/// is ready, reads its configuration again, and stops; and, where the manager watches it, that its event loop
/// goes round. Without such a manager nothing happens.
///
/// THREADING: the main thread. BLOCKING: never.
class ServiceNotices : public QObject
{
    Q_OBJECT
public:
    /// `clock` must outlive the object.
    explicit ServiceNotices(dozely::Clock &clock);

    /// "STOPPING=1".
    ~ServiceNotices() override;

    /// "READY=1"; from now on the event loop feeds the watchdog, twice in its time.
    void ready();

    /// "RELOADING=1", and "READY=1" once `work` is done.
    void reload(const std::function<void()> &work);

private:
    void feedWatchdog();

    dozely::Clock &m_clock;
    std::chrono::milliseconds m_pause{}; // 0 when nobody watches
};
