// SPDX-License-Identifier: MIT
#pragma once

#include "HostEvents.h"
#include "integration/communication/HostProcess.h"
#include "integration/connection/RawPeer.h"

#include "DozelyKit/communication/events/ProcessSerialNumber.h"
#include "DozelyKit/communication/events/linux/EventProcesses_p.h"
#include "support/Identity.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QDir>

#include <gmock/gmock.h>

#include <deque>

/// Processes that use Apple events below a scratch root. Run by root, the other user is a second one; run by
/// anybody else, there is only one, and a receiver that is told to shut everybody out stands for the other's.
class EventFixture : public testing::Test
{
protected:
    EventFixture() { root.makeFolder("/private/var/tmp/com.dozely.events", 01777); }

    using Host = std::unique_ptr<HostProcess>;
    using Seconds = std::chrono::duration<double>;

    Host startSilent(const QString &signature = "Host",
                     const QString &identity = HostProcess::asStarted) const
    {
        return std::make_unique<HostProcess>(root.path(), signature, identity);
    }

    /// One of this process's own user.
    Host start(const QString &signature = "Host", const QString &identity = HostProcess::asStarted) const
    {
        auto host = startSilent(signature, identity);
        EXPECT_EQ(host->ask("listen"), "yes");
        return host;
    }

    static QString otherUser() { return QString::number(Identity::ordinaryUserHere()); }

    static AppleEvent eventTo(const Host &host, AEEventID eventID)
    {
        return HostEvents::eventTo(host->processId(), eventID);
    }

    static OSStatus sendWaiting(const AppleEvent &event, AppleEvent *reply, qint64 ticks = kAEDefaultTimeout)
    {
        return AESend(&event, reply, kAEWaitReply, kAENormalPriority, ticks);
    }
    static OSStatus post(const AppleEvent &event, qint16 priority = kAENormalPriority)
    {
        return AESend(&event, nullptr, kAENoReply, priority, kAEDefaultTimeout);
    }

    static qint32 numberIn(const AppleEvent &event, AEKeyword keyword = keyDirectObject)
    {
        return NSAppleEventDescriptor::descriptorWithAEDesc(event.parameter(keyword).value_or(AEDesc()))
            ->int32Value();
    }

    /// The socket file of the host.
    static QString socketOf(const Host &host)
    {
        const QDir folder(dozely::EventProcesses::folder());
        return folder.filePath(
            folder.entryList({QString("%1-*.socket").arg(host->processId())}, QDir::System).value(0));
    }

    /// Takes all the room that the host has for this user, with streams that say nothing any more, for as
    /// long as the result lives.
    static std::deque<RawPeer> takeRoomOf(const Host &host)
    {
        std::deque<RawPeer> peers;
        for (int i = 0; i < 64; ++i) {
            peers.emplace_back(socketOf(host)).authenticate();
            EXPECT_TRUE(peers.back().isAnswered()) << i;
        }
        return peers;
    }

    ScratchRoot root;
};
