// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/system/network/NetServices.h"

#include <QVariant>

namespace dozely
{

/// What the daemon's objects have told of one service: host, port and TXT record by its resolver, addresses
/// by the browsers of that host. All of it is what some neighbour announced.
class DOZELYKIT_AUTOTEST_EXPORT AvahiFindings
{
public:
    /// A host that announces addresses without end is to cost no more memory than this.
    static constexpr qsizetype mostAddresses = 64;

    /// What changed.
    enum class Change {
        Nothing,   ///< It was no such signal.
        Record,    ///< Port or TXT record; the host is the same.
        Host,      ///< The host: its addresses are to be asked for, those of the former are forgotten.
        Addresses, ///< An address came or went.
    };

    /// A resolver's "Found".
    Change resolved(const QVariantList &arguments);

    /// A browser's signal of that name.
    Change browsed(const QByteArray &signal, const QVariantList &arguments);

    void forgetAddresses() { m_told.clear(); }
    void forgetHost() { m_hostName.clear(); }

    /// The interface over which the host was found, and its name; empty before that.
    /// @{
    int interface() const { return m_interface; }
    const QString &hostName() const { return m_hostName; }
    /// @}

    /// An address told over several interfaces or protocols counts once.
    NetServices::Findings findings() const;

private:
    /// An address, once for each interface and protocol over which the network told it.
    struct Told {
        int interface;
        int protocol;
        NetServices::Address address;

        bool operator==(const Told &) const = default;
    };

    int m_interface = -1;
    QString m_hostName;
    quint16 m_port = 0;
    QByteArray m_record;
    QList<Told> m_told; ///< In the order in which they came.
};

} // namespace dozely
