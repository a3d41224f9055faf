// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <gtest/gtest.h>

/// Compares a text with the reference "tests/baseline/NAME.txt", line by line. When they differ, the text is
/// written to the folder "baseline-failures" of the test's working folder; the message names it and tells the
/// first lines that are others.
///
/// With DOZELY_WRITE_BASELINE=1 in the environment the reference is written instead, and the test fails so
/// that nobody takes that for a comparison.
testing::AssertionResult readsLikeBaseline(const QString &text, const QString &name);
