// SPDX-License-Identifier: MIT
#include "hosts/daemon/WaitingQuestions.h"

#include <gtest/gtest.h>

class WaitingQuestionsTest : public testing::Test
{
protected:
    static WaitingQuestions::Question question(const QString &bundle, bool isDue = false,
                                               const QString &parameter = {})
    {
        WaitingQuestions::Question question;
        question.about.bundlePath = bundle;
        question.digest = ParametersDigest::of({{"Text", parameter}});
        question.isDue = isDue;
        return question;
    }
    /// The bundles of all that waits, in the order in which they are asked.
    QStringList taken()
    {
        QStringList bundles;
        while (const auto next = waiting.take())
            bundles += next->about.bundlePath;
        return bundles;
    }

    WaitingQuestions waiting;
};

TEST_F(WaitingQuestionsTest, ThatAreDueComeFirstAndElseEachInItsTurn)
{
    waiting.add(question("a"));
    waiting.add(question("b", true));
    waiting.add(question("c"));
    waiting.add(question("d", true));
    EXPECT_EQ(taken(), QStringList({"b", "d", "a", "c"}));
    EXPECT_FALSE(waiting.take());
}

TEST_F(WaitingQuestionsTest, OneThatBecomesDueIsAskedOnceAndBeforeTheOthers)
{
    for (const char *bundle : {"a", "b", "c"})
        waiting.add(question(bundle));
    waiting.makeDue("b", ParametersDigest::of({{"Text", "other"}}));
    waiting.makeDue("x", question("x").digest);
    waiting.makeDue("c", question("c").digest);
    const auto first = waiting.take();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->about.bundlePath, "c");
    EXPECT_TRUE(first->isDue);
    EXPECT_EQ(taken(), QStringList({"a", "b"}));
}

TEST_F(WaitingQuestionsTest, AreDroppedWhereverTheyWait)
{
    waiting.add(question("a"));
    waiting.add(question("b", true));
    waiting.add(question("a", true, "other"));
    waiting.add(question("c"));
    waiting.drop([](const auto &each) { return each.about.bundlePath == "a"; });
    EXPECT_EQ(taken(), QStringList({"b", "c"}));
}

TEST_F(WaitingQuestionsTest, AreFullOfThoseThatAreNotDue)
{
    for (size_t i = 1; i < WaitingQuestions::most; ++i)
        waiting.add(question("a"));
    waiting.add(question("b", true));
    EXPECT_FALSE(waiting.isFull());
    waiting.add(question("c"));
    EXPECT_TRUE(waiting.isFull());
    waiting.makeDue("c", question("c").digest);
    EXPECT_FALSE(waiting.isFull());
}
