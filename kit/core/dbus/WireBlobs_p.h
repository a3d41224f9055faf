// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

class NSNotification;
class QVariant;

/// The one-block form of values on the wire, as the connection layer needs it; false for a damaged block.
namespace WireBlobs
{
bool valueFrom(const QByteArray &block, QVariant *value);
bool notificationFrom(const QByteArray &block, NSNotification *notification);
} // namespace WireBlobs
