// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/Names.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

// Both ends take a name from the header, so a slip in it would change both and no other test would see it;
// but stored schedules, installed bundles and agents of another version keep the old one.

TEST(Names, OfOrdersTheirSendersAndTheirKeysNeverChange)
{
    EXPECT_EQ(OrderName::userAgentMustAct, "UserAgentMustActEvent");
    EXPECT_EQ(OrderName::userAgentMustAnticipate, "UserAgentMustAnticipateEvent");
    EXPECT_EQ(OrderName::userAgentMustWithdraw, "UserAgentMustWithdrawEvent");
    EXPECT_EQ(OrderName::daemonMustAct, "DaemonMustActEvent");
    EXPECT_EQ(OrderName::daemonMustRemove, "DaemonMustRemoveEvent");
    EXPECT_EQ(OrderName::daemonMustNoteOutcome, "DaemonMustNoteOutcomeEvent");
    EXPECT_EQ(OrderName::daemonMustRunNow, "DaemonMustRunNowEvent");
    EXPECT_EQ(OrderName::daemonMustAnticipateAgain, "DaemonMustAnticipateAgainEvent");
    EXPECT_EQ(OrderSender::userAgent, "com.dozely.UserAgent");
    EXPECT_EQ(OrderSender::daemon, "com.dozely.Daemon");
    EXPECT_EQ(OrderSender::admin, "com.dozely.Admin");
    EXPECT_EQ(OrderKey::bundlePath, "Schedule Bundle Path");
    EXPECT_EQ(OrderKey::date, "Schedule Date");
    EXPECT_EQ(OrderKey::parameters, "Schedule Parameters");
    EXPECT_EQ(OrderKey::scheduleIdentifier, "Schedule Identifier");
    EXPECT_EQ(OrderKey::scheduleName, "Schedule Name");
    EXPECT_EQ(OrderKey::outcome, "Schedule Outcome");
    EXPECT_EQ(OrderOutcome::performed, "done");
    EXPECT_EQ(OrderOutcome::notPerformed, "not performed");
    EXPECT_EQ(AlertKey::date, "Schedule Date");
}

TEST(Names, InStoredSchedulesNeverChange)
{
    EXPECT_EQ(ParameterKey::alert, "Alert");
    EXPECT_EQ(ParameterKey::delayBeforeAlert, "Delay before alert");
    EXPECT_EQ(ParameterKey::needsWakeUp, "Needs Wake Up");
    EXPECT_EQ(ParameterKey::needsStartup, "Needs Startup");
    EXPECT_EQ(ParameterKey::actsInUserAgent, "Acts In User Agent");
    EXPECT_EQ(CommandKey::program, "Program");
    EXPECT_EQ(CommandKey::arguments, "Arguments");
    EXPECT_EQ(FixedPath::plugIns, "/Library/Application Support/Dozely/PlugIns");
}

TEST(Names, InBundlesNeverChange)
{
    EXPECT_EQ(InfoKey::daemonModule, "WDDaemonModule");
    EXPECT_EQ(InfoKey::userAgentModule, "WDUserAgentModule");
    EXPECT_EQ(InfoKey::prefPaneModule, "WDPrefPaneModule");
    EXPECT_EQ(InfoKey::actsInUserAgent, "WDActsInUserAgent");
    EXPECT_EQ(InfoKey::inhibitsSleep, "WDInhibitsSleep");
    EXPECT_EQ(InfoKey::userAgentNib, "WDUserAgentNib");
    EXPECT_EQ(InfoKey::editNibFile, "WDEditNibFile");
    EXPECT_EQ(TextKey::pluginName, "Plugin Name");
    EXPECT_EQ(TextKey::alertMessage, "Alert message %@");
    EXPECT_EQ(TextKey::cancel, "Cancel");
    EXPECT_EQ(userAgentControllerClass, "WDUserAgentController");
    EXPECT_STREQ(PlugInProperty::scheduleName, "scheduleName");
    EXPECT_EQ(ParameterKey::tellsFailure, "Tell Failure");
    EXPECT_EQ(OrderName::userAgentMustPrepare, "UserAgentMustPrepareEvent");
    EXPECT_EQ(OrderName::userAgentMustTellFailure, "UserAgentMustTellFailureEvent");
    EXPECT_EQ(OrderName::userAgentMustTestAlert, "UserAgentMustTestAlertEvent");
    EXPECT_EQ(OrderSender::application, "com.dozely.App");
    EXPECT_EQ(OrderKey::failure, "Schedule Failure");
    EXPECT_EQ(OrderKey::exitStatus, "Schedule Exit Status");
    EXPECT_EQ(OrderKey::output, "Schedule Output");
    EXPECT_EQ(OrderOutcome::failed, "failed");
    EXPECT_EQ(OrderName::daemonMustSkip, "DaemonMustSkipEvent");
    EXPECT_EQ(OrderName::daemonMustPostpone, "DaemonMustPostponeEvent");
    EXPECT_EQ(OrderKey::delay, "Schedule Delay");
    EXPECT_EQ(OrderKey::wholeDay, "Schedule Whole Day");
    EXPECT_EQ(OrderKey::skipsOverlap, "Schedule Skips Overlap");
    EXPECT_EQ(OrderOutcome::skipped, "skipped");
    EXPECT_EQ(InfoKey::missedPolicy, "WDMissedPolicy");
    EXPECT_EQ(InfoKey::missedLimit, "WDMissedLimit");
}
