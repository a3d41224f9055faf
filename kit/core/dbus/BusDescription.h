// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QHash>

namespace dozely
{

/// What an object on the bus can do by one interface, as its introspection data say. A plain value.
struct DOZELYKIT_EXPORT BusDescription {
    struct Method {
        QByteArray takes; ///< The types of its arguments, one complete type each.
        QByteArray gives;
    };

    /// Reads introspection data with exactly one interface.
    static Result<BusDescription> fromXml(const QByteArray &xml);

    QByteArray interface;
    QHash<QByteArray, Method> methods;
    QHash<QByteArray, QByteArray> broadcasts; ///< The types of their arguments, by name.
    QHash<QByteArray, QByteArray> properties; ///< Their types, by name.
    QByteArray interfaceXml;                  ///< The element "interface" itself.
};

} // namespace dozely
