// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QtGlobal>

/// Injects system-defined key events (media, power and similar keys) into the machine's input.
///
/// A step that fails raises an assertion failure through NSAssertionHandler, whose default raises an
/// exception.
///
/// THREADING: one thread at a time.
class DOZELYKIT_EXPORT ZDRKeyManager
{
public:
    ZDRKeyManager() = delete;

    /// The connection to the input system, opened at the first call and kept to the end of the process.
    static quint32 eventDriver();

    /// Posts a system-defined event of that subtype without data.
    static void postSysDefinedKey(quint8 key);

    /// Posts the press of an aux control button (0 louder, 7 mute, 14 eject, ...; 255 means nothing). No
    /// release is posted.
    static void postAuxKey(quint8 key);
};
