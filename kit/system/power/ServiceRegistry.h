// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QVariantMap>

#include <optional>

/// Port: the machine's registry of services, from which the power and key managers get theirs. Results are 0
/// for success, else a code of the platform's; a handle of 0 is none.
///
/// Here it knows two classes: "ApplePMU", the power-management controller (present where a real-time clock
/// can wake the machine; its properties are what that clock holds), and "IOHIDSystem", the input system.
class DOZELYKIT_EXPORT ServiceRegistry
{
public:
    virtual ~ServiceRegistry() = default;

    /// The port through which everything else is asked for.
    virtual qint32 masterPort(quint32 *port) = 0;

    /// A handle of the first service of that class, for the caller to release; 0 when there is none.
    virtual quint32 matchingService(quint32 masterPort, const QByteArray &className) = 0;

    /// A handle of an iterator over the services of that class, for the caller to release.
    virtual qint32 matchingServices(quint32 masterPort, const QByteArray &className, quint32 *iterator) = 0;

    /// The iterator's next service, for the caller to release; 0 at the end.
    virtual quint32 next(quint32 iterator) = 0;

    /// Gives back a handle of a service or an iterator.
    virtual qint32 release(quint32 handle) = 0;

    /// All properties of a service; `properties` is left alone on failure.
    virtual qint32 properties(quint32 service, QVariantMap *properties) = 0;
};
