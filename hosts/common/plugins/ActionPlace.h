// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

/// Where actions run.
namespace ActionPlace
{
/// Whether an action belongs into the session of the user rather than the daemon: as the parameter "Acts In
/// User Agent" says, else the bundle's "WDActsInUserAgent", else when the bundle has no module for the
/// daemon. True and the integer 1, be it written as a text, mean the session; every other value means the
/// daemon.
bool actsInUserAgent(const QVariantMap &parameters, const QVariantMap &bundleInfo);

/// Whether the parameters alone say it, so that the bundle need not be looked at.
bool isSaidBy(const QVariantMap &parameters);

/// Why a bundle with this Info dictionary, empty where it has none that can be read, can do nothing there: it
/// names no module for that place, it cannot act in a session, or what it says of the place is neither yes
/// nor no. Absent when it can.
std::optional<QString> reasonAgainst(bool actsInUserAgent, const QVariantMap &bundleInfo);
} // namespace ActionPlace
