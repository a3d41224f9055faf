// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QObject>

#include <chrono>
#include <memory>

namespace dozely
{
class AbsoluteTimer;
} // namespace dozely

/// The time left until a date, as often as that shows: by the clock of the machine, also when that is set or
/// the machine slept. Nothing is woken while nobody can see it.
///
/// THREADING: the main thread.
class AlertCountdown : public QObject
{
    Q_OBJECT
public:
    AlertCountdown();
    ~AlertCountdown() override;

    /// Begins anew, unless it is the date to which it counts already; an invalid one ends it.
    void begin(const QDateTime &date);

    /// Whether somebody can see it; false to begin with.
    void setSeen(bool isSeen);

    /// Nothing more is told.
    void stop();

    /// From `begin` on, a second at least.
    std::chrono::milliseconds whole() const { return m_whole; }

Q_SIGNALS:
    /// It is time to show what is left. At once by `begin` and, while it counts, by `setSeen`.
    void stepped(std::chrono::milliseconds left);

private:
    void step();

    std::unique_ptr<dozely::AbsoluteTimer> m_timer;
    std::unique_ptr<QObject> m_next; // context of the next step
    QDateTime m_date;
    std::chrono::milliseconds m_whole{0};
    bool m_isSeen = false;
};
