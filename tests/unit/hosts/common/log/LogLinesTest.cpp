// SPDX-License-Identifier: MIT
#include "hosts/common/log/LogLines.h"

#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QFile>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
class LogLinesTest : public testing::Test
{
protected:
    void write(const QByteArray &text) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QList<QByteArray> between(const char *from, const char *until) const
    {
        const auto at = [](const char *text) { return QDateTime::fromString(text, Qt::ISODate); };
        const auto found = LogLines::between(path, at(from), at(until), at(now), zone);
        EXPECT_TRUE(found) << qPrintable(found ? QString() : found.error().text);
        return found->lines;
    }

    ScratchRoot root;
    QString path = root.join("/log");
    const char *now = "2026-03-14T06:00:00Z";
    QTimeZone zone{"UTC"};
};
} // namespace

TEST_F(LogLinesTest, AreThoseOfTheTime)
{
    write("Mar 14 05:00:00 one\nMar 14 05:00:01 two\nMar 14 05:00:02 three\nMar 14 05:00:03 four\n");
    EXPECT_THAT(between("2026-03-14T05:00:01Z", "2026-03-14T05:00:02Z"),
                ElementsAre("Mar 14 05:00:01 two", "Mar 14 05:00:02 three"));
    EXPECT_THAT(between("2026-03-14T05:00:01.900Z", "2026-03-14T05:00:02.100Z"),
                ElementsAre("Mar 14 05:00:01 two", "Mar 14 05:00:02 three"));
    EXPECT_THAT(between("2026-03-13T05:00:00Z", "2026-03-14T04:00:00Z"), IsEmpty());
}

TEST_F(LogLinesTest, AreThoseThatClocksOfTheZoneStamped)
{
    zone = QTimeZone("Europe/Berlin");
    write("Mar 14 05:00:00 one\nMar 14 06:00:00 two\n");
    EXPECT_THAT(between("2026-03-14T05:00:00Z", "2026-03-14T05:00:00Z"), ElementsAre("Mar 14 06:00:00 two"));
}

TEST_F(LogLinesTest, LinesWithoutAStampGoWithTheOneBefore)
{
    write("torn\nMar 14 05:00:00 one\n  more of it\nMar 14 05:00:05 two\nMay 99 05:00:00 none\n");
    EXPECT_THAT(between("2026-03-14T05:00:00Z", "2026-03-14T05:00:01Z"),
                ElementsAre("Mar 14 05:00:00 one", "  more of it"));
    EXPECT_THAT(between("2026-03-14T05:00:05Z", "2026-03-14T05:00:05Z"),
                ElementsAre("Mar 14 05:00:05 two", "May 99 05:00:00 none"));
}

TEST_F(LogLinesTest, TheYearIsTheLatestThatTheOrderLets)
{
    write("Mar 14 05:00:00 two years ago\nDec 31 23:59:59 then\nMar 14 05:00:00 last year\n"
          "Dec 31 23:59:59 old year\nJan 01 00:00:00 new year\nMar 14 05:00:00 today\n");
    EXPECT_THAT(between("2026-03-14T00:00:00Z", "2026-03-15T00:00:00Z"),
                ElementsAre("Mar 14 05:00:00 today"));
    EXPECT_THAT(between("2025-03-14T00:00:00Z", "2025-03-15T00:00:00Z"),
                ElementsAre("Mar 14 05:00:00 last year"));
    EXPECT_THAT(between("2024-03-14T00:00:00Z", "2024-03-15T00:00:00Z"),
                ElementsAre("Mar 14 05:00:00 two years ago"));
    EXPECT_THAT(between("2025-12-31T23:59:59Z", "2026-01-01T00:00:00Z"),
                ElementsAre("Dec 31 23:59:59 old year", "Jan 01 00:00:00 new year"));
}

TEST_F(LogLinesTest, AClockThatWasSetBackMakesNoOtherYear)
{
    write("Mar 20 05:00:00 wrong\nMar 14 05:00:00 right\n");
    EXPECT_THAT(between("2026-03-20T00:00:00Z", "2026-03-21T00:00:00Z"),
                ElementsAre("Mar 20 05:00:00 wrong"));
}

TEST_F(LogLinesTest, ALeapDayIsOfALeapYear)
{
    write("Feb 29 05:00:00 leap\nMar 14 05:00:00 today\n");
    EXPECT_THAT(between("2024-02-29T00:00:00Z", "2024-03-01T00:00:00Z"), ElementsAre("Feb 29 05:00:00 leap"));
}

TEST_F(LogLinesTest, NoMoreAreTakenThanAPersonLooksAt)
{
    write(QByteArray("Mar 14 05:00:00 line\n").repeated(LogLines::mostLines + 1));
    const QDateTime at({2026, 3, 14}, {5, 0}, Qt::UTC);
    const auto found = LogLines::between(path, at, at, at.addSecs(60), zone);
    EXPECT_EQ(found->lines.size(), LogLines::mostLines);
    EXPECT_TRUE(found->hasMore);
}

TEST_F(LogLinesTest, AFileThatCannotBeReadIsAnError)
{
    const QDateTime at({2026, 3, 14}, {5, 0}, Qt::UTC);
    EXPECT_FALSE(LogLines::between(path, at, at, at, zone));
}
