// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArrayList>
#include <QVariantMap>

#include <optional>

namespace dozely
{

/// The TXT record of a network service, as RFC 6763 (section 6) writes it: strings of at most 255 bytes, a
/// length byte before each, every string one entry "key=value".
///
/// An entry without "=" has no value: an invalid QVariant. One that ends with "=" has an empty value: an
/// empty, not null, QByteArray. Keys are printable ASCII without "=", compared without regard to case.
class DOZELYKIT_AUTOTEST_EXPORT TxtRecord
{
public:
    static constexpr qsizetype longestEntry = 255; ///< Bytes, key and "=" included.

    /// What may be published: the RFC's own figure for a record that still fits into a packet together with
    /// the other records of the service. A larger one would be accepted by the daemon and never be sent.
    static constexpr qsizetype largestPublished = 1300;

    /// What is read: no multicast DNS packet is larger. Anybody on the network may announce a record; one
    /// that is larger was made to cost us memory.
    static constexpr qsizetype largestRead = 9000;

    /// The record with these entries, in the order of their keys. A value is a QByteArray, a text (which
    /// becomes UTF-8) or invalid. Absent when a key or value is not allowed, two keys differ by case alone,
    /// an entry is longer than longestEntry or the record larger than largestPublished. Without entries: one
    /// empty string, as the RFC asks.
    static std::optional<QByteArray> encode(const QVariantMap &entries);

    /// The entries of a record, each key in the case in which it came. Of entries with the same key the first
    /// counts. Entries without a key, or with one that is not allowed, are passed over. A record that ends
    /// within an entry gives those before it, and one that is larger than largestRead gives none.
    static QVariantMap decode(const QByteArray &record);

    /// The strings of a record, which is cut where it is damaged; empty strings are left out.
    static QByteArrayList strings(const QByteArray &record);

    /// The record made of these strings; a string that is too long is left out.
    static QByteArray fromStrings(const QByteArrayList &strings);

    /// Whether the record is made of whole strings.
    static bool isWellFormed(const QByteArray &record);
};

} // namespace dozely
