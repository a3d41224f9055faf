// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QVariant>

struct sd_bus_message;

/// Between QVariant and the values of a bus message.
namespace BusValue
{
/// Containers within containers that are read or written; a message of the bus may hold no more than that.
constexpr int maximumDepth = 32;

/// Appends `arguments`, typed by `signature` (one complete type each), to a message that is being made. A
/// structure is a QVariantList of its members; what a variant holds decides its type on the wire: text `s`,
/// QByteArray `ay`, QStringList `as`, QVariantMap `a{sv}`, QVariantList `av`. A negative errno value on
/// failure: -EINVAL when an argument does not fit its type, or for a type that is not supported.
int append(sd_bus_message *message, const QByteArray &signature, const QVariantList &arguments);

/// Reads what is left in the open container of `message`, or in the message itself, into `values`. A negative
/// errno value on failure: -EBADMSG for a damaged message, -EOPNOTSUPP for a type that is not supported.
int readAll(sd_bus_message *message, QVariantList &values, int depth = 0);
} // namespace BusValue
