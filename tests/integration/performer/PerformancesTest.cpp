// SPDX-License-Identifier: MIT
#include "hosts/common/performing/Performances.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "PerformerFixture.h"
#include "hosts/common/performing/PlaceLock.h"

#include <QDir>

#include <csignal>

using namespace dozely;

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class PerformancesTest : public PerformerFixture
{
protected:
    PerformancesTest() { start(); }

    /// A host that has begun anew.
    void start()
    {
        performances = std::make_unique<Performances>(PERFORMER_PROGRAM, folder, *Port<Clock>::current());
    }
    Performances::Ended noting(const QString &name)
    {
        return [this, name](const PerformanceOutcome &outcome) { outcomes[name] += outcome; };
    }
    bool prepare(const QString &name, const QString &wish = "nothing")
    {
        order.parameters.insert("Do", wish);
        return performances->prepare(name, order, noting(name)).ok();
    }
    /// What became of it, once it has ended.
    PerformanceOutcome outcome(const QString &name)
    {
        EXPECT_TRUE(waitUntil([&] { return !outcomes[name].isEmpty(); }));
        EXPECT_EQ(outcomes[name].size(), 1) << "told once";
        return outcomes[name].value(0);
    }
    QStringList files() const { return QDir(folder).entryList(QDir::Files); }

    std::unique_ptr<Performances> performances;
    QHash<QString, QList<PerformanceOutcome>> outcomes;
};

TEST_F(PerformancesTest, TellTheEndOfEachOnceAndLeaveNothing)
{
    for (const QString name : {"one", "two"}) {
        ASSERT_TRUE(prepare(name));
        ASSERT_TRUE(performances->go(name));
    }
    EXPECT_EQ(outcome("one").failure, "");
    EXPECT_TRUE(outcome("two").hasBegun);
    EXPECT_EQ(marks(), "acted\nacted\n");
    EXPECT_EQ(files(), QStringList());
    EXPECT_FALSE(performances->go("one")) << "it has ended";
}

TEST_F(PerformancesTest, WaitForTheirMoment)
{
    ASSERT_TRUE(prepare("one"));
    ASSERT_TRUE(waitUntil([&] { return PlaceLock::isHeld(folder + "/one"); }));
    EXPECT_EQ(marks(), "");
    ASSERT_TRUE(performances->go("one"));
    EXPECT_TRUE(outcome("one").hasBegun);
}

TEST_F(PerformancesTest, TellThatOneEndedBeforeItsMoment)
{
    ASSERT_TRUE(prepare("one", "throw when asked"));
    EXPECT_EQ(outcome("one").failure, "the plug-in was told to");
    EXPECT_FALSE(outcome("one").hasBegun);
    EXPECT_FALSE(performances->go("one"));
}

TEST_F(PerformancesTest, SayWhyNoneCanBeStarted)
{
    Performances without(root.join("/no-performer"), folder, *Port<Clock>::current());
    const auto started = without.prepare("one", order, noting("one"));
    ASSERT_FALSE(started);
    EXPECT_THAT(started.error().text.toStdString(), HasSubstr("no-performer could not be started"));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(PerformancesTest, GoOnWithoutTheirHostAndAreFoundByTheNext)
{
    ASSERT_TRUE(prepare("one", "wait"));
    ASSERT_TRUE(performances->go("one"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    start();
    ASSERT_TRUE(performances->adopt("one", noting("one")));
    write("/marks.go", "");
    EXPECT_EQ(outcome("one").failure, "");
    EXPECT_EQ(marks(), "acted\nfinished\n");
    EXPECT_EQ(files(), QStringList());
}

TEST_F(PerformancesTest, ThatEndedWithoutTheirHostAreToldToTheNext)
{
    ASSERT_TRUE(prepare("one", "crash"));
    ASSERT_TRUE(performances->go("one"));
    start();
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(folder + "/one.outcome"); }));
    ASSERT_TRUE(performances->adopt("one", noting("one")));
    EXPECT_THAT(outcome("one").failure.toStdString(), HasSubstr("signal 11"));
}

TEST_F(PerformancesTest, ThatWereNotLetGoNeverBegin)
{
    ASSERT_TRUE(prepare("one"));
    start();
    ASSERT_TRUE(waitUntil([&] { return !PlaceLock::isHeld(folder + "/one"); }));
    EXPECT_FALSE(performances->adopt("one", noting("one")));
    EXPECT_EQ(marks(), "");
}

TEST_F(PerformancesTest, WhosePerformerWasKilledAreToldAsThat)
{
    ASSERT_TRUE(prepare("one", "hang"));
    ASSERT_TRUE(performances->go("one"));
    ASSERT_TRUE(waitUntil([&] { return marks() == "acted\n"; }));
    QFile marked(root.join("/marks.supervisor"));
    ASSERT_TRUE(marked.open(QIODevice::ReadOnly));
    const pid_t supervisor = marked.readAll().trimmed().toInt();
    ASSERT_GT(supervisor, 1);
    ASSERT_EQ(::kill(supervisor, SIGKILL), 0);
    EXPECT_EQ(outcome("one").failure, "its performer ended without a word");
}

TEST_F(PerformancesTest, HaveNothingLeftOfWhatNobodyAsksForAnyMore)
{
    ASSERT_TRUE(prepare("kept", "crash"));
    ASSERT_TRUE(performances->go("kept"));
    start();
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(folder + "/kept.outcome"); }));
    write("/var/lib/dozely/performing/old", "");
    write("/var/lib/dozely/performing/old.outcome", "");
    write("/var/lib/dozely/performing/old.outcome.new", "");
    performances->sweep({"kept"});
    EXPECT_EQ(files(), QStringList({"kept", "kept.outcome"}));
}

TEST_F(PerformancesTest, OfManyAtOnceAllEnd)
{
    constexpr int many = 60;
    for (int i = 0; i < many; ++i) {
        ASSERT_TRUE(prepare(QString::number(i)));
        ASSERT_TRUE(performances->go(QString::number(i)));
    }
    for (int i = 0; i < many; ++i)
        EXPECT_TRUE(outcome(QString::number(i)).hasBegun);
    EXPECT_EQ(marks().count('\n'), many);
}
