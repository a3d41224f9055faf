// SPDX-License-Identifier: MIT
#include "hosts/common/events/EventRequest.h"

#include <gtest/gtest.h>

TEST(EventRequest, SaysInASentenceWhatFailed)
{
    EXPECT_EQ(eventFailure(procNotFound), "No such process runs.");
    EXPECT_EQ(eventFailure(connectionInvalid), "The process has ended, or takes no events from this user.");
    EXPECT_EQ(eventFailure(sessTableErr), "The process has no room for the event now.");
    EXPECT_EQ(eventFailure(errAEEventNotHandled), "The process does not know this event.");
    EXPECT_EQ(eventFailure(errAETimeout), "The process did not answer in time.");
    EXPECT_EQ(eventFailure(errAEEventFailed), "The process failed to handle the event.");
    EXPECT_EQ(eventFailure(errAEPrivilegeError), "This user may not send to that process.");
    EXPECT_EQ(eventFailure(memFullErr), "The event or its reply is too large.");
    EXPECT_EQ(eventFailure(-1), "The event could not be sent.");
}
