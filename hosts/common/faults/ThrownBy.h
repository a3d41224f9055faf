// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <optional>

/// Runs `action` and stops every exception: a sentence saying what was thrown, fit for the log; absent when
/// nothing was. Gives no lock of the communication centre back: what may post goes through GuardedPosting.
std::optional<QString> thrownBy(const std::function<void()> &action);
