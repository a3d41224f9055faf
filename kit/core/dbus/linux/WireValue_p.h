// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/NSNotification.h"

#include <QVariant>

#include <systemd/sd-bus.h>

/// Values on the wire, as docs/wire-protocol.md writes them down.
namespace WireValue
{
/// A message holds at most this many bytes of values: a peer must not make us allocate more.
constexpr qsizetype maximumSize = 4 << 20;
/// Containers within containers that D-Bus itself is given; what nests deeper travels as a blob.
constexpr int plainDepth = 20;
/// Containers within containers altogether: the decoders are recursive.
constexpr int maximumDepth = 64;

/// Whether D-Bus can carry the text as it is: it has no NUL, no noncharacter and no half of a surrogate pair.
bool isPlainText(const QString &text);

/// Appends all arguments or results of a message: property-list values, NSNotifications or ObjectPaths.
/// Raises NSException for anything else, and for what breaks a limit; the message is of no use then.
void appendAll(sd_bus_message *message, const QVariantList &values);

enum class Read { Whole, NotOurs, TooLarge };

/// Reads all arguments of a message. NotOurs: it holds a type that is not ours, or nests too deep.
DOZELYKIT_AUTOTEST_EXPORT Read readAll(sd_bus_message *message, QVariantList *values);

/// The one-block form of a value or notification (CBOR, RFC 8949), for what D-Bus text cannot carry.
/// toBlob raises NSException as append does; fromBlob answers false for a damaged block.
DOZELYKIT_AUTOTEST_EXPORT QByteArray toBlob(const QVariant &value);
DOZELYKIT_AUTOTEST_EXPORT bool fromBlob(const QByteArray &blob, QVariant *value);
DOZELYKIT_AUTOTEST_EXPORT bool notificationFromBlob(const QByteArray &blob, NSNotification *notification);
} // namespace WireValue
