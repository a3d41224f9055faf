// SPDX-License-Identifier: MIT
#include "hosts/common/events/EventRequest.h"

#include "DozelyKit/communication/events/ProcessSerialNumber.h"

namespace
{
ProcessSerialNumber receiver(OSType signature, quint32 user)
{
    ProcessSerialNumber number;
    while (GetNextProcess(&number) == noErr) {
        ProcessInfoRec information;
        if (GetProcessInformation(number, &information) == noErr &&
            information.processSignature == signature && information.userId == user)
            break;
    }
    return number;
}
} // namespace

EventRequest::Outcome EventRequest::send() const
{
    Outcome outcome;
    const ProcessSerialNumber number = receiver(signature, user);
    outcome.process = number.lowLongOfPSN;
    AEDesc address;
    AECreateDesc(typeProcessSerialNumber, &number, sizeof number, &address);
    AppleEvent event;
    AECreateAppleEvent(eventClass, eventID, address, kAutoGenerateReturnID, kAnyTransactionID, &event);
    for (qsizetype i = 0; i < parameters.count(); ++i)
        event.setParameter(parameters.keywordAt(i), parameters.at(i));
    const qint32 mode = (wantsReply ? kAEWaitReply : kAENoReply) | kAECanInteract | kAECanSwitchLayer;
    outcome.status = AESend(&event, &outcome.reply, mode, kAENormalPriority, timeOutInTicks);
    return outcome;
}

QString eventFailure(OSStatus status)
{
    switch (status) {
    case procNotFound:
        return "No such process runs.";
    case connectionInvalid:
        return "The process has ended, or takes no events from this user.";
    case sessTableErr:
        return "The process has no room for the event now.";
    case errAEEventNotHandled:
        return "The process does not know this event.";
    case errAETimeout:
        return "The process did not answer in time.";
    case errAEEventFailed:
        return "The process failed to handle the event.";
    case errAEPrivilegeError:
        return "This user may not send to that process.";
    case memFullErr:
        return "The event or its reply is too large.";
    default:
        return "The event could not be sent.";
    }
}
