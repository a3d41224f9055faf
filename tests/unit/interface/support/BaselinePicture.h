// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>

#include <gtest/gtest.h>

/// Compares a picture with the reference "tests/baseline/NAME.png".
///
/// A pixel counts as different when a channel differs by more than 16 of 255, which is more than another
/// release of the font engine makes of an edge; a picture, when more than 2 in 1000 pixels do or the sizes
/// differ. Then the picture and one of the differences (red on the faded reference) are written to the folder
/// "baseline-failures" of the test's working folder, and the message names them.
///
/// With DOZELY_WRITE_BASELINE=1 in the environment the reference is written instead, and the test fails so
/// that nobody takes that for a comparison.
testing::AssertionResult looksLikeBaseline(const QImage &picture, const QString &name);
