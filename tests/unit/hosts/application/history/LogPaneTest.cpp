// SPDX-License-Identifier: MIT
#include "hosts/application/history/LogPane.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
class LogPaneTest : public testing::Test
{
protected:
    LogPaneTest()
    {
        qputenv("TZ", "UTC");
        Port<Clock>::current() = std::make_shared<FakeClock>();
    }
    void write(const QByteArray &text) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QString text() const { return pane.findChild<QPlainTextEdit *>()->toPlainText(); }
    QString remark() const
    {
        const auto *const label = pane.findChild<QLabel *>();
        return label->isHidden() ? QString() : label->text();
    }
    static QDateTime at(int hour, int minute, int second)
    {
        return {{2026, 3, 14}, {hour, minute, second}, Qt::UTC};
    }

    ScratchRoot root;
    QString path = root.join("/log");
    LogPane pane{path};
};
} // namespace

TEST_F(LogPaneTest, ShowsTheLinesOfThatTimeWithSomeSecondsAround)
{
    write("Mar 14 04:59:57 far\nMar 14 04:59:58 before\nMar 14 05:00:00 it\nMar 14 05:00:15 after\n"
          "Mar 14 05:00:16 far\n");
    pane.showLines(at(5, 0, 0), at(5, 0, 10));
    EXPECT_EQ(text(), "Mar 14 04:59:58 before\nMar 14 05:00:00 it\nMar 14 05:00:15 after");
    EXPECT_EQ(remark(), "");
}

TEST_F(LogPaneTest, WithoutAnEndGoesOnUpToNow)
{
    write("Mar 14 05:00:00 it\nMar 14 05:59:59 late\n");
    pane.showLines(at(5, 0, 0), {});
    EXPECT_EQ(text(), "Mar 14 05:00:00 it\nMar 14 05:59:59 late");
}

TEST_F(LogPaneTest, SaysWhyThereIsNothingToShow)
{
    pane.showLines(at(5, 0, 0), at(5, 0, 0));
    EXPECT_EQ(remark(), "The log cannot be read: No such file or directory.");
    write("Mar 14 04:00:00 other\n");
    pane.showLines(at(5, 0, 0), at(5, 0, 0));
    EXPECT_EQ(remark(), "The log has nothing of that time.");
    EXPECT_EQ(text(), "");
}

TEST_F(LogPaneTest, ShowsWhatCouldSteerATerminalAsText)
{
    write("Mar 14 05:00:00 a\x1b[2J\n");
    pane.showLines(at(5, 0, 0), at(5, 0, 0));
    EXPECT_EQ(text(), "Mar 14 05:00:00 a\\u001b[2J");
}

TEST_F(LogPaneTest, SaysThatThereIsMore)
{
    write(QByteArray("Mar 14 05:00:00 line\n").repeated(2001));
    pane.showLines(at(5, 0, 0), at(5, 0, 0));
    EXPECT_EQ(remark(), "These are the first 2000 lines.");
}

TEST_F(LogPaneTest, HasItsRemarkAboveTheLinesWhichAreOfOneWidth)
{
    pane.resize(400, 300);
    pane.show();
    write("Mar 14 04:00:00 other\n");
    pane.showLines(at(5, 0, 0), at(5, 0, 0));
    const auto *const label = pane.findChild<QLabel *>();
    const auto *const lines = pane.findChild<QPlainTextEdit *>();
    QApplication::sendPostedEvents();
    EXPECT_GT(label->height(), 0);
    EXPECT_LE(label->geometry().bottom(), lines->geometry().top());
    EXPECT_EQ(lines->font().family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
}
