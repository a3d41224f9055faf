// SPDX-License-Identifier: MIT
#include "hosts/common/events/RequiredEvents.h"

#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace dozely;

class RequiredEventsTest : public testing::Test
{
protected:
    /// What a start that brings this token gives on.
    QString given(const std::optional<QString> &token)
    {
        const auto event = NSAppleEventDescriptor::descriptorWithDescriptorType(typeAppleEvent, {});
        if (token)
            event->setParamDescriptorForKeyword(NSAppleEventDescriptor::descriptorWithString(*token),
                                                RequiredEvents::startToken);
        QSignalSpy opened(&events, &RequiredEvents::opened);
        events.handleOpenApplication(event, nullptr);
        EXPECT_EQ(opened.count(), 1);
        return opened.value(0).value(0).toString();
    }

    ScratchRoot root;
    RequiredEvents events;
};

TEST_F(RequiredEventsTest, AStartBringsTheTokenThatTheDesktopGaveIt)
{
    EXPECT_EQ(given({}), "");
    EXPECT_EQ(given("menu-1-desk_TIME5"), "menu-1-desk_TIME5");
    EXPECT_EQ(given("!~"), "!~");
    EXPECT_EQ(given(QString(512, 'x')), QString(512, 'x'));
}

TEST_F(RequiredEventsTest, WhatCannotBeATokenIsDroppedAndTheStartStillHeard)
{
    EXPECT_EQ(given(QString(513, 'x')), "");
    for (const char *const none : {"two words", "line\n", "\x7f", "na\xc3\xafve", "\t"})
        EXPECT_EQ(given(QString::fromUtf8(none)), "") << none;
}

TEST_F(RequiredEventsTest, WhoAsksToQuitIsNotedAndHeard)
{
    QSignalSpy quit(&events, &RequiredEvents::quit);
    events.handleQuit(NSAppleEventDescriptor::descriptorWithDescriptorType(typeAppleEvent, {}), nullptr);
    EXPECT_EQ(quit.count(), 1);
    EXPECT_TRUE(root.logContent().contains("Process 0 asks this one to quit"));
}
