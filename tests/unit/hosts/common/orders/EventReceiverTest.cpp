// SPDX-License-Identifier: MIT
#include "hosts/common/orders/EventReceiver.h"

#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "support/PrintTo.h"
#include "support/WaitUntil.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

TEST(EventReceiver, HandsEventsOnFromTheEventLoopUntilItsContextIsGone)
{
    auto context = std::make_unique<QObject>();
    QList<ReceivedEvent> received;
    EventReceiver::receive("Event", "sender", context.get(),
                           [&](const ReceivedEvent &event) { received += event; });
    const auto post = [] {
        WDNotificationCenter::defaultCenter()->postNotification(
            NSNotification("Event", "sender", {{"Key", "value"}}));
    };
    post();
    EXPECT_TRUE(received.isEmpty()) << "whoever posts is answered first";
    EXPECT_TRUE(waitUntil([&] { return received.size() == 1; }));
    EXPECT_EQ(received[0].name, "Event");
    EXPECT_EQ(received[0].userInfo.value("Key"), "value");
    EXPECT_FALSE(received[0].peer) << "posted here, by nobody elsewhere";
    post();
    context.reset();
    post();
    QCoreApplication::processEvents();
    EXPECT_EQ(received.size(), 1);
}
