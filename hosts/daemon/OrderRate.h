// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QList>

#include <chrono>

/// How many orders each user gives. A program that goes round in circles, or means harm, must not keep the
/// daemon and its disk busy.
class OrderRate
{
public:
    static constexpr int mostAMinute = 60;

    /// Counts an order of `userId` at `now` (time that never jumps); false when it is one too many.
    bool take(quint32 userId, std::chrono::milliseconds now);

private:
    void forgetBefore(std::chrono::milliseconds moment);

    QHash<quint32, QList<std::chrono::milliseconds>> m_taken; // earliest first, of the last minute
};
