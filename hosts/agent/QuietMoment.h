// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

/// Does something when nothing has happened for a moment.
///
/// THREADING: one thread, with an event loop.
class QuietMoment
{
public:
    /// Longer than any window fades.
    static constexpr std::chrono::seconds pause{2};

    /// What happened just now: whatever was to be done is put off, and `work` is done in its place.
    void wait(std::function<void()> work);

private:
    std::unique_ptr<QObject> m_waiting; // context of what is to come
};
