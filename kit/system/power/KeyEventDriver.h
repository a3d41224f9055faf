// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QtGlobal>

/// The data of an event in the input system's own record, of which the compound form is used here.
struct NXEventData {
    struct Compound {
        qint16 reserved;
        qint16 subType;
        quint32 words[11];
    } compound;
};
static_assert(sizeof(NXEventData) == 48, "the record's size is part of its contract");

constexpr quint32 NX_SYSDEFINED = 14;
constexpr qint16 NX_SUBTYPE_AUX_CONTROL_BUTTONS = 8;
constexpr quint32 kIOHIDParamConnectType = 1;
constexpr quint32 kNXEventDataVersion = 2;

/// Where on the screen an event happened.
struct IOGPoint {
    qint16 x = 0;
    qint16 y = 0;
};

/// Port: puts key events into the machine's input, as if its keyboard had sent them. Results are 0 for
/// success, else a code of the platform's.
///
/// A machine that lets nobody do so has a connection all the same, which drops the events: one log line says
/// so.
///
/// THREADING: one thread at a time.
class DOZELYKIT_EXPORT KeyEventDriver
{
public:
    virtual ~KeyEventDriver() = default;

    /// Opens a connection to the input system's `service`. It is kept to the end of the process.
    virtual qint32 open(quint32 service, quint32 connectType, quint32 *connection) = 0;

    /// Posts one event. The key that an aux event tells is pressed and released.
    virtual qint32 post(quint32 connection, quint32 eventType, IOGPoint location, const NXEventData &data,
                        quint32 version, quint32 flags, quint32 options) = 0;
};
