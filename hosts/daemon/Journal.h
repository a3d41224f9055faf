// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

/// The machine's journal, by its own protocol (https://systemd.io/JOURNAL_NATIVE_PROTOCOL): a datagram an
/// entry to "/run/systemd/journal/socket" below the root folder. Where none listens there, nothing happens.
///
/// THREADING: one thread. BLOCKING: never.
class Journal
{
public:
    /// Names, of capitals, digits and '_', and texts. One that is longer than 4 KiB is cut off.
    using Fields = QList<std::pair<QByteArray, QString>>;

    enum class Sent {
        Yes,
        Later, ///< The journal takes no more at the moment.
        No,    ///< There is none, or it refuses this one.
    };
    Sent send(const Fields &fields);

    /// What goes over the wire.
    static QByteArray encoded(const Fields &fields);

private:
    dozely::Descriptor m_socket; // made when it is first needed
};
