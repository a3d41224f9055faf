// SPDX-License-Identifier: MIT
#include "hosts/application/program/StartToken.h"

#include <QWidget>

#include <gmock/gmock.h>

TEST(StartToken, IsWhatEitherWindowSystemGave)
{
    qunsetenv("XDG_ACTIVATION_TOKEN");
    qunsetenv("DESKTOP_STARTUP_ID");
    EXPECT_EQ(StartToken::ofThisStart(), "");
    qputenv("DESKTOP_STARTUP_ID", "menu-1_TIME5");
    EXPECT_EQ(StartToken::ofThisStart(), "menu-1_TIME5");
    qputenv("XDG_ACTIVATION_TOKEN", "7f3a");
    EXPECT_EQ(StartToken::ofThisStart(), "7f3a");
}

TEST(StartToken, OfX11SaysWhenThePersonActed)
{
    EXPECT_EQ(StartToken::timeOf("menu-1-desk_TIME4294967295"), 4294967295U);
    EXPECT_EQ(StartToken::timeOf("a_TIME1_TIME22"), 22U);
    EXPECT_EQ(StartToken::timeOf("_TIME22"), 22U);
    for (const char *const none : {"", "7f3a", "_TIME", "a_TIMEx", "a_TIME4294967296", "a_TIME-1"})
        EXPECT_EQ(StartToken::timeOf(none), std::nullopt) << none;
}

TEST(StartToken, IsLeftToNoProgramThatIsStartedLater)
{
    QWidget window;
    window.show();
    qputenv("XDG_ACTIVATION_TOKEN", "7f3a");
    StartToken::activate(window, "another");
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}
