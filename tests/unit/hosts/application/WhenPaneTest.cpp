// SPDX-License-Identifier: MIT
#include "hosts/application/window/WhenPane.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"

#include <QLineEdit>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
class WhenPaneTest : public testing::Test
{
protected:
    WhenPaneTest()
    {
        Port<Clock>::current() = std::make_shared<FakeClock>();
        pane = std::make_unique<WhenPane>();
        QObject::connect(pane.get(), &WhenPane::edited,
                         [this](const ScheduleTimes &times) { edits += times; });
        times.date = QDateTime({2026, 3, 14}, {22, 0}, Qt::UTC);
        times.timeZone = "Europe/Berlin";
        times.recurrence =
            Recurrence{"FREQ=SECONDLY;INTERVAL=7", *WallTime::fromString("2026-03-14T23:00:00"), {}, {}, {}};
        pane->show(times);
    }
    /// Writes it as an expert does.
    void write(const QString &rule) const
    {
        for (auto *const edit : pane->findChildren<QLineEdit *>()) {
            if (edit->accessibleName() == "Rule")
                edit->setText(rule);
        }
    }

    std::unique_ptr<WhenPane> pane;
    ScheduleTimes times;
    QList<ScheduleTimes> edits;
};
} // namespace

TEST_F(WhenPaneTest, TellsWhatCanBeAndWhyTheRestCannot)
{
    EXPECT_EQ(pane->fault(), "");
    write("FREQ=SOMETIMES");
    EXPECT_NE(pane->fault(), "");
    EXPECT_TRUE(edits.isEmpty());
    write("FREQ=SECONDLY;INTERVAL=9");
    EXPECT_EQ(pane->fault(), "");
    ASSERT_EQ(edits.size(), 1);
    EXPECT_EQ(edits.first().recurrence->rule, "FREQ=SECONDLY;INTERVAL=9");
}

TEST_F(WhenPaneTest, TellsNothingTwice)
{
    write("FREQ=SOMETIMES");
    write(times.recurrence->rule); // as it was
    EXPECT_TRUE(edits.isEmpty());
    write("FREQ=SECONDLY;INTERVAL=9");
    ASSERT_EQ(edits.size(), 1);
    pane->show(edits.first()); // as whoever is told does
    EXPECT_EQ(edits.size(), 1);
    pane->show(times);
    EXPECT_EQ(edits.size(), 1);
}
