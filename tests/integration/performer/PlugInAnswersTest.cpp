// SPDX-License-Identifier: MIT
#include "PlugInAnswersFixture.h"

#include <csignal>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

using PlugInAnswersTest = PlugInAnswersFixture;

TEST_F(PlugInAnswersTest, AreWhatThePlugInSays)
{
    const auto schedule = trouble({{"Needs Wake Up", 1LL}, {"Alert", 1LL}, {"Delay before alert", 60LL}});
    EXPECT_FALSE(answers->of(schedule)) << "nobody has been asked yet";
    const auto answer = known(schedule);
    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->needsWakeUp);
    EXPECT_FALSE(answer->needsStartup);
    EXPECT_EQ(answer->timeOut, -7);
    EXPECT_EQ(answer->timeBeforeSelfAnticipation, 60);
    EXPECT_EQ(answer->pluginName, "Plugin Name");
    EXPECT_EQ(answer->bundleInfo.value("WDDaemonModule"), "TroublePlugIn.so");
    EXPECT_FALSE(answer->handsOverItself);
    EXPECT_FALSE(answer->announcesItself);
}

TEST_F(PlugInAnswersTest, TellWhetherAPlugInHandsOverInAWayOfItsOwn)
{
    makeTrouble("OwnWay", {{"Own Way", true}});
    const auto answer = known(scheduleOf("OwnWay"));
    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->handsOverItself);
    EXPECT_FALSE(answer->announcesItself);
}

TEST_F(PlugInAnswersTest, TellWhetherAPlugInAnnouncesInAWayOfItsOwn)
{
    makeTrouble("OwnVoice", {{"Own Voice", true}});
    const auto answer = known(scheduleOf("OwnVoice"));
    ASSERT_TRUE(answer);
    EXPECT_FALSE(answer->handsOverItself);
    EXPECT_TRUE(answer->announcesItself);
}

TEST_F(PlugInAnswersTest, AreGivenByAPlugInThatKnowsTheDate)
{
    EXPECT_TRUE(known(trouble({{"Do", "tell its date when asked"}})));
    EXPECT_EQ(marks(), noon().toString(Qt::ISODate).toUtf8() + "\nasked\n");
}

TEST_F(PlugInAnswersTest, AreToldFromTheEventLoop)
{
    EXPECT_FALSE(answers->of(trouble()));
    EXPECT_EQ(told, 0);
    ASSERT_TRUE(waitUntil([&] { return told > 0; }));
    EXPECT_TRUE(answers->of(trouble())->ok());
}

TEST_F(PlugInAnswersTest, AreAskedForOnceForEqualParameters)
{
    auto first = trouble();
    auto second = trouble();
    second.identifier = "another";
    EXPECT_FALSE(answers->of(first));
    EXPECT_FALSE(answers->of(second));
    EXPECT_TRUE(known(first));
    EXPECT_TRUE(known(second));
    EXPECT_EQ(marks(), "asked\n");
}

TEST_F(PlugInAnswersTest, DependOnTheParameters)
{
    const auto first = trouble({{"Answer", -1LL}});
    const auto second = trouble({{"Answer", -2LL}});
    EXPECT_EQ(known(first)->timeOut, -1);
    EXPECT_EQ(known(second)->timeOut, -2);
    EXPECT_EQ(known(first)->timeOut, -1);
}

TEST_F(PlugInAnswersTest, ForManySchedulesAllCome)
{
    constexpr int many = 1500; // more than may wait
    QList<Schedule> schedules;
    for (int i = 0; i < many; ++i)
        schedules += trouble({{"Answer", i % 3LL}, {"Number", static_cast<qint64>(i)}});
    // As their user does, looks at all of them whenever there is more to be known.
    for (;;) {
        const int before = told;
        const auto areKnown = std::count_if(schedules.cbegin(), schedules.cend(), [&](const Schedule &one) {
            return answers->of(one).has_value();
        });
        if (areKnown == many)
            break;
        ASSERT_TRUE(waitUntil([&] { return told > before; }));
    }
    EXPECT_EQ(known(schedules[1499])->timeOut, 1499 % 3);
    EXPECT_EQ(marks().count('\n'), many);
}

TEST_F(PlugInAnswersTest, OfWhatIsDueComeFirst)
{
    for (int i = 0; i < 500; ++i)
        EXPECT_FALSE(answers->of(trouble({{"Number", static_cast<qint64>(i)}})));
    const auto due = trouble({{"Number", 499LL}});
    EXPECT_FALSE(answers->of(due, Urgency::Due));
    ASSERT_TRUE(waitUntil([&] { return told > 0; }));
    EXPECT_TRUE(answers->of(due));
    EXPECT_LT(marks().count('\n'), 500);
}

TEST_F(PlugInAnswersTest, OfABundleWithoutModuleForTheDaemonAreTheBases)
{
    makeBundle("Session", {{"WDUserAgentModule", "TroublePlugIn.so"}});
    write(QString(plugIns) + "/Session.plugin/Contents/Resources/en.lproj/Localizable.strings",
          "\"Plugin Name\" = \"Reminder\";");
    const auto schedule = scheduleOf("Session", {{"Needs Startup", 1LL}, {"Alert", 0LL}});
    const auto answer = answers->of(schedule);
    ASSERT_TRUE(answer) << "nobody need be asked";
    ASSERT_TRUE(*answer);
    EXPECT_TRUE((*answer)->needsStartup);
    EXPECT_EQ((*answer)->timeOut, -5);
    EXPECT_EQ((*answer)->timeBeforeSelfAnticipation, -1);
    EXPECT_EQ((*answer)->pluginName, "Reminder");
    EXPECT_EQ((*answer)->bundleInfo.value("WDUserAgentModule"), "TroublePlugIn.so");
}

TEST_F(PlugInAnswersTest, AreNoneForABundleThatIsNotThereUntilItIs)
{
    const auto schedule = scheduleOf("Later");
    EXPECT_THAT(reason(schedule), StartsWith("There is no bundle"));
    makeTrouble("Later");
    EXPECT_TRUE(waitUntil([&] {
        const auto answer = answers->of(schedule);
        return answer && answer->ok();
    }));
}

TEST_F(PlugInAnswersTest, AreNoneForABundleThatOthersCanWrite)
{
    ASSERT_TRUE(known(trouble()));
    ::chmod(qPrintable(order.bundlePath + "/Contents"), 0777);
    EXPECT_TRUE(waitUntil([&] { return !answers->of(trouble())->ok(); }));
    EXPECT_THAT(reason(trouble()), HasSubstr("is not trusted"));
}

TEST_F(PlugInAnswersTest, SayThatAModuleIsMissing)
{
    makeBundle("Empty", {{"WDDaemonModule", "Gone.so"}}, {});
    EXPECT_THAT(reason(scheduleOf("Empty")), HasSubstr("there is no such module"));
}

TEST_F(PlugInAnswersTest, AreAskedForAnewWhenTheModuleIsReplaced)
{
    ASSERT_TRUE(known(trouble()));
    const QString module = order.bundlePath + "/Contents/Linux/TroublePlugIn.so";
    ASSERT_TRUE(QFile::remove(module));
    ASSERT_TRUE(QFile::copy(PROBE_MODULE, module));
    ::chmod(qPrintable(module), 0755);
    ASSERT_TRUE(waitUntil([&] { return !answers->of(trouble()); })) << "what is known is of yesterday";
    ASSERT_TRUE(known(trouble()));
    EXPECT_EQ(marks(), "asked\nasked\n");
}

TEST_F(PlugInAnswersTest, OfAModuleThatIsReplacedWhileOthersAreAskedAreTheNewOnes)
{
    makeTrouble("Changing");
    const auto changing = scheduleOf("Changing");
    for (int i = 0; i < 1000; ++i)
        EXPECT_FALSE(answers->of(trouble({{"Number", static_cast<qint64>(i)}})));
    EXPECT_EQ(known(changing, Urgency::Due)->timeOut, -7);
    const QString module = root.join(changing.bundlePath + "/Contents/Linux/TroublePlugIn.so");
    ASSERT_TRUE(QFile::remove(module));
    ASSERT_TRUE(QFile::copy(OTHER_MODULE, module));
    ASSERT_TRUE(waitUntil([&] { return !answers->of(changing, Urgency::Due); }));
    EXPECT_EQ(known(changing, Urgency::Due)->timeOut, -5) << "and not what the performer had loaded before";
    EXPECT_LT(marks().count('\n'), 1000) << "it came in between";
}

TEST_F(PlugInAnswersTest, AreForgottenWhenNoScheduleNeedsThem)
{
    const auto kept = trouble({{"Number", 1LL}});
    const auto gone = trouble({{"Number", 2LL}});
    ASSERT_TRUE(known(kept));
    ASSERT_TRUE(known(gone));
    answers->keepOnly({kept});
    EXPECT_TRUE(answers->of(kept));
    EXPECT_FALSE(answers->of(gone));
    ASSERT_TRUE(known(gone)) << "it is asked again";
    answers->keepOnly({});
    EXPECT_FALSE(answers->of(kept));
}

TEST_F(PlugInAnswersTest, AreNoneWithoutAPerformer)
{
    answers = std::make_unique<PlugInAnswers>(root.join("/no-performer"), clock);
    EXPECT_FALSE(answers->of(trouble()));
    EXPECT_TRUE(waitUntil([&] { return !messages().isEmpty(); }));
    EXPECT_THAT(lines(), HasSubstr("no-performer could not be started"));
    EXPECT_FALSE(answers->of(trouble())) << "what it needs is not known, which is not that it needs nothing";
    EXPECT_FALSE(answers->of(trouble({{"Number", 1LL}})));
    EXPECT_EQ(messages().size(), 1) << lines();
    const auto due = answers->of(trouble(), Urgency::Due);
    ASSERT_TRUE(due && *due) << "what is due is tried all the same";
    EXPECT_EQ((*due)->timeOut, -5);
}

namespace
{
/// As long as this lives no file gets larger than that, one in memory neither.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit{bytes, m_former.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        m_formerHandler = ::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileSizeLimit()
    {
        ::signal(SIGXFSZ, m_formerHandler);
        ::setrlimit(RLIMIT_FSIZE, &m_former);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_former{};
    sighandler_t m_formerHandler = SIG_DFL;
};
} // namespace

TEST_F(PlugInAnswersTest, AreNoneForWhatTheMachineHasNoMemoryToAskAndWhatIsDueIsTriedAllTheSame)
{
    const auto large = trouble({{"Text", QString(1 << 20, 'x')}});
    {
        const FileSizeLimit none(1 << 19);
        EXPECT_FALSE(answers->of(large));
        EXPECT_TRUE(waitUntil([&] { return !messages().isEmpty(); }));
        EXPECT_THAT(lines(), StartsWith("No plug-in can be asked: memory: "));
        EXPECT_FALSE(answers->of(large)) << "the plug-in has refused nothing";
        const auto due = answers->of(large, Urgency::Due);
        ASSERT_TRUE(due && *due);
        EXPECT_EQ((*due)->timeOut, -5);
    }
    clock.advance(1min);
    EXPECT_EQ(known(large)->timeOut, -7);
    EXPECT_EQ(messages().size(), 1) << lines();
}

/// The one socket of packets that this process has: over which it asks.
static pollfd askingSocket()
{
    for (int number = 3; number < 1024; ++number) {
        int type = 0;
        socklen_t size = sizeof type;
        if (::getsockopt(number, SOL_SOCKET, SO_TYPE, &type, &size) == 0 && type == SOCK_SEQPACKET)
            return {number, POLLIN, 0};
    }
    ADD_FAILURE() << "nobody is asked";
    return {-1, 0, 0};
}

TEST_F(PlugInAnswersTest, ComeFromAnotherPerformerWhenTheFirstEndsBetweenTwoQuestions)
{
    const auto first = trouble({{"Time Out", "mark and wait"}});
    const auto second = trouble({{"Number", 2LL}});
    EXPECT_FALSE(answers->of(first));
    EXPECT_FALSE(answers->of(second));
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(root.join("/marks.asked")); }));
    // From here on this process hears nothing until the performer has answered and is gone.
    pollfd socket = askingSocket();
    write("/marks.go", "");
    ASSERT_EQ(::poll(&socket, 1, 60'000), 1);
    root.killPerformers();
    socket.events = 0; // until the other end is closed
    ASSERT_EQ(::poll(&socket, 1, 60'000), 1);
    EXPECT_EQ(known(first)->timeOut, -7);
    const auto answer = known(second);
    ASSERT_TRUE(answer) << answer.error().text.toStdString();
    EXPECT_EQ(answer->timeOut, -7);
    EXPECT_EQ(messages(), QStringList());
}
