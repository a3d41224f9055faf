// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ArrayExtensions.h"

#include "DozelyKit/core/foundation/Equality.h"
#include "DozelyKit/core/foundation/NSException.h"

#include <gtest/gtest.h>

#include <limits>

using dozely::isEqual;
using zandorSoftwaresExtensions::moveObjectToIndex;

namespace
{
QVariantList moved(QVariantList list, const QVariant &object, quint32 index)
{
    moveObjectToIndex(list, object, index);
    return list;
}
} // namespace

TEST(MoveObjectToIndex, PutsTheFirstOfFiveMovedToIndexThreeAtIndexTwo)
{
    EXPECT_EQ(moved({"a", "b", "c", "d", "e"}, "a", 3), QVariantList({"b", "c", "a", "d", "e"}));
}

TEST(MoveObjectToIndex, PutsALaterElementExactlyAtALowerIndex)
{
    EXPECT_EQ(moved({"a", "b", "c", "d", "e"}, "d", 1), QVariantList({"a", "d", "b", "c", "e"}));
    EXPECT_EQ(moved({"a", "b", "c"}, "c", 0), QVariantList({"c", "a", "b"}));
}

TEST(MoveObjectToIndex, MovesAnElementToTheEndByTheIndexBehindTheLast)
{
    EXPECT_EQ(moved({"a", "b", "c"}, "a", 3), QVariantList({"b", "c", "a"}));
}

TEST(MoveObjectToIndex, DoesNothingWhenTheElementIsThereAlreadyEvenIfItOccursAgain)
{
    EXPECT_EQ(moved({"a", "b", "a"}, "a", 0), QVariantList({"a", "b", "a"}));
}

TEST(MoveObjectToIndex, RemovesEveryOccurrenceButInsertsOne)
{
    EXPECT_EQ(moved({"a", "b", "a", "c", "a"}, "a", 2), QVariantList({"b", "a", "c"}));
}

TEST(MoveObjectToIndex, InsertsAnObjectThatWasNotInTheListAtTheIndex)
{
    EXPECT_EQ(moved({"a", "b"}, "x", 1), QVariantList({"a", "x", "b"}));
    EXPECT_EQ(moved({"a", "b"}, "x", 2), QVariantList({"a", "b", "x"}));
    EXPECT_EQ(moved({}, "x", 0), QVariantList({"x"}));
}

TEST(MoveObjectToIndex, TakesAnAbsentObjectAtTheHighestIndexForOneThatIsThereAlready)
{
    EXPECT_EQ(moved({"a"}, "x", std::numeric_limits<quint32>::max()), QVariantList({"a"}));
}

TEST(MoveObjectToIndex, FindsTheObjectByItsValue)
{
    const QVariantMap entry{{"Name", "Backup"}};
    EXPECT_EQ(moved({entry, 1, 2}, QVariantMap{{"Name", "Backup"}}, 2), QVariantList({1, entry, 2}));
}

TEST(MoveObjectToIndex, MovesAnElementGivenByReferenceIntoTheListItself)
{
    QVariantList list{"a", "b", "c"};
    moveObjectToIndex(list, list[0], 3);
    EXPECT_EQ(list, QVariantList({"b", "c", "a"}));
}

TEST(MoveObjectToIndex, RaisesARangeExceptionBeyondTheEndAndLeavesTheListAsItWas)
{
    for (const auto &[object, index] : {std::pair<QString, quint32>("a", 4), {"x", 4}, {"x", 4000000000}}) {
        QVariantList list{"a", "b", "c"};
        try {
            moveObjectToIndex(list, object, index);
            FAIL() << "nothing raised for " << qPrintable(object);
        } catch (const NSException &exception) {
            EXPECT_EQ(exception.name(), QString("NSRangeException"));
        }
        EXPECT_EQ(list, QVariantList({"a", "b", "c"}));
    }
}

TEST(MoveObjectToIndex, LeavesWhatHasTheSameTextButIsOfAnotherTypeWhereItIs)
{
    EXPECT_TRUE(isEqual(moved({"5", 5, "a"}, 5, 0), QVariantList({5, "5", "a"})));
    EXPECT_TRUE(isEqual(moved({QByteArray("x"), "x", 1}, "x", 3), QVariantList({QByteArray("x"), 1, "x"})));
    EXPECT_TRUE(isEqual(moved({5, "5", "a", "b"}, 5, 2), QVariantList({"5", 5, "a", "b"}))) << "none is lost";
}
