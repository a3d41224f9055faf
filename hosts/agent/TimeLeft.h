// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>

/// The time left before something, for people: "in 4 minutes", and in the last minute "in 20 seconds".
namespace TimeLeft
{
/// In that language ("de"), with the digits of the user's locale for dates where that is of the same
/// language. A time that has begun counts as a whole one: 3 min 1 s are 4 minutes. Up to two hours in
/// minutes, up to two days in hours, then in days, both of them rounded. Nothing left is "now".
QString inWords(std::chrono::milliseconds left, const QString &language);

/// How long to wait until a countdown that began with `whole` is to be drawn anew, and its words, too; at
/// most ten times a second, and in some 360 steps unless the words change oftener. Always more than 0.
std::chrono::milliseconds untilNextStep(std::chrono::milliseconds left, std::chrono::milliseconds whole);
} // namespace TimeLeft
