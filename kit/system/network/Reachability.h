// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QString>

#include <optional>

namespace dozely
{

/// Port: whether a host could be reached, told without connecting to it.
class DOZELYKIT_EXPORT Reachability
{
public:
    /// Bits of the flags.
    enum Flag : quint32 {
        Reachable = 0x02,            ///< There is a way to the host.
        ConnectionRequired = 0x04,   ///< The way leads over a connection that is still to be set up.
        InterventionRequired = 0x10, ///< Setting it up takes a person, who types a password for example.
    };

    virtual ~Reachability() = default;

    /// The flags for the host of this name; 0 when the name is unknown or nothing leads to its addresses.
    /// Absent when that cannot be found out. Nothing is sent to the host. BLOCKING: as long as looking up the
    /// name takes.
    virtual std::optional<quint32> flagsOfHost(const QString &host) = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<Reachability> &Port<Reachability>::current();

} // namespace dozely
