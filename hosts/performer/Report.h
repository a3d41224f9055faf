// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/// What the process that acts tells the one that watches over it, over a pipe: a kind, and a text or a number
/// with it.
namespace Report
{
enum class Kind : char {
    Begun = 'B',     ///< The action is about to be called.
    Refused = 'R',   ///< It cannot be: the text says why.
    Raised = 'X',    ///< It raised: the text says what.
    Delivered = 'P', ///< What became of an occurrence that was to be handed over: a number (Delivery).
    Done = 'D',      ///< It is over; the text is the exit status of the program that it ran, or empty.
};

/// Blocks until the pipe has taken it. A pipe that nobody reads any more is no reason not to act.
void send(int pipe, Kind kind, const QString &text = {});

/// Takes whole reports off the head of what has been read; the rest stays.
void take(QByteArray &bytes, const std::function<void(Kind, const QString &)> &receive);
} // namespace Report
