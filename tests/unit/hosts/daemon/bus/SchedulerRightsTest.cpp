// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/SchedulerRights.h"

#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/daemon/bus/BusCaller.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"

#include <pwd.h>

namespace
{
constexpr quint32 anna = 65534; // who has an account everywhere
constexpr quint32 bert = 65533;

using Actions = QList<QByteArray>;
const Actions own{SchedulerNames::manageOwn};
const Actions ownAndWake{SchedulerNames::manageOwn, SchedulerNames::wake};
const Actions all{SchedulerNames::manageAll};

class SchedulerRightsTest : public BundleFixture
{
protected:
    SchedulerRightsTest() { makeProbe(); }

    /// Anna's, in her session, of the system's probe.
    static Schedule annas(const QVariantMap &more = {})
    {
        Schedule annas = schedule("a");
        annas.owner = anna;
        annas.parameters = {{"Acts In User Agent", 1LL}};
        annas.parameters.insert(more);
        return annas;
    }
    static Actions needed(const std::optional<Schedule> &before, const std::optional<Schedule> &after,
                          quint32 user = anna)
    {
        return SchedulerRights::needed({"com.dozely.somebody", user}, before, after);
    }
    static Actions toAdd(const Schedule &schedule) { return needed({}, schedule); }
};
} // namespace

TEST_F(SchedulerRightsTest, OfOnesOwnAreForAddingChangingRemovingAndAnyOtherWish)
{
    Schedule renamed = annas();
    renamed.name = "Another";
    EXPECT_EQ(toAdd(annas()), own);
    EXPECT_EQ(needed(annas(), renamed), own);
    EXPECT_EQ(needed(annas(), annas()), own);
    EXPECT_EQ(needed(annas(), {}), own);
}

TEST_F(SchedulerRightsTest, AreThoseOverAllWhereItIsAnothersBeforeOrAfterwards)
{
    EXPECT_EQ(needed({}, annas(), bert), all);
    Schedule berts = annas();
    berts.owner = bert;
    EXPECT_EQ(toAdd(berts), all);
    EXPECT_EQ(needed(annas(), berts), all);
    EXPECT_EQ(needed(berts, annas()), all);
    EXPECT_EQ(needed(berts, {}), all);
    Schedule nobodys = annas();
    nobodys.owner.reset();
    EXPECT_EQ(toAdd(nobodys), all) << "which is root's";
}

TEST_F(SchedulerRightsTest, AreThoseOverAllWhereItActsInTheDaemon)
{
    EXPECT_EQ(toAdd(annas({{"Acts In User Agent", 0LL}})), all);
    EXPECT_FALSE(SchedulerRights::isOwn(annas({{"Acts In User Agent", 0LL}}), anna));
    EXPECT_TRUE(SchedulerRights::isOwn(annas(), anna));
}

TEST_F(SchedulerRightsTest, AreThoseOverAllWhereItsBundleIsNeitherTheSystemsNorTheUsersOwn)
{
    const passwd *const user = ::getpwuid(anna);
    ASSERT_NE(user, nullptr);
    const QString home = QFile::decodeName(user->pw_dir);
    const auto of = [](const QString &path) {
        Schedule schedule = annas();
        schedule.bundlePath = path;
        return schedule;
    };
    EXPECT_EQ(toAdd(of(home + plugIns + "/Mine.plugin")), own);
    for (const QString &elsewhere : {home + "/Mine.plugin", QString("/tmp/Mine.plugin"),
                                     QString(plugIns) + "Mine.plugin", home + plugIns + "/../Mine.plugin"})
        EXPECT_EQ(toAdd(of(elsewhere)), all) << elsewhere.toStdString();
    Schedule unsaid = of(home + plugIns + "/Mine.plugin");
    unsaid.parameters.clear();
    EXPECT_EQ(SchedulerRights::placeOf(unsaid), "session") << "nothing of it is read";
    unsaid.bundlePath = "/tmp/Mine.plugin";
    EXPECT_EQ(SchedulerRights::placeOf(unsaid), QString());
}

TEST_F(SchedulerRightsTest, IncludeThoseOverTheMachineWhereItIsWokenOrPutToRest)
{
    EXPECT_EQ(toAdd(annas({{"Needs Wake Up", 1LL}})), ownAndWake);
    EXPECT_EQ(toAdd(annas({{"Needs Startup", 1LL}})), ownAndWake);
    Schedule sleeps = annas();
    sleeps.afterAction = AfterAction::Sleep;
    EXPECT_EQ(toAdd(sleeps), ownAndWake);
    sleeps.afterAction = AfterAction::Nothing;
    EXPECT_EQ(toAdd(sleeps), own);

    const Schedule wakes = annas({{"Needs Wake Up", 1LL}});
    EXPECT_EQ(needed(annas(), wakes), ownAndWake);
    EXPECT_EQ(needed(wakes, wakes), own) << "it has been allowed";
    EXPECT_EQ(needed(wakes, annas()), own);
    EXPECT_EQ(needed(wakes, {}), own);
    Schedule disabled = wakes;
    disabled.isEnabled = false;
    EXPECT_EQ(needed(wakes, disabled), own);
    EXPECT_EQ(needed(disabled, wakes), ownAndWake);
}

TEST_F(SchedulerRightsTest, AreNotAskedForOfRoot)
{
    Schedule berts = annas({{"Acts In User Agent", 0LL}, {"Needs Wake Up", 1LL}});
    berts.owner = bert;
    EXPECT_EQ(needed({}, berts, 0), Actions());
    EXPECT_EQ(needed(berts, {}, 0), Actions());
}
