// SPDX-License-Identifier: MIT
#include "hosts/common/program/HostOptions.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "unit/hosts/HostFixture.h"

using namespace dozely;

using testing::HasSubstr;
using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

using HostOptionsTest = HostFixture;

TEST_F(HostOptionsTest, RelocateTheSystem)
{
    const QString folder = root.makeFolder("/inner");
    EXPECT_FALSE(HostOptions("").parse({"program", "--root", folder}));
    EXPECT_EQ(RootFolder::path(), folder);
}

TEST_F(HostOptionsTest, PrintHelpAndVersionAndEndWith0)
{
    HostOptions help("Does something.");
    CaptureStdout();
    EXPECT_EQ(help.parse({"program", "--help"}), 0);
    const std::string text = GetCapturedStdout();
    EXPECT_THAT(text, HasSubstr("Does something."));
    EXPECT_THAT(text, HasSubstr("--root <DIR>"));
    EXPECT_THAT(text, HasSubstr("--version"));
    HostOptions version("");
    CaptureStdout();
    EXPECT_EQ(version.parse({"program", "--version"}), 0);
    EXPECT_THAT(GetCapturedStdout(), testing::MatchesRegex("[^ ]+ [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(HostOptionsTest, RefuseWhatTheyDoNotKnowWith2)
{
    CaptureStderr();
    EXPECT_EQ(HostOptions("").parse({"program", "--frobnicate"}), 2);
    EXPECT_THAT(GetCapturedStderr(), HasSubstr("frobnicate"));
}

TEST_F(HostOptionsTest, RefuseARootFolderWithASentenceAnd2)
{
    const QString former = RootFolder::path();
    const QString longest = root.makeFolder("/" + QString(80, 'x'));
    for (const QString &folder : {QString("relative"), root.join("/missing"), longest}) {
        CaptureStderr();
        EXPECT_EQ(HostOptions("").parse({"program", "--root", folder}), 2);
        EXPECT_THAT(GetCapturedStderr(), HasSubstr(RootFolder::refusal(folder).toStdString()));
        EXPECT_FALSE(RootFolder::refusal(folder).isEmpty());
        EXPECT_EQ(RootFolder::path(), former);
    }
}
