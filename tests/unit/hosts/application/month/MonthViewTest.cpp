// SPDX-License-Identifier: MIT
#include "hosts/application/month/MonthView.h"

#include "hosts/application/month/MonthGrid.h"
#include "hosts/application/month/MonthModel.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/ProcessorTime.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <algorithm>

using namespace dozely;
using namespace std::chrono_literals;

/// It is Saturday, 2026-03-14 06:00 UTC, 07:00 in Berlin.
class MonthViewTest : public testing::Test
{
protected:
    MonthViewTest()
    {
        qputenv("TZ", "Europe/Berlin");
        Port<Clock>::current() = clock;
        QLocale::setDefault(QLocale("en_GB"));
        view = std::make_unique<MonthView>();
        view->resize(1000, 700);
        view->show();
        QApplication::setActiveWindow(view.get());
    }
    ~MonthViewTest() override { QLocale::setDefault(QLocale::c()); }

    static MonthOccurrence occurrence(const QString &name, const QString &moment)
    {
        const QDateTime date = QDateTime::fromString(moment, Qt::ISODate);
        return {"id-" + name, name, date, date};
    }
    static QList<MonthOccurrence> many(int count)
    {
        QList<MonthOccurrence> all;
        const QDateTime first({2026, 3, 1}, {0, 0}, Qt::UTC);
        const int step = 31 * 24 * 3600 / count;
        for (int i = 0; i < count; ++i) {
            const QDateTime date = first.addSecs(qint64{step} * i);
            all += {QString::number(i), QString("Schedule %1").arg(i), date, date};
        }
        return all;
    }
    MonthGrid &grid() const { return *view->findChild<MonthGrid *>(); }
    QListView &list() const { return *view->findChild<QListView *>(); }
    void key(Qt::Key key) const { QTest::keyClick(&grid(), key); }
    QString title() const { return view->findChild<QLabel *>()->text(); }
    QToolButton *button(const QString &name) const
    {
        for (auto *const each : view->findChildren<QToolButton *>()) {
            if (each->text() == name || each->accessibleName() == name)
                return each;
        }
        ADD_FAILURE() << "there is no " << qPrintable(name);
        return nullptr;
    }
    void press(const QString &name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    QStringList listed() const
    {
        QStringList rows;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            rows += list().model()->index(row, 0).data().toString();
        return rows;
    }
    /// A point of a line in a day's cell: 0 is that with the number.
    QPoint lineOf(const QDate &day, int line) const
    {
        const QRect cell = grid().visualRect(grid().month().indexOf(day));
        const int height = grid().fontMetrics().height();
        return {cell.center().x(), cell.top() + 4 + line * (height + 2) + height / 2};
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::unique_ptr<MonthView> view;
};

TEST_F(MonthViewTest, BeginsWithTodayAndTellsWhatItShows)
{
    EXPECT_EQ(view->day(), QDate(2026, 3, 14));
    EXPECT_EQ(title(), "March 2026");
    EXPECT_EQ(view->rangeBegin(), QDateTime({2026, 2, 22}, {23, 0}, Qt::UTC));
    EXPECT_EQ(view->rangeEnd(), QDateTime({2026, 4, 5}, {22, 0}, Qt::UTC)); // it is summer time by then
}

TEST_F(MonthViewTest, WithNothingChosenNothingCanBeDone)
{
    for (const char *text : {"Skip", "Put off", "Run now"})
        EXPECT_FALSE(button(text)->isEnabled()) << text;
}

TEST_F(MonthViewTest, ArrowsGoFromDayToDayAndOnIntoOtherMonths)
{
    const QSignalSpy ranges(view.get(), &MonthView::rangeChanged);
    key(Qt::Key_Right);
    EXPECT_EQ(view->day(), QDate(2026, 3, 15));
    key(Qt::Key_Up);
    key(Qt::Key_Left);
    EXPECT_EQ(view->day(), QDate(2026, 3, 7));
    EXPECT_EQ(ranges.count(), 0);
    key(Qt::Key_Up);
    EXPECT_EQ(view->day(), QDate(2026, 2, 28));
    EXPECT_EQ(title(), "February 2026");
    EXPECT_EQ(ranges.count(), 1);
    key(Qt::Key_Home);
    EXPECT_EQ(view->day(), QDate(2026, 2, 1));
    key(Qt::Key_End);
    key(Qt::Key_Down);
    EXPECT_EQ(view->day(), QDate(2026, 3, 7));
    key(Qt::Key_PageDown);
    EXPECT_EQ(view->day(), QDate(2026, 4, 7));
    key(Qt::Key_PageUp);
    key(Qt::Key_PageUp);
    EXPECT_EQ(view->day(), QDate(2026, 2, 7));
}

TEST_F(MonthViewTest, KeysThatMeanNothingToItAreLeftToTheWindow)
{
    for (const auto &[each, modifiers] :
         {std::pair(Qt::Key_F5, Qt::NoModifier), std::pair(Qt::Key_Escape, Qt::NoModifier),
          std::pair(Qt::Key_N, Qt::ControlModifier)}) {
        QKeyEvent event(QEvent::KeyPress, each, modifiers);
        QApplication::sendEvent(&grid(), &event);
        EXPECT_FALSE(event.isAccepted()) << each;
    }
    QKeyEvent used(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    QApplication::sendEvent(&grid(), &used);
    EXPECT_TRUE(used.isAccepted());
}

TEST_F(MonthViewTest, ArrowsFollowTheReadingDirection)
{
    view->setLayoutDirection(Qt::RightToLeft);
    key(Qt::Key_Right);
    EXPECT_EQ(view->day(), QDate(2026, 3, 13));
    EXPECT_EQ(button("Next month")->arrowType(), Qt::LeftArrow);
    EXPECT_LT(lineOf({2026, 3, 13}, 0).x(), lineOf({2026, 3, 12}, 0).x());
}

TEST_F(MonthViewTest, ButtonsGoFromMonthToMonthAndBackToToday)
{
    press("Next month");
    press("Next month");
    EXPECT_EQ(title(), "May 2026");
    press("Today");
    EXPECT_EQ(view->day(), QDate(2026, 3, 14));
    view->setDay({2026, 3, 31});
    press("Previous month");
    EXPECT_EQ(view->day(), QDate(2026, 2, 28));
}

TEST_F(MonthViewTest, TheChosenDayIsListedWhole)
{
    view->setOccurrences({occurrence("Backup", "2026-03-14T21:00:00Z"),
                          occurrence("Music", "2026-03-14T05:55:00Z"),
                          occurrence("Other", "2026-03-15T05:55:00Z")});
    EXPECT_EQ(listed(), QStringList({"06:55 Music", "22:00 Backup"}));
    key(Qt::Key_Right);
    EXPECT_EQ(listed(), QStringList("06:55 Other"));
    EXPECT_EQ(list().accessibleName(), "Sunday, 15 March 2026");
}

TEST_F(MonthViewTest, EnterOpensTheListAndEscapeLeavesIt)
{
    view->setOccurrences({occurrence("Backup", "2026-03-14T21:00:00Z")});
    grid().setFocus();
    key(Qt::Key_Return);
    EXPECT_TRUE(list().hasFocus());
    EXPECT_EQ(list().currentIndex().row(), 0);
    QTest::keyClick(&list(), Qt::Key_Escape);
    EXPECT_TRUE(grid().hasFocus());
}

TEST_F(MonthViewTest, MoreThanHasRoomIsCountedAndOpensTheList)
{
    QList<MonthOccurrence> all;
    for (int i = 0; i < 20; ++i)
        all += occurrence("Each hour", QString("2026-03-18T%1:00:00Z").arg(i, 2, 10, QChar('0')));
    view->setOccurrences(all);
    const QRect cell = grid().visualRect(grid().month().indexOf({2026, 3, 18}));
    const int room = (cell.height() - 2 * 4) / grid().fontMetrics().height() - 1;
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, {cell.center().x(), cell.top() + 20});
    EXPECT_FALSE(list().hasFocus()); // on an occurrence
    EXPECT_EQ(listed().size(), 20);
    const int moreLine = cell.top() + 8 + room * grid().fontMetrics().height() + 3;
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, {cell.center().x(), moreLine});
    EXPECT_TRUE(list().hasFocus());
}

TEST_F(MonthViewTest, AnOccurrenceIsSkippedPutOffAndRun)
{
    QSignalSpy skips(view.get(), &MonthView::skipWanted);
    QSignalSpy runs(view.get(), &MonthView::runWanted);
    QString putOff;
    QObject::connect(view.get(), &MonthView::putOffWanted,
                     [&](const QString &identifier, const QDateTime &, std::chrono::seconds delay) {
                         putOff = identifier + " " + QString::number(delay.count());
                     });
    const MonthOccurrence backup = occurrence("Backup", "2026-03-14T21:00:00Z");
    view->setOccurrences({backup});
    EXPECT_FALSE(button("Skip")->isEnabled());
    EXPECT_FALSE(button("Run now")->isEnabled());
    key(Qt::Key_Return);
    press("Skip");
    ASSERT_EQ(skips.count(), 1);
    EXPECT_EQ(skips.at(0).at(0), "id-Backup");
    EXPECT_EQ(skips.at(0).at(1), backup.date);
    press("Run now");
    EXPECT_EQ(runs.count(), 1);
    QStringList delays;
    for (QAction *const delay : button("Put off")->defaultAction()->menu()->actions()) {
        delay->trigger();
        delays += delay->text() + ": " + putOff;
    }
    EXPECT_EQ(delays,
              (QStringList{"10 minutes: id-Backup 600", "30 minutes: id-Backup 1800",
                           "1 hour: id-Backup 3600", "3 hours: id-Backup 10800", "1 day: id-Backup 86400"}));
}

TEST_F(MonthViewTest, WhatIsPastOrSkippedIsOnlyRun)
{
    MonthOccurrence skipped = occurrence("Backup", "2026-03-14T21:00:00Z");
    skipped.wasSkipped = true;
    view->setOccurrences({skipped, occurrence("Past", "2026-03-14T05:00:00Z")});
    key(Qt::Key_Return);
    for (int row = 0; row < 2; ++row) {
        list().setCurrentIndex(list().model()->index(row, 0));
        EXPECT_FALSE(button("Skip")->isEnabled());
        EXPECT_FALSE(button("Put off")->isEnabled());
        EXPECT_TRUE(button("Run now")->isEnabled());
    }
}

TEST_F(MonthViewTest, TheMenuOfAnOccurrenceIsAboutThatOne)
{
    QSignalSpy skips(view.get(), &MonthView::skipWanted);
    view->setOccurrences(
        {occurrence("First", "2026-03-18T05:00:00Z"), occurrence("Second", "2026-03-18T06:00:00Z")});
    const QPoint place = lineOf({2026, 3, 18}, 2);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, grid().viewport()->mapToGlobal(place));
    QApplication::sendEvent(grid().viewport(), &event);
    auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->actions().at(0)->text(), "Skip");
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    ASSERT_EQ(skips.count(), 1);
    EXPECT_EQ(skips.at(0).at(0), "id-Second");
    EXPECT_FALSE(button("Skip")->isEnabled()); // nothing is chosen in the list
}

TEST_F(MonthViewTest, TheListHasAMenuForWhatIsChosenThere)
{
    QSignalSpy runs(view.get(), &MonthView::runWanted);
    view->setOccurrences(
        {occurrence("First", "2026-03-14T20:00:00Z"), occurrence("Second", "2026-03-14T21:00:00Z")});
    key(Qt::Key_Return);
    const auto popUp = [this](const QPoint &place) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, list().viewport()->mapToGlobal(place));
        QApplication::sendEvent(list().viewport(), &event);
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    };
    list().setCurrentIndex(list().model()->index(1, 0));
    QMenu *const menu = popUp(list().visualRect(list().currentIndex()).center());
    ASSERT_TRUE(menu);
    menu->actions().constLast()->trigger();
    menu->close();
    ASSERT_EQ(runs.count(), 1);
    EXPECT_EQ(runs.at(0).at(0), "id-Second");
    view->setOccurrences({});
    EXPECT_FALSE(popUp(QPoint(5, 5))) << "there is nothing to do";
}

TEST_F(MonthViewTest, WhatIsChosenStaysChosenWhenTheOccurrencesComeAnew)
{
    const MonthOccurrence first = occurrence("First", "2026-03-14T20:00:00Z");
    const MonthOccurrence second = occurrence("Second", "2026-03-14T21:00:00Z");
    view->setOccurrences({first, second});
    list().setCurrentIndex(list().model()->index(1, 0));
    view->setOccurrences({second});
    EXPECT_EQ(list().currentIndex().row(), 0);
    EXPECT_TRUE(button("Skip")->isEnabled());
    view->setOccurrences({first});
    EXPECT_FALSE(button("Skip")->isEnabled());
}

TEST_F(MonthViewTest, AMenuThatOutlivesItsOccurrencePutsNothingOff)
{
    int wishes = 0;
    QObject::connect(view.get(), &MonthView::putOffWanted, [&] { ++wishes; });
    view->setOccurrences({occurrence("Backup", "2026-03-14T21:00:00Z")});
    key(Qt::Key_Return);
    auto *const delay = button("Put off")->defaultAction()->menu()->actions().constFirst();
    ASSERT_TRUE(delay->isEnabled());
    view->setOccurrences({occurrence("Another", "2026-03-14T21:00:00Z")}); // while the menu is open
    delay->trigger();
    EXPECT_EQ(wishes, 0);
}

TEST_F(MonthViewTest, TheListStaysWhereSomebodyReadsWhenTheOccurrencesComeAnew)
{
    QList<MonthOccurrence> all;
    for (int minute = 0; minute < 600; ++minute) {
        const QDateTime date = QDateTime({2026, 3, 14}, {8, 0}, Qt::UTC).addSecs(minute * 60);
        all += {QString::number(minute), QString("Schedule %1").arg(minute), date, date};
    }
    view->setOccurrences(all);
    list().setCurrentIndex(list().model()->index(2, 0));
    auto *const bar = list().verticalScrollBar();
    QCoreApplication::processEvents();
    bar->setValue(300);
    const int read = bar->value();
    ASSERT_GT(read, 100);
    view->setOccurrences(all);
    EXPECT_EQ(bar->value(), read);
    view->setOccurrences(all.mid(0, 599));
    QCoreApplication::processEvents();
    EXPECT_EQ(bar->value(), read);
    EXPECT_EQ(list().currentIndex().row(), 2);
    grid().setFocus();
    key(Qt::Key_Right); // another day begins at its beginning
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(MonthViewTest, OfTwoThatAScheduleHasOnADayTheChosenOneStaysSo)
{
    const MonthOccurrence early = occurrence("Backup", "2026-03-14T20:00:00Z");
    const MonthOccurrence late = occurrence("Backup", "2026-03-14T21:00:00Z");
    view->setOccurrences({early, late});
    list().setCurrentIndex(list().model()->index(0, 0));
    view->setOccurrences({early, late});
    EXPECT_EQ(list().currentIndex().row(), 0);
    list().setCurrentIndex(list().model()->index(1, 0));
    view->setOccurrences({early, late});
    EXPECT_EQ(list().currentIndex().row(), 1);
}

TEST_F(MonthViewTest, TheKeyForMenusOpensTheListWhereOneIsChosen)
{
    view->setOccurrences({occurrence("Backup", "2026-03-14T21:00:00Z")});
    const QPoint place = lineOf({2026, 3, 14}, 1);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, grid().viewport()->mapToGlobal(place));
    QApplication::sendEvent(grid().viewport(), &event);
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_TRUE(list().hasFocus());
}

TEST_F(MonthViewTest, WhatIsSkippedIsStruckOutAndWhatIsPutOffHasABar)
{
    const QDate day(2026, 3, 18);
    MonthOccurrence shown = occurrence("Backup", "2026-03-18T05:00:00Z");
    const auto picture = [&] {
        view->setOccurrences({shown});
        return grid().viewport()->grab(grid().visualRect(grid().month().indexOf(day))).toImage();
    };
    // The longest row of pixels that are not those of the ground, below the number.
    const auto longest = [&](const QImage &image) {
        const QRgb ground = image.pixel(image.width() - 4, image.height() - 4);
        int most = 0;
        for (int y = grid().fontMetrics().height() + 6; y < image.height() - 4; ++y) {
            for (int x = 4, run = 0; x < image.width() - 4; ++x) {
                run = image.pixel(x, y) == ground ? 0 : run + 1;
                most = std::max(most, run);
            }
        }
        return most;
    };
    const QImage plain = picture();
    EXPECT_LT(longest(plain), 15);
    shown.wasSkipped = true;
    EXPECT_GT(longest(picture()), 40);
    shown.wasSkipped = false;
    shown.isPostponed = true;
    const QColor bar = picture().pixelColor(2, grid().fontMetrics().height() * 3 / 2 + 8);
    EXPECT_EQ(bar, grid().palette().color(QPalette::Highlight));
}

TEST_F(MonthViewTest, ASchedulesNameOpensIt)
{
    QSignalSpy opened(view.get(), &MonthView::openWanted);
    view->setOccurrences({occurrence("First", "2026-03-18T05:00:00Z")});
    QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, lineOf({2026, 3, 18}, 1));
    EXPECT_EQ(opened.count(), 1);
    view->setDay({2026, 3, 18});
    key(Qt::Key_Return);
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(opened.count(), 2);
}

TEST_F(MonthViewTest, EachDayIsReadWithWhatItHas)
{
    view->setOccurrences({occurrence("Backup", "2026-03-14T21:00:00Z")});
    QAccessibleInterface *const table = QAccessible::queryAccessibleInterface(&grid());
    ASSERT_TRUE(table && table->tableInterface());
    EXPECT_EQ(table->text(QAccessible::Name), "March 2026");
    EXPECT_EQ(table->tableInterface()->cellAt(2, 5)->text(QAccessible::Name),
              "Saturday, 14 March 2026; 22:00 Backup");
}

TEST_F(MonthViewTest, TenThousandOccurrencesAreDrawnAtOnce)
{
    const QList<MonthOccurrence> all = many(10'000);
    const double taken = processorSeconds([&] {
        view->setOccurrences(all);
        (void)view->grab();
    });
#if defined(__SANITIZE_ADDRESS__)
    constexpr double slowness = 20;
#else
    constexpr double slowness = 1;
#endif
    EXPECT_LT(taken, 0.5 * slowness);
    EXPECT_GT(listed().size(), 300);
}

TEST_F(MonthViewTest, TodayMovesOnAtMidnight)
{
    const auto picture = [this](const QDate &day) {
        view->setDay({2026, 3, 1}); // neither is chosen
        return grid().viewport()->grab(grid().visualRect(grid().month().indexOf(day))).toImage();
    };
    const QImage marked = picture({2026, 3, 14});
    const QImage plain = picture({2026, 3, 15});
    clock->advance(17h);
    EXPECT_NE(picture({2026, 3, 14}), marked);
    EXPECT_NE(picture({2026, 3, 15}), plain);
}
