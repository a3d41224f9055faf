// SPDX-License-Identifier: MIT
#include "hosts/application/window/NoticeBar.h"

#include "support/PrintTo.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

class NoticeBarTest : public testing::Test
{
protected:
    /// The texts of the buttons, once what is to be deleted is.
    QStringList buttons()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QStringList texts;
        for (const auto *const button : bar.findChildren<QPushButton *>())
            texts += button->text();
        return texts;
    }

    NoticeBar::Remedy remedy(const QString &text)
    {
        return {text, [this, text] { done += text; }};
    }

    NoticeBar bar;
    QStringList done;
};

TEST_F(NoticeBarTest, IsSeenWhileItHasSomethingToSay)
{
    EXPECT_TRUE(bar.isHidden());
    bar.tell(NoticeBar::Kind::Warning, "The disk is full.");
    EXPECT_FALSE(bar.isHidden());
    EXPECT_EQ(bar.sentence(), "The disk is full.");
    bar.clear();
    EXPECT_TRUE(bar.isHidden());
    EXPECT_EQ(bar.sentence(), "");
}

TEST_F(NoticeBarTest, HasTheRemediesOfItsSentenceAndNoOthers)
{
    bar.tell(NoticeBar::Kind::Warning, "Somebody has changed this.", {remedy("Keep"), remedy("Take")});
    EXPECT_EQ(buttons(), QStringList({"Keep", "Take"}));
    bar.tell(NoticeBar::Kind::Information, "Nothing answers.", {remedy("Try again")});
    EXPECT_EQ(buttons(), QStringList("Try again"));
    bar.tell(NoticeBar::Kind::Information, "Applied.");
    EXPECT_EQ(buttons(), QStringList());
}

TEST_F(NoticeBarTest, DoesWhatIsPressedAlsoWhenThatTakesTheButtonAway)
{
    bar.tell(NoticeBar::Kind::Warning, "Nothing answers.", {{"Try again", [this] {
                                                                 done += "tried";
                                                                 bar.clear();
                                                             }}});
    QTest::mouseClick(bar.findChild<QPushButton *>(), Qt::LeftButton);
    EXPECT_EQ(done, QStringList("tried"));
    EXPECT_EQ(buttons(), QStringList());
}

TEST_F(NoticeBarTest, KeepsItsButtonsWhenTheSameIsSaidAgain)
{
    bar.tell(NoticeBar::Kind::Warning, "Nothing answers.", {remedy("Try again")});
    const auto *const button = bar.findChild<QPushButton *>();
    bar.tell(NoticeBar::Kind::Warning, "Nothing answers.", {remedy("Try again")});
    EXPECT_EQ(buttons(), QStringList("Try again"));
    EXPECT_EQ(bar.findChild<QPushButton *>(), button); // it may have the keys
}
