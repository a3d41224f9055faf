// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/ZDRAppleEvent.h"

#include <QObject>

/// Answers the event ('Exmp', 'helo') with a greeting.
class Greeter : public QObject
{
    Q_OBJECT
public:
    static constexpr OSType signature = dozely::fourCharCode("Exmp");
    static constexpr AEEventClass eventClass = dozely::fourCharCode("Exmp");
    static constexpr AEEventID eventID = dozely::fourCharCode("helo");

    /// Called by NSAppleEventManager. The kit's record makes parameters plain values.
    Q_INVOKABLE void greet(const std::shared_ptr<NSAppleEventDescriptor> &event,
                           const std::shared_ptr<NSAppleEventDescriptor> &reply)
    {
        const auto asked = ZDRAppleEvent::appleEventWithAppleEventDescriptor(event);
        const auto answer = ZDRAppleEvent::appleEventWithAppleEventDescriptor(reply);
        answer->setStringForKeyword("Hello, " + asked->stringValueForKeyword(keyDirectObject) + '!',
                                    keyDirectObject);
        answer->setLongValueForKeyword(++m_greeted, dozely::fourCharCode("cnt "));
    }

private:
    qint32 m_greeted = 0;
};
