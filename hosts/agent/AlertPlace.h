// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QString>

#include <optional>

/// Where on a screen alerts begin: at what distance from which of its edges, in device-independent pixels.
struct AlertPlace {
    static constexpr int gap = 16; ///< From the edges unless the user wants something else, and between two.

    bool isAtRight = true;
    bool isAtBottom = false;
    int fromSide = gap;
    int fromEdge = gap;

    bool operator==(const AlertPlace &) const = default;
};

/// The place to which the user has dragged an alert, kept in the user's state: a small property list.
///
/// THREADING: any one thread. BLOCKING: for the disk.
namespace StoredAlertPlace
{
/// "dozely/alert-place.plist" in $XDG_STATE_HOME, else in ~/.local/state, below the root folder; empty for a
/// user without a home.
QString usualPath();

/// Absent where nothing is kept, or nothing that makes sense.
std::optional<AlertPlace> read(const QString &path);

/// Makes the folder as well, for the user alone.
dozely::Result<void> write(const QString &path, const AlertPlace &place);
} // namespace StoredAlertPlace
