// SPDX-License-Identifier: MIT
#include "hosts/application/window/StatusLine.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/Port.h"
#include "support/FakeClock.h"
#include "unit/hosts/application/FakeSchedulerClient.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gmock/gmock.h>

using namespace dozely;

class StatusLineTest : public testing::Test
{
protected:
    StatusLineTest() { Port<Clock>::current() = std::make_shared<FakeClock>(); }

    /// The sign of a part and what is read of it; its remedy.
    struct Said {
        QString sign;
        QString text;
        QString remedy;
    };
    Said said(const char *part, const QVariantMap &properties)
    {
        client.told = properties;
        Q_EMIT client.propertiesChanged();
        const auto *const label = line.findChild<QLabel *>(part);
        EXPECT_EQ(label->toolTip(), label->accessibleDescription());
        QString sign = label->text();
        sign.remove(QRegularExpression("<[^>]*>"));
        return {sign.left(1), label->accessibleName(), label->toolTip()};
    }

    FakeSchedulerClient client;
    StatusLine line{client};
};

TEST_F(StatusLineTest, SaysWhetherTheServiceRuns)
{
    Said service = said("service", {{"Version", "7.1"}});
    EXPECT_EQ(service.sign, "●");
    EXPECT_EQ(service.text, "Service running");
    EXPECT_EQ(service.remedy, "Version 7.1");
    client.setThere(false);
    service = said("service", {});
    EXPECT_EQ(service.sign, "▲");
    EXPECT_EQ(service.text, "Service not running");
    EXPECT_EQ(service.remedy, "An administrator starts it with: systemctl start dozelyd");
}

TEST_F(StatusLineTest, SaysWhetherTheAgentOfWhoeverIsThereRuns)
{
    Said agent = said("agent", {});
    EXPECT_EQ(agent.sign, "○");
    EXPECT_EQ(agent.text, "Nobody logged in");
    EXPECT_EQ(agent.remedy,
              "No session is at this computer's screen now. Actions that need one wait for it.");
    agent = said("agent", {{"AgentOfConsoleUser", QVariantMap{{"name", "anna"}, {"isAlive", true}}}});
    EXPECT_EQ(agent.sign, "●");
    EXPECT_EQ(agent.text, "Agent running");
    EXPECT_EQ(agent.remedy, "It shows alerts and acts in the session of anna.");
    agent = said("agent", {{"AgentOfConsoleUser", QVariantMap{{"name", "anna"}, {"isAlive", false}}}});
    EXPECT_EQ(agent.sign, "▲");
    EXPECT_EQ(agent.text, "Agent not running");
    EXPECT_EQ(agent.remedy,
              "It starts when you log in. To start it now: systemctl --user start dozely-agent");
}

TEST_F(StatusLineTest, SaysWhetherAndWhenTheClockWakesTheComputer)
{
    Said clock = said("clock", {});
    EXPECT_EQ(clock.sign, "○");
    EXPECT_EQ(clock.text, "Cannot wake this computer");
    EXPECT_EQ(clock.remedy,
              "It has no clock that could wake it or switch it on. Have it stay awake instead.");
    const auto with = [](const char *alarm) {
        return QVariantMap{
            {"WakeClock", QVariantMap{{"isSupported", true}, {"device", "rtc0"}, {"alarm", alarm}}}};
    };
    clock = said("clock", with(""));
    EXPECT_EQ(clock.sign, "●");
    EXPECT_EQ(clock.text, "Wake clock ready");
    EXPECT_EQ(clock.remedy, "The clock rtc0 wakes this computer.");
    EXPECT_TRUE(said("clock", with("2026-03-14T22:00:00Z")).text.startsWith("Wakes "));
}

TEST_F(StatusLineTest, ShowsOnlyWhatCanBeKnownWithoutTheService)
{
    for (const bool isThere : {true, false}) {
        client.setThere(isThere);
        for (const char *part : {"agent", "clock", "testWaking"})
            EXPECT_EQ(line.findChild<QWidget *>(part)->isVisibleTo(&line), isThere) << part;
        for (const char *part : {"service", "testAlert"})
            EXPECT_TRUE(line.findChild<QWidget *>(part)->isVisibleTo(&line)) << part;
    }
}

TEST_F(StatusLineTest, HasAButtonForEachTest)
{
    const QSignalSpy alerts(&line, &StatusLine::alertTestWanted);
    const QSignalSpy wakings(&line, &StatusLine::wakingTestWanted);
    QTest::mouseClick(line.findChild<QToolButton *>("testAlert"), Qt::LeftButton);
    EXPECT_EQ(alerts.count(), 1);
    EXPECT_EQ(wakings.count(), 0);
    QTest::mouseClick(line.findChild<QToolButton *>("testWaking"), Qt::LeftButton);
    EXPECT_EQ(alerts.count(), 1);
    EXPECT_EQ(wakings.count(), 1);
}
