// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/UserDefaultsExtensions.h"

#include "DozelyKit/system/machine/ConsoleUser.h"
#include "support/FakeConsoleUser.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

using namespace dozely;

using zandorSoftwaresExtensions::loggedInUser;
using zandorSoftwaresExtensions::loggedInUserID;

TEST(UserDefaultsExtensions, TellNameAndIdOfTheUserAtTheConsole)
{
    const auto console = std::make_shared<FakeConsoleUser>();
    Port<ConsoleUser>::current() = console;
    console->user = ConsoleUser::User{"alice", 4'000'000'000U};
    EXPECT_EQ(loggedInUser(), "alice");
    EXPECT_EQ(loggedInUserID(), 4'000'000'000U);
    // Asked afresh each time.
    console->user = ConsoleUser::User{"bob", 1002};
    EXPECT_EQ(loggedInUser(), "bob");
    EXPECT_EQ(loggedInUserID(), 1002U);
}

TEST(UserDefaultsExtensions, TellNoNameAndTheIdZeroWhenNobodyIsThere)
{
    Port<ConsoleUser>::current() = std::make_shared<FakeConsoleUser>();
    EXPECT_TRUE(loggedInUser().isNull());
    EXPECT_EQ(loggedInUserID(), 0U);
}

TEST(UserDefaultsExtensions, AskTheLoginManagerOfThisMachine)
{
    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning());
    EXPECT_TRUE(loggedInUser().isNull());
    ASSERT_TRUE(bus.startMock("logind", "org.freedesktop.login1"));
    ASSERT_TRUE(bus.call("org.freedesktop.login1", "/org/freedesktop/login1",
                         "org.freedesktop.DBus.Mock.AddSession", {"c1", "seat0", "1001", "alice", "true"}));
    EXPECT_EQ(loggedInUser(), "alice");
    EXPECT_EQ(loggedInUserID(), 1001U);
}
