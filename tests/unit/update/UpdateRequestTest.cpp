// SPDX-License-Identifier: MIT
#include "DozelyKit/update/UpdateRequest_p.h"

#include "support/BecomeUser.h"
#include "unit/update/UpdateFixture.h"

#include <sys/mount.h>
#include <sys/stat.h>

using namespace dozely;

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class UpdateRequestTest : public UpdateFixture
{
protected:
    static constexpr char storePath[] = "/Library/Preferences/com.dozely.plist";

    static QVariantMap entry(const QVariant &isEnabled) { return {{"Is Enabled", isEnabled}, {"Name", "A"}}; }

    /// A store with one enabled schedule, which nobody is to count, and the reason that the log gives.
    void expectNotCounted(const std::string &reason) const
    {
        EXPECT_EQ(UpdateRequest::countOfEnabledSchedules(), 0);
        ASSERT_EQ(log().size(), 1);
        EXPECT_THAT(log().constFirst().toStdString(), StartsWith("The schedules are not counted. "));
        EXPECT_THAT(log().constFirst().toStdString(), HasSubstr(reason));
    }
    void writeEnabledSchedule() const { writeStore({{"Schedule Array", QVariantList{entry(true)}}}); }
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
    expectNotCounted("com.dozely.plist\": This is no property list that can be read: "
                     "it is neither XML nor binary.");
}

TEST_F(UpdateRequestTest, CountsNoneInAStoreThatOthersMayWrite)
{
    writeEnabledSchedule();
    ASSERT_EQ(::chmod(qPrintable(root.join(storePath)), 0666), 0);
    expectNotCounted("com.dozely.plist\" may be written by others than its owner");
}

TEST_F(UpdateRequestTest, CountsNoneInAFolderThatOthersMayWrite)
{
    writeEnabledSchedule();
    ASSERT_EQ(::chmod(qPrintable(root.join("/Library")), 01777), 0);
    expectNotCounted("/Library\" may be written by others than its owner");
}

TEST_F(UpdateRequestTest, CountsNoneInAStoreOfSomebodyElse)
{
    writeEnabledSchedule();
    const QByteArray store = QFile::encodeName(root.join(storePath));
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(store.constData(), Identity::ordinaryUser, Identity::ordinaryUser), 0);
    } else {
        // Only root can give a file away; where nobody else exists, root's are somebody else's.
        ASSERT_TRUE(Identity::becomeRoot());
        ASSERT_EQ(::unshare(CLONE_NEWNS), 0);
        ASSERT_EQ(::mount("/etc/passwd", store.constData(), nullptr, MS_BIND, nullptr), 0);
    }
    expectNotCounted("com.dozely.plist\" belongs to user ");
    ::umount2(store.constData(), MNT_DETACH);
}

TEST_F(UpdateRequestTest, CountsNoneBehindALink)
{
    writeEnabledSchedule();
    ASSERT_TRUE(QFile::rename(root.join(storePath), root.join("/elsewhere.plist")));
    ASSERT_TRUE(QFile::link(root.join("/elsewhere.plist"), root.join(storePath)));
    expectNotCounted("com.dozely.plist\" is a symbolic link");
}
