// SPDX-License-Identifier: MIT
#include "hosts/application/month/MonthModel.h"

#include "support/PrintTo.h"

#include <QTest>

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

namespace
{
MonthOccurrence occurrence(const char *name, const char *moment)
{
    const QDateTime date = QDateTime::fromString(moment, Qt::ISODate);
    return {name, name, date, date};
}

class MonthModelTest : public testing::Test
{
protected:
    MonthModelTest()
    {
        qputenv("TZ", "Europe/Berlin");
        model.setMonth({2026, 3, 14});
    }
    QStringList on(const QDate &day) const
    {
        QStringList lines;
        for (const MonthOccurrence &each : model.occurrencesOn(day))
            lines += model.lineOf(each);
        return lines;
    }

    MonthModel model{QLocale("en_GB")};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};
} // namespace

TEST_F(MonthModelTest, WhatTheDaemonTellsIsRead)
{
    const QDateTime date({2026, 3, 14}, {21, 0}, Qt::UTC);
    const QVariantMap plain{{"identifier", "A"}, {"name", "Backup"}, {"date", "2026-03-14T21:00:00Z"}};
    const auto with = [&](const QVariantMap &more) {
        QVariantMap map = plain;
        map.insert(more);
        return MonthOccurrence::fromMap(map);
    };
    const QDateTime later = date.addSecs(3600);
    EXPECT_EQ(with({}), (MonthOccurrence{"A", "Backup", date, date, false, false}));
    EXPECT_EQ(with({{"moment", "2026-03-14T23:00:00+01:00"}, {"isPostponed", true}}),
              (MonthOccurrence{"A", "Backup", later, date, true, false}));
    EXPECT_EQ(with({{"postponedTo", "2026-03-14T22:00:00Z"}, {"state", "done"}}),
              (MonthOccurrence{"A", "Backup", later, date, true, false}));
    EXPECT_EQ(with({{"state", "removed"}}), (MonthOccurrence{"A", "Backup", date, date, false, true}));
    EXPECT_FALSE(MonthOccurrence::fromMap({{"date", 3}}).moment.isValid());
}

TEST_F(MonthModelTest, WeeksBeginWhereTheLocaleHasIt)
{
    EXPECT_EQ(model.firstDay(), QDate(2026, 2, 23));
    EXPECT_EQ(model.lastDay(), QDate(2026, 4, 5));
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::DisplayRole), "Mon");
    for (const auto &[locale, first, name] :
         {std::tuple("en_US", QDate(2026, 3, 1), "Sun"), {"ar_EG", QDate(2026, 2, 28), "السبت"}}) {
        MonthModel other{QLocale(locale)};
        other.setMonth({2026, 3, 14});
        EXPECT_EQ(other.firstDay(), first) << locale;
        EXPECT_EQ(other.headerData(0, Qt::Horizontal, Qt::DisplayRole), QString(name)) << locale;
    }
}

TEST_F(MonthModelTest, EachDayHasItsPlace)
{
    for (QDate day = model.firstDay(); day <= model.lastDay(); day = day.addDays(1))
        EXPECT_EQ(model.dayAt(model.indexOf(day)), day);
    EXPECT_FALSE(model.indexOf(model.firstDay().addDays(-1)).isValid());
    EXPECT_FALSE(model.indexOf(model.lastDay().addDays(1)).isValid());
    EXPECT_FALSE(model.dayAt({}).isValid());
}

TEST_F(MonthModelTest, OccurrencesStandOnTheDayThatClocksHereShowInTheirOrder)
{
    model.setOccurrences(
        {occurrence("late", "2026-03-14T22:59:00Z"), occurrence("next", "2026-03-14T23:00:00Z"),
         occurrence("early", "2026-03-13T23:00:00Z"), occurrence("summer", "2026-03-29T22:00:00Z")});
    EXPECT_EQ(on({2026, 3, 14}), QStringList({"00:00 early", "23:59 late"}));
    EXPECT_EQ(on({2026, 3, 15}), QStringList("00:00 next"));
    EXPECT_EQ(on({2026, 3, 30}), QStringList("00:00 summer"));
    EXPECT_TRUE(on({2026, 3, 29}).isEmpty());
}

TEST_F(MonthModelTest, EachDayIsReadWithItsOccurrences)
{
    QList<MonthOccurrence> all{occurrence("Backup", "2026-03-14T21:00:00Z"),
                               occurrence("Music", "2026-03-14T05:55:00Z")};
    all[0].wasSkipped = true;
    all[1].isPostponed = true;
    model.setOccurrences(all);
    const auto read = [this](const QDate &day) {
        return model.data(model.indexOf(day), Qt::AccessibleTextRole).toString();
    };
    EXPECT_EQ(read({2026, 3, 14}), "Saturday, 14 March 2026; 06:55 Music, put off; 22:00 Backup, skipped");
    EXPECT_EQ(read({2026, 3, 15}), "Sunday, 15 March 2026; nothing");
    all.clear();
    for (int i = 0; i < 17; ++i)
        all += occurrence("Each hour", qPrintable(QString("2026-03-14T%1:00:00Z").arg(i, 2, 10, QChar('0'))));
    model.setOccurrences(all);
    EXPECT_EQ(read({2026, 3, 14}).count(';'), 6);
    EXPECT_TRUE(read({2026, 3, 14}).endsWith("; 12 more"));
}

TEST_F(MonthModelTest, WhatHasNoMomentIsOnNoDay)
{
    model.setOccurrences({{"A", "Backup", {}, {}, false, false}});
    EXPECT_TRUE(on({1970, 1, 1}).isEmpty());
    EXPECT_TRUE(on(QDate()).isEmpty());
}

TEST_F(MonthModelTest, WhereThereIsLittleRoomTheNameGoesBeforeTheTime)
{
    const MonthOccurrence backup = occurrence("Backup", "2026-03-14T21:00:00Z");
    const QFontMetrics metrics{QFont()};
    const int time = metrics.horizontalAdvance("22:00");
    EXPECT_EQ(model.lineOf(backup, 2 * time, metrics), "Backup");
    EXPECT_EQ(model.lineOf(backup, 3 * time, metrics), "22:00 Backup");
}

TEST_F(MonthModelTest, ANameOfSeveralLinesIsOneLine)
{
    EXPECT_EQ(model.lineOf(occurrence("two\nlines", "2026-03-14T21:00:00Z")), "22:00 two lines");
}
