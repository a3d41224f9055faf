// SPDX-License-Identifier: MIT
#include "hosts/application/history/HistoryView.h"

#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/ProcessorTime.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

using namespace dozely;
using namespace std::chrono_literals;

/// It is Saturday, 2026-03-14 06:00 UTC, 07:00 in Berlin.
class HistoryViewTest : public testing::Test
{
protected:
    HistoryViewTest()
    {
        qputenv("TZ", "Europe/Berlin");
        Port<Clock>::current() = clock;
        QLocale::setDefault(QLocale("en_GB"));
        view = std::make_unique<HistoryView>();
        view->resize(900, 500);
        view->show();
        QApplication::setActiveWindow(view.get());
    }
    ~HistoryViewTest() override { QLocale::setDefault(QLocale::c()); }

    static QVariantMap outcome(const QString &name, const QString &date, const QString &state)
    {
        return {{"identifier", "id-" + name}, {"name", name}, {"date", date}, {"state", state}};
    }
    void showSome()
    {
        QVariantMap failed = outcome("Backup", "2026-03-13T02:00:00Z", "failed");
        failed["begun"] = "2026-03-13T02:00:01.500Z";
        failed["ended"] = "2026-03-13T02:10:00Z";
        failed["lateness"] = qlonglong{1500};
        failed["exitStatus"] = 3;
        QVariantMap late = outcome("Music", "2026-03-14T05:00:00Z", "done");
        late["begun"] = "2026-03-14T05:00:00Z";
        late["lateness"] = qlonglong{2};
        view->setOutcomes({failed, late, outcome("", "2026-03-10T05:00:00Z", "missed")});
    }
    QTableView &table() const { return *view->findChild<QTableView *>(); }
    QStringList rows() const
    {
        QStringList rows;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < table().model()->columnCount(); ++column)
                cells += table().model()->index(row, column).data().toString();
            rows += cells.join(" | ");
        }
        return rows;
    }
    QString remark() const
    {
        const auto *const label = view->findChild<QLabel *>();
        return label->isVisible() ? label->text() : QString();
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::unique_ptr<HistoryView> view;
};

TEST_F(HistoryViewTest, HasAModelThatTellsWhatItDoes)
{
    const QAbstractItemModelTester tester(table().model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    showSome();
    EXPECT_EQ(table().model()->columnCount(table().model()->index(0, 0)), 0);
    EXPECT_EQ(table().model()->rowCount(table().model()->index(0, 0)), 0);
    view->setOutcomes({});
}

TEST_F(HistoryViewTest, TellsOutcomesInWordsNewestFirst)
{
    showSome();
    EXPECT_EQ(rows(), QStringList({"today 06:00 | Music | done | on time | ",
                                   "yesterday 03:00 | Backup | failed | 1 s late | exit status 3",
                                   "10 March 2026, 06:00 | (gone) | missed |  | "}));
    EXPECT_EQ(remark(), "");
}

TEST_F(HistoryViewTest, MarksWhatWentWrong)
{
    showSome();
    const auto isMarked = [this](int row) {
        return !table().model()->index(row, 2).data(Qt::DecorationRole).value<QIcon>().isNull();
    };
    EXPECT_FALSE(isMarked(0));
    EXPECT_TRUE(isMarked(1));
    EXPECT_TRUE(isMarked(2));
}

TEST_F(HistoryViewTest, IsFilteredByWords)
{
    showSome();
    QTest::keyClicks(view->findChild<QLineEdit *>(), "yester BACK");
    EXPECT_EQ(rows().size(), 1);
    QTest::keyClicks(view->findChild<QLineEdit *>(), "x");
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_EQ(remark(), "Nothing in the history is like that.");
    view->findChild<QLineEdit *>()->clear();
    EXPECT_EQ(rows().size(), 3);
    EXPECT_EQ(remark(), "");
}

TEST_F(HistoryViewTest, ShowsOnlyWhatWentWrong)
{
    showSome();
    QTest::keyClick(view->findChild<QCheckBox *>(), Qt::Key_Space);
    EXPECT_EQ(rows().size(), 2);
    EXPECT_TRUE(rows().constFirst().contains("Backup"));
}

TEST_F(HistoryViewTest, SaysThatThereIsNothingYet)
{
    EXPECT_EQ(remark(), "Nothing has taken place yet.");
}

TEST_F(HistoryViewTest, ARowOpensItsLog)
{
    QSignalSpy wanted(view.get(), &HistoryView::logWanted);
    showSome();
    for (int row = 0; row < 3; ++row) {
        table().setCurrentIndex(table().model()->index(row, 0));
        QTest::keyClick(&table(), Qt::Key_Return);
    }
    ASSERT_EQ(wanted.count(), 3);
    EXPECT_EQ(wanted.at(0).at(0), "id-Music");
    EXPECT_EQ(wanted.at(0).at(1), QDateTime({2026, 3, 14}, {5, 0}, Qt::UTC));
    EXPECT_FALSE(wanted.at(0).at(2).toDateTime().isValid()); // it goes on, for all that is known
    EXPECT_EQ(wanted.at(1).at(1), QDateTime({2026, 3, 13}, {2, 0, 1, 500}, Qt::UTC));
    EXPECT_EQ(wanted.at(1).at(2), QDateTime({2026, 3, 13}, {2, 10}, Qt::UTC));
    EXPECT_EQ(wanted.at(2).at(1), wanted.at(2).at(2)); // it never began
}

TEST_F(HistoryViewTest, IsSortedByWhatAColumnMeans)
{
    showSome();
    table().sortByColumn(3, Qt::DescendingOrder);
    EXPECT_TRUE(rows().constFirst().contains("1 s late"));
    EXPECT_TRUE(rows().constLast().contains("(gone)"));
}

TEST_F(HistoryViewTest, TodayIsYesterdayAfterMidnight)
{
    showSome();
    (void)view->grab();
    const QSignalSpy changed(table().model(), &QAbstractItemModel::dataChanged);
    clock->advance(17h);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(rows().constFirst().startsWith("yesterday 06:00"));
    clock->advance(24h);
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(HistoryViewTest, TenThousandRowsAreShownAtOnce)
{
    QList<QVariantMap> all;
    for (int i = 0; i < 10'000; ++i)
        all += outcome("Name", QDateTime({2026, 3, 1}, {0, 0}, Qt::UTC).addSecs(i).toString(Qt::ISODate),
                       "done");
    const double taken = processorSeconds([&] {
        view->setOutcomes(all);
        (void)view->grab();
    });
#if defined(__SANITIZE_ADDRESS__)
    constexpr double slowness = 20;
#else
    constexpr double slowness = 1;
#endif
    EXPECT_LT(taken, 1.0 * slowness);
    EXPECT_EQ(table().model()->rowCount(), 10'000);
}
