// SPDX-License-Identifier: MIT
#include "WindowFixture.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "hosts/application/month/MonthGrid.h"
#include "hosts/application/program/Translations.h"
#include "hosts/application/window/ScheduleEditor.h"
#include "support/BaselinePicture.h"
#include "support/BaselineText.h"
#include "support/FakeClock.h"
#include "support/InterfaceEnvironment.h"
#include "support/WidgetDescription.h"

#include <QTabBar>

using namespace dozely;

namespace
{
/// Everything of the window, as text. It is Saturday, 2026-03-14 06:00 UTC, 07:00 in Berlin.
class WindowDescription : public WindowFixture
{
protected:
    WindowDescription()
    {
        qputenv("TZ", "Europe/Berlin");
        Port<Clock>::current() = std::make_shared<FakeClock>();
        client.schedules.clear();
        client.told = {
            {"Version", "1"},
            {"AgentOfConsoleUser", QVariantMap{{"user", anna}, {"name", "anna"}, {"isAlive", true}}},
            {"WakeClock",
             QVariantMap{{"isSupported", true}, {"device", "rtc0"}, {"alarm", "2026-03-15T05:50:00Z"}}}};
    }

    QVariantMap planned(const QString &name, const QString &rule = {}) const
    {
        QVariantMap made{
            {"name", name},
            {"isEnabled", true},
            {"bundlePath", path},
            {"date", "2026-03-14T21:00:00Z"},
            {"next", "2026-03-14T21:00:00Z"},
            {"parameters", QVariantMap{{"Text", "hello"}, {"Alert", 1}, {"Delay before alert", 300}}},
            {"timeZone", ""},
            {"owner", anna},
            {"actsIn", "session"},
            {"revision", "r0"},
            {"mayChange", true}};
        if (!rule.isEmpty())
            made.insert("repeats", QVariantMap{{"rule", rule}, {"localStart", "2026-03-14T22:00:00"}});
        return made;
    }

    /// Of everything, as large as it usually is.
    testing::AssertionResult windowIs(const QString &name)
    {
        settle();
        return readsLikeBaseline(describe(*window), "window-" + name);
    }

    /// One cell alone: of a large picture small parts may differ.
    static testing::AssertionResult cellIs(QAbstractItemView &view, const QModelIndex &index,
                                           const QString &name)
    {
        settle();
        return looksLikeBaseline(view.viewport()->grab(view.visualRect(index)).toImage(), "window-" + name);
    }

    testing::AssertionResult editorIs(const QString &name)
    {
        settle();
        return readsLikeBaseline(describe(*find<ScheduleEditor>("editor")->widget()),
                                 "window-editor-" + name);
    }
};
} // namespace

TEST_F(WindowDescription, WithoutSchedules)
{
    makeAction("PowerOff");
    makeAction("Command");
    open();
    EXPECT_TRUE(windowIs("start"));
}

TEST_F(WindowDescription, WithoutTheService)
{
    client.isThere = false;
    open();
    std::static_pointer_cast<FakeClock>(Port<Clock>::current())->advance(std::chrono::seconds(2));
    EXPECT_TRUE(windowIs("away"));
}

TEST_F(WindowDescription, WithSchedulesOfAllKinds)
{
    client.schedules["1"] = planned("Wake with music", "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR");
    client.schedules["2"] = planned("Backup", "FREQ=DAILY");
    client.schedules["2"].remove("owner");
    client.schedules["2"]["actsIn"] = "daemon";
    client.schedules["2"]["mayChange"] = false;
    client.schedules["3"] = planned("Stand up and walk a few steps, then look out of the window for a while");
    client.schedules["3"]["bundlePath"] = other;
    client.schedules["3"]["next"] = client.schedules["3"]["date"] = "2026-04-14T21:00:00Z";
    client.schedules["4"] = planned("Old reminder");
    client.schedules["4"]["isEnabled"] = false;
    client.schedules["4"]["date"] = "2026-03-01T21:00:00Z";
    client.schedules["4"].remove("next");
    open();
    EXPECT_TRUE(windowIs("schedules"));
    EXPECT_TRUE(looksLikeBaseline(list().grab().toImage(), "window-schedules-list"));
    list().setFocus();
    EXPECT_TRUE(cellIs(list(), list().model()->index(0, 0), "row-chosen"));
    EXPECT_TRUE(cellIs(list(), list().model()->index(2, 0), "row-long"));
    EXPECT_TRUE(cellIs(list(), list().model()->index(3, 0), "row-off"));
    list().setCurrentIndex(list().model()->index(1, 0));
    EXPECT_TRUE(windowIs("not-mine"));
}

TEST_F(WindowDescription, WithChangesAndSomethingToSay)
{
    client.schedules["1"] = planned("Wake with music", "FREQ=DAILY");
    open();
    type("name", "Wake gently");
    client.changeElsewhere("1", {{"name", "Wake loudly"}});
    settle();
    EXPECT_TRUE(windowIs("changed"));
}

TEST_F(WindowDescription, OfTheMonth)
{
    client.schedules["1"] = planned("Wake with music", "FREQ=DAILY");
    const auto occurrence = [](const QString &date, const char *name = "Music") {
        return QVariantMap{{"identifier", "1"}, {"name", name}, {"date", date}};
    };
    QVariantMap postponed = occurrence("2026-03-15T21:00:00Z");
    postponed["postponedTo"] = postponed["moment"] = "2026-03-15T21:30:00Z";
    QVariantMap skipped = occurrence("2026-03-15T22:00:00Z", "Backup");
    skipped["state"] = "skipped";
    client.occurrences = {occurrence("2026-03-14T21:00:00Z", "Wake with music and then make some tea"),
                          postponed, skipped, occurrence("2026-04-01T10:00:00Z")};
    for (int hour = 10; hour < 19; ++hour)
        client.occurrences += occurrence(QString("2026-03-20T%1:00:00Z").arg(hour));
    open();
    find<QTabBar>("views")->setCurrentIndex(1);
    EXPECT_TRUE(waitUntil([this] { return client.calls.filter("next from").size() > 0; }));
    EXPECT_TRUE(windowIs("month"));
    auto &grid = *window->findChild<MonthGrid *>();
    EXPECT_TRUE(looksLikeBaseline(grid.grab().toImage(), "window-month-grid"));
    grid.setFocus();
    EXPECT_TRUE(cellIs(grid, grid.model()->index(2, 5), "day-chosen"));
    EXPECT_TRUE(cellIs(grid, grid.model()->index(2, 6), "day-changed"));
    EXPECT_TRUE(cellIs(grid, grid.model()->index(3, 4), "day-full"));
    EXPECT_TRUE(cellIs(grid, grid.model()->index(5, 2), "day-outside"));
    grid.setCurrentIndex(grid.model()->index(3, 4));
    EXPECT_TRUE(windowIs("month-full-day"));
}

TEST_F(WindowDescription, OfTheHistory)
{
    client.schedules["1"] = planned("Wake with music", "FREQ=DAILY");
    client.outcomes = {{{"identifier", "1"},
                        {"name", "Wake with music"},
                        {"date", "2026-03-13T21:00:00Z"},
                        {"state", "failed"},
                        {"begun", "2026-03-13T21:00:01.500Z"},
                        {"ended", "2026-03-13T21:10:00Z"},
                        {"lateness", qlonglong{1500}},
                        {"exitStatus", 3}},
                       {{"identifier", "1"},
                        {"name", "Wake with music"},
                        {"date", "2026-03-12T21:00:00Z"},
                        {"state", "done"}}};
    open();
    find<QTabBar>("views")->setCurrentIndex(2);
    EXPECT_TRUE(waitUntil([this] { return client.calls.contains("history"); }));
    EXPECT_TRUE(windowIs("history"));
}

TEST_F(WindowDescription, OfEachWayToRepeat)
{
    const QList<std::pair<QString, QString>> ways{
        {"once", ""},
        {"daily", "FREQ=DAILY;INTERVAL=3;COUNT=10"},
        {"times", "FREQ=DAILY;BYHOUR=6,22;BYMINUTE=0,30"},
        {"weekdays", "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR"},
        {"weekly", "FREQ=WEEKLY;INTERVAL=2;BYDAY=SA,SU"},
        {"monthly", "FREQ=MONTHLY;BYMONTHDAY=1,15,-1"},
        {"monthly-day", "FREQ=MONTHLY;BYDAY=-1FR;UNTIL=20261231"},
        {"yearly", "FREQ=YEARLY;INTERVAL=2;BYMONTH=12;BYMONTHDAY=24"},
        {"distance", "FREQ=HOURLY;INTERVAL=36"},
        {"expert", "FREQ=MONTHLY;BYDAY=-2FR"}};
    for (const auto &[name, rule] : ways)
        client.schedules[name] = planned(name, rule);
    client.schedules["weekly"]["repeats"] = QVariantMap{{"rule", "FREQ=WEEKLY;INTERVAL=2;BYDAY=SA,SU"},
                                                        {"localStart", "2026-03-14T22:00:00"},
                                                        {"excludedDates", QStringList{"2026-03-28T22:00:00"}},
                                                        {"extraDates", QStringList{"2026-03-18T08:00:00"}}};
    client.schedules["daily"]["missed"] = "runOnce";
    client.schedules["daily"]["after"] = "sleep";
    client.schedules["daily"]["parameters"] =
        QVariantMap{{"Text", "hello"}, {"Needs Wake Up", 1}, {"Needs Startup", 1}};
    client.schedules["monthly"]["timeZone"] = "Asia/Tokyo";
    open();
    for (int row = 0; row < list().model()->rowCount(); ++row) {
        list().setCurrentIndex(list().model()->index(row, 0));
        settle();
        EXPECT_TRUE(editorIs(find<QLineEdit>("name")->text()));
    }
}

TEST_F(WindowDescription, OfWhatIsRemarkableOrWrong)
{
    client.schedules["1"] = planned("monthly", "FREQ=MONTHLY;BYMONTHDAY=31");
    open();
    EXPECT_TRUE(editorIs("remark"));
    client.changeElsewhere("1", {{"repeats", QVariantMap{{"rule", "FREQ=MONTHLY;BYDAY=-2FR"},
                                                         {"localStart", "2026-03-14T22:00:00"}}}});
    settle();
    for (auto *const field : window->findChildren<QLineEdit *>()) {
        if (field->accessibleName() == "Rule")
            field->setText("FREQ=SOMETIMES");
    }
    EXPECT_TRUE(editorIs("fault"));
    window->setPalette(InterfaceEnvironment::darkPalette());
    EXPECT_TRUE(editorIs("fault-dark"));
}

TEST_F(WindowDescription, FromRightToLeft)
{
    UserLanguages::set({"ar"});
    Translations::install({"ar"});
    QLocale::setDefault(QLocale("ar_EG"));
    client.schedules["1"] = planned("Wake with music", "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR");
    open();
    EXPECT_TRUE(windowIs("arabic"));
    EXPECT_TRUE(cellIs(list(), list().model()->index(0, 0), "row-arabic"));
}
