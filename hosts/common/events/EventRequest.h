// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEManager.h"

#include <QVariantMap>

#include <optional>

/// An Apple event as a person or a script asks for it.
///
/// BLOCKING: as AESend. THREADING: any thread.
struct EventRequest {
    OSType signature = 0; ///< Of the receiver: the first process of the user that has it.
    quint32 user = 0;     ///< Whose process it has to be.
    AEEventClass eventClass = 0;
    AEEventID eventID = 0;
    AEDesc parameters{typeAERecord};
    bool wantsReply = true;
    qint64 timeOutInTicks = kAEDefaultTimeout;

    struct Outcome {
        OSStatus status = noErr;
        qint64 process = 0; ///< The receiver; 0 when there is none.
        AppleEvent reply;   ///< The null descriptor where there is none.
    };
    Outcome send() const;
};

/// A sentence for a result code of AESend other than noErr.
QString eventFailure(OSStatus status);
