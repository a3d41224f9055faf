// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

/// Runs the event loop until `condition` holds; false when it still does not after `limit`, which only bounds
/// a failing test. The condition is looked at after every event and every 5 ms.
template<class Condition>
bool waitUntil(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(60))
{
    const QDeadlineTimer deadline(limit);
    QTimer pulse;
    pulse.start(5);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}
