// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEManager.h"
#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"

#include <QObject>

/// What event_host does with the events of the class `hostClass`.
class HostEvents : public QObject
{
    Q_OBJECT
public:
    using Event = std::shared_ptr<NSAppleEventDescriptor>;

    static constexpr AEEventClass hostClass = dozely::fourCharCode("Host");
    /// Answers with the event's own parameters, and who sent it ('spid' and 'seid').
    static constexpr AEEventID echo = dozely::fourCharCode("echo");
    /// Says "heard NUMBER" with the direct object's number.
    static constexpr AEEventID note = dozely::fourCharCode("note");
    /// Says "heard hang", waits for a line on the standard input, and answers with the event's parameters.
    static constexpr AEEventID hang = dozely::fourCharCode("hang");
    /// Dies.
    static constexpr AEEventID die = dozely::fourCharCode("die ");
    /// Sends an event of its own to the process 'targ', with the ID 'what', waits at most for 'tick', and
    /// answers with the result code.
    static constexpr AEEventID send = dozely::fourCharCode("send");
    /// Sends 'send' on to the process 'targ', which is to send 'echo' here.
    static constexpr AEEventID bounce = dozely::fourCharCode("boun");
    /// Raises.
    static constexpr AEEventID fail = dozely::fourCharCode("fail");
    /// Answers with so many bytes as the direct object says.
    static constexpr AEEventID grow = dozely::fourCharCode("grow");
    /// Has the sender echo the direct object and answers with that, and whether this process was in the
    /// middle of meet().
    static constexpr AEEventID reflect = dozely::fourCharCode("refl");

    static constexpr AEKeyword target = dozely::fourCharCode("targ");
    static constexpr AEKeyword what = dozely::fourCharCode("what");
    static constexpr AEKeyword ticks = dozely::fourCharCode("tick");
    static constexpr AEKeyword meeting = dozely::fourCharCode("meet");

    /// Handles all of them from now on.
    void listen();

    /// Sends 'refl' with so many bytes to the process, which does the same at this time, until one was
    /// answered out of the middle of the other's own; false when one came back wrong, or none did so.
    bool meet(qint64 process, qsizetype size);

    /// An event of this class for the process.
    static AppleEvent eventTo(qint64 process, AEEventID eventID);

    static void say(const QString &line);

    Q_INVOKABLE void doEcho(const std::shared_ptr<NSAppleEventDescriptor> &event,
                            const std::shared_ptr<NSAppleEventDescriptor> &reply);
    Q_INVOKABLE void doNote(const std::shared_ptr<NSAppleEventDescriptor> &event,
                            const std::shared_ptr<NSAppleEventDescriptor> &reply);
    Q_INVOKABLE void doHang(const std::shared_ptr<NSAppleEventDescriptor> &event,
                            const std::shared_ptr<NSAppleEventDescriptor> &reply);
    Q_INVOKABLE void doDie(const std::shared_ptr<NSAppleEventDescriptor> &event,
                           const std::shared_ptr<NSAppleEventDescriptor> &reply);
    Q_INVOKABLE void doSend(const std::shared_ptr<NSAppleEventDescriptor> &event,
                            const std::shared_ptr<NSAppleEventDescriptor> &reply);
    Q_INVOKABLE void doBounce(const std::shared_ptr<NSAppleEventDescriptor> &event,
                              const std::shared_ptr<NSAppleEventDescriptor> &reply);
    Q_INVOKABLE void doFail(const std::shared_ptr<NSAppleEventDescriptor> &event,
                            const std::shared_ptr<NSAppleEventDescriptor> &reply);
    Q_INVOKABLE void doGrow(const std::shared_ptr<NSAppleEventDescriptor> &event,
                            const std::shared_ptr<NSAppleEventDescriptor> &reply);
    Q_INVOKABLE void doReflect(const std::shared_ptr<NSAppleEventDescriptor> &event,
                               const std::shared_ptr<NSAppleEventDescriptor> &reply);

private:
    bool m_isMeeting = false;
};
