// SPDX-License-Identifier: MIT
#include "DozelyKit/update/UpdateRequest_p.h"

#include "unit/update/UpdateFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class UpdateRequestTest : public UpdateFixture
{
protected:
    static QVariantMap entry(const QVariant &isEnabled) { return {{"Is Enabled", isEnabled}, {"Name", "A"}}; }
};

TEST_F(UpdateRequestTest, CountsTheSchedulesThatAreEnabled)
{
    writeStore(QVariantMap{{"Schedule Array", QVariantList{entry(true), entry(false), entry(true)}}});
    EXPECT_EQ(UpdateRequest::countOfEnabledSchedules(), 2);
}

TEST_F(UpdateRequestTest, CountsByTheIntegerOfWhateverSaysEnabled)
{
    writeStore(QVariantMap{
        {"Schedule Array",
         QVariantList{entry(1), entry(-1), entry("1"), entry(Q_INT64_C(4294967296)), entry("2 or 3"), // these
                      entry(0), entry("0"), entry("yes"), entry(0.5), entry(QVariantList{1}),
                      QVariantMap{{"Name", "A"}}, "text", 1, QVariantList{1}}}});
    EXPECT_EQ(UpdateRequest::countOfEnabledSchedules(), 5);
}

TEST_F(UpdateRequestTest, CountsNoneWithoutStoreOrArray)
{
    EXPECT_EQ(UpdateRequest::countOfEnabledSchedules(), 0);
    for (const QVariant &store :
         QVariantList{QVariantMap{}, QVariantMap{{"Schedule Array", "text"}}, QVariantList{1}}) {
        writeStore(store);
        EXPECT_EQ(UpdateRequest::countOfEnabledSchedules(), 0);
    }
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(UpdateRequestTest, CountsNoneInAStoreThatCannotBeReadAndSaysSo)
{
    writeFile("/Library/Preferences/com.dozely.plist", "damaged");
    EXPECT_EQ(UpdateRequest::countOfEnabledSchedules(), 0);
    ASSERT_EQ(log().size(), 1);
    EXPECT_THAT(log().constFirst().toStdString(), StartsWith("The schedules are not counted. "));
}
