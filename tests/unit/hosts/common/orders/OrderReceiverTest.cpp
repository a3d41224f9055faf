// SPDX-License-Identifier: MIT
#include "hosts/common/orders/OrderReceiver.h"

#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "support/PrintTo.h"
#include "support/WaitUntil.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <stdexcept>

TEST(OrderReceiver, HandsOrdersOnFromTheEventLoopUntilItsContextIsGone)
{
    auto context = std::make_unique<QObject>();
    QList<ReceivedOrder> received;
    OrderReceiver::receive("Order", "sender", context.get(),
                           [&](const ReceivedOrder &order) { received += order; });
    const auto post = [] {
        WDNotificationCenter::defaultCenter()->postNotification(
            NSNotification("Order", "sender", {{"Key", "value"}}));
    };
    post();
    EXPECT_TRUE(received.isEmpty()) << "whoever posts is answered first";
    EXPECT_TRUE(waitUntil([&] { return received.size() == 1; }));
    EXPECT_EQ(received[0].name, "Order");
    EXPECT_EQ(received[0].userInfo.value("Key"), "value");
    EXPECT_FALSE(received[0].peer) << "posted here, by nobody elsewhere";
    post();
    context.reset();
    post();
    QCoreApplication::processEvents();
    EXPECT_EQ(received.size(), 1);
}

TEST(OrderReceiver, LetsASenderHaveItsAnswerOnlyAfterTheHandler)
{
    QObject context;
    bool isRefused = false;
    int handled = 0;
    OrderReceiver::receiveBeforeAnswer("Question", "sender", &context, [&](const ReceivedOrder &) {
        ++handled;
        if (isRefused)
            throw std::runtime_error("no");
    });
    const auto post = [] {
        WDNotificationCenter::defaultCenter()->postNotification(NSNotification("Question", "sender", {}));
    };
    post();
    EXPECT_EQ(handled, 1);
    isRefused = true;
    EXPECT_THROW(post(), std::runtime_error);
    EXPECT_EQ(handled, 2);
}
