// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEDesc.h"
#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"
#include "DozelyKit/communication/events/ProcessSerialNumber.h"

/// One Apple event, whose parameters are read and written as plain values, in whichever of two forms it is
/// held: as an event object, or as a bare record. An event object comes first where there is one.
///
/// Readers answer 0, an empty text or no data for a parameter that is missing or cannot be converted. Writers
/// to a bare record that fail write one line to the console and leave it as it was; those to an event object
/// say nothing. The two forms differ in places: docs/apple-events.md lists them.
///
/// OWNERSHIP: owns a bare record, shares an event object. THREADING: as other objects without a lock.
class DOZELYKIT_EXPORT ZDRAppleEvent
{
public:
    /// An empty record: the null descriptor, no event object.
    static std::shared_ptr<ZDRAppleEvent> appleEvent();
    static std::shared_ptr<ZDRAppleEvent>
    appleEventWithAppleEventDescriptor(const std::shared_ptr<NSAppleEventDescriptor> &descriptor);
    static std::shared_ptr<ZDRAppleEvent> appleEventWithCarbonEvent(AEDesc carbonEvent);

    /// A new event for the running process with the signature that psnOfProcessWithSignature finds, with a
    /// number of its own as return ID. Where there is no such process it is addressed to none.
    static std::shared_ptr<ZDRAppleEvent>
    appleEventWithEventClassForProcessWithSignature(AEEventClass eventClass, AEEventID eventID,
                                                    OSType signature);

    /// The number of the first process with the signature, in order of number, among those of this process's
    /// user; where there is none, among root's, then among all; both words 0 when none runs.
    static ProcessSerialNumber psnOfProcessWithSignature(OSType signature);

    ZDRAppleEvent(const ZDRAppleEvent &) = delete;
    ZDRAppleEvent &operator=(const ZDRAppleEvent &) = delete;
    ~ZDRAppleEvent();

    /// The bare record, which stays this object's; null for a record that holds an event object.
    AEDesc *carbonEvent();

    AEEventClass eventClass() const;
    AEEventID eventID() const;

    qint16 shortValueForKeyword(AEKeyword keyword) const;
    void setShortValueForKeyword(qint16 value, AEKeyword keyword);

    /// A bare record's negative 32-bit number is read as the unsigned one.
    qint64 longValueForKeyword(AEKeyword keyword) const;
    /// An event object keeps the low 32 bits; a bare record all 64, under the type of 32-bit numbers.
    void setLongValueForKeyword(qint64 value, AEKeyword keyword);

    /// A bare record's text is read as UTF-8, but written as Mac OS Roman, with "?" for what that lacks.
    QString stringValueForKeyword(AEKeyword keyword) const;
    void setStringForKeyword(const QString &text, AEKeyword keyword);

    /// The bytes as they are, whatever their type.
    QByteArray dataValueForKeyword(AEKeyword keyword) const;
    void setDataForKeyword(const QByteArray &data, AEKeyword keyword);

private:
    ZDRAppleEvent();

    std::shared_ptr<NSAppleEventDescriptor> _appleEventDescriptor;
    AEDesc _carbonEvent;
};

Q_DECLARE_METATYPE(std::shared_ptr<ZDRAppleEvent>)
