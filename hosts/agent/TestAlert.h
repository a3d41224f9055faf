// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/NSUserNotification.h"

#include <QObject>

#include <chrono>
#include <memory>

namespace dozely
{
class Clock;
} // namespace dozely

/// An alert that announces nothing, and says so: shown at the user's wish, in the very way of all others, so
/// that he sees whether alerts reach him. THREADING: the main thread.
class TestAlert : public QObject
{
    Q_OBJECT
public:
    /// So long it counts down; then it goes.
    static constexpr std::chrono::seconds duration{60};

    /// `clock` must outlive the object.
    explicit TestAlert(dozely::Clock &clock);

    /// Withdraws it.
    ~TestAlert() override;

    /// Shows it, anew where it shows already.
    void show();

private:
    void withdraw();

    dozely::Clock &m_clock;
    std::shared_ptr<NSUserNotification> m_alert;
    std::unique_ptr<QObject> m_time; // until it goes
};
