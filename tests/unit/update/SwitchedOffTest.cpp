// SPDX-License-Identifier: MIT
//
// The update check as in a library that was built without it: this program has its classes compiled in that
// way.
#include "DozelyKit/update/WDUpdateChecker.h"

#include "DozelyKit/update/UpdateServer.h"
#include "unit/update/UpdateFixture.h"

using namespace dozely;

using testing::ElementsAre;
using testing::IsEmpty;

class SwitchedOff : public UpdateFixture
{
};

TEST_F(SwitchedOff, LooksNothingUpAndSendsNothing)
{
    http->answer = QByteArray(R"({"Latest Version Number": 42, "Latest Version String": "3.3"})");
    EXPECT_FALSE(UpdateServer::isAsked());
    EXPECT_FALSE(checker->updateLatestVersionDictionary());
    EXPECT_THAT(network->hosts, IsEmpty());
    EXPECT_THAT(http->requests, IsEmpty());
    EXPECT_THAT(log(), ElementsAre("There is no update check in this build."));
    EXPECT_TRUE(checker->latestVersion().isNull());
    EXPECT_FALSE(checker->latestVersionURL().isValid());
}

TEST_F(SwitchedOff, StillKnowsTheInstalledVersion)
{
    EXPECT_EQ(checker->fullVersionString(), "3.2 (41)");
}
