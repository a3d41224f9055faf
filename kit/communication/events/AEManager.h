// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEDesc.h"

/// The Apple Event Manager: building, reading and sending Apple events in their bare form. All operations
/// answer a result code. docs/apple-events.md describes what travels.
/// @{

/// In place of a return ID: number the event.
constexpr qint16 kAutoGenerateReturnID = -1;
/// The event belongs to no sequence.
constexpr qint32 kAnyTransactionID = 0;

/// Send modes, combined by adding: one of the first two, and any of the others, which have nothing to decide
/// here. kAENoReply + kAECanInteract + kAECanSwitchLayer is 97, kAEWaitReply with them 99.
constexpr qint32 kAENoReply = 0x01;
constexpr qint32 kAEWaitReply = 0x03;
constexpr qint32 kAENeverInteract = 0x10;
constexpr qint32 kAECanInteract = 0x20;
constexpr qint32 kAEAlwaysInteract = 0x30;
constexpr qint32 kAECanSwitchLayer = 0x40;

constexpr qint16 kAENormalPriority = 0;
constexpr qint16 kAEHighPriority = 1; ///< Before the events that wait at the receiver.

/// Time-outs are in ticks, sixtieths of a second.
constexpr qint64 kAEDefaultTimeout = -1; ///< A minute.
constexpr qint64 kNoTimeOut = -2;

/// A descriptor over the bytes. paramErr for the type of a container.
DOZELYKIT_EXPORT OSErr AECreateDesc(DescType type, const void *data, qsizetype size, AEDesc *result);

/// Back to the null descriptor.
DOZELYKIT_EXPORT OSErr AEDisposeDesc(AEDesc *desc);

/// An event without parameters for the process that `target` names.
DOZELYKIT_EXPORT OSErr AECreateAppleEvent(AEEventClass eventClass, AEEventID eventID, const AEDesc &target,
                                          qint16 returnID, qint32 transactionID, AppleEvent *result);

/// Reads a parameter or an attribute, converted to `desiredType`, into `buffer`: at most `maximumSize` bytes,
/// of `actualSize` that there are. errAEDescNotFound when it is missing, errAECoercionFail when it cannot be
/// converted, errAEWrongDataType when it is a container; the buffer and what the other arguments point to are
/// left alone then. The last two results and the first may be null.
DOZELYKIT_EXPORT OSErr AEGetParamPtr(const AEDesc &record, AEKeyword keyword, DescType desiredType,
                                     DescType *actualType, void *buffer, qsizetype maximumSize,
                                     qsizetype *actualSize);
DOZELYKIT_EXPORT OSErr AEGetAttributePtr(const AppleEvent &event, AEKeyword keyword, DescType desiredType,
                                         DescType *actualType, void *buffer, qsizetype maximumSize,
                                         qsizetype *actualSize);

/// Type and size in bytes of a parameter as it is held, without any conversion; the flattened size of a
/// container. Either result may be null.
DOZELYKIT_EXPORT OSErr AESizeOfParam(const AEDesc &record, AEKeyword keyword, DescType *type,
                                     qsizetype *size);

/// Puts the bytes as a parameter of that type. errAEWrongDataType for what is no record.
DOZELYKIT_EXPORT OSErr AEPutParamPtr(AEDesc *record, AEKeyword keyword, DescType type, const void *data,
                                     qsizetype size);

/// Sends the event to the process that its address attribute names.
///
/// With kAENoReply the event is handed over, and what becomes of it is not known; `reply` is left alone. With
/// kAEWaitReply the caller waits for the reply, an event with the parameters that the handler put there.
///
/// BLOCKING: until the reply has come or, without one, until the event has left this process; at most for the
/// time-out, 0 of which is no time at all. On the main thread incoming events are served meanwhile, and
/// nothing else is. An event of this process to itself is dispatched at once. THREADING: any thread; one that
/// sends to itself needs the main thread to serve events. Where the receiver has no room for one more stream
/// the event is sent again until there is, or the time-out has come.
///
/// RESULTS, besides noErr: procNotFound, connectionInvalid, sessTableErr (no room at the receiver),
/// errAETimeout, errAEEventNotHandled (none without a reply), errAEEventFailed (the handler raised),
/// errAEPrivilegeError, errAEUnknownAddressType, errAENotAppleEvent, errAEUnknownSendMode, paramErr,
/// memFullErr, errAECorruptData (the reply).
DOZELYKIT_EXPORT OSStatus AESend(const AppleEvent *event, AppleEvent *reply, qint32 mode, qint16 priority,
                                 qint64 timeOutInTicks);
/// @}
