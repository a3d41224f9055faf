// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ChildProgram.h"
#include "DozelyKit/system/machine/RunningProgram.h"
#include "PlugInAnswersFixture.h"
#include "hosts/common/performing/AskingPerformer.h"
#include "hosts/common/performing/OrderStream.h"

#include <QTimer>

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{
/// Where a plug-in goes wrong.
struct Place {
    const char *name;
    const char *infoKey;
    const char *parameter;
    const char *file;

    friend void PrintTo(const Place &place, std::ostream *out) { *out << place.name; }
};
} // namespace

/// Plug-ins that go wrong when they are asked, beside one that does not.
class PlugInTrouble : public PlugInAnswersFixture, public testing::WithParamInterface<Place>
{
protected:
    /// A schedule of a bundle that goes wrong there.
    Schedule bad(const char *how) const
    {
        const Place place = GetParam();
        makeTrouble("Bad", place.infoKey ? QVariantMap{{place.infoKey, how}} : QVariantMap());
        if (place.file)
            write(QString(plugIns) + "/Bad.plugin/Contents/" + place.file, how);
        return scheduleOf("Bad", place.parameter ? QVariantMap{{place.parameter, how}} : QVariantMap());
    }
};

TEST_P(PlugInTrouble, ThatCrashesIsToldAndHarmsNobody)
{
    const auto schedule = bad("crash");
    EXPECT_FALSE(answers->of(schedule));
    EXPECT_TRUE(known(trouble()));
    EXPECT_THAT(reason(schedule), HasSubstr("its process was ended by signal 11"));
    EXPECT_EQ(messages().size(), 1);
    EXPECT_THAT(lines(), HasSubstr("Schedule \"Backup\": its plug-in " + root.join(plugIns).toStdString() +
                                   "/Bad.plugin went wrong when it was asked: its process was ended by "
                                   "signal 11"));
    EXPECT_THAT(lines(), Not(HasSubstr("(null)"))) << "it is not left alone yet";
}

TEST_P(PlugInTrouble, ThatExitsIsToldAndHarmsNobody)
{
    const auto schedule = bad("exit");
    EXPECT_FALSE(answers->of(schedule));
    EXPECT_TRUE(known(trouble()));
    EXPECT_THAT(reason(schedule), HasSubstr("its process ended by itself with status 0"));
}

TEST_P(PlugInTrouble, ThatHangsIsKilledAndHarmsNobody)
{
    const auto schedule = bad("hang");
    EXPECT_FALSE(answers->of(schedule));
    EXPECT_FALSE(answers->of(trouble()));
    QTimer pulse;
    QObject::connect(&pulse, &QTimer::timeout, [&] { clock.advance(10ms); });
    pulse.start(5ms);
    ASSERT_TRUE(waitUntil([&] { return answers->of(trouble()).has_value(); }));
    pulse.stop();
    EXPECT_THAT(reason(schedule), HasSubstr("it took longer than"));
    EXPECT_TRUE(known(trouble()));
}

INSTANTIATE_TEST_SUITE_P(Everywhere, PlugInTrouble,
                         testing::Values(Place{"InAStaticInitialiser", nullptr, nullptr, "AtLoading"},
                                         Place{"InInitializeClass", "At Initialising", nullptr, nullptr},
                                         Place{"InNeedsWakeUp", nullptr, "Wake Up", nullptr},
                                         Place{"InTimeOut", nullptr, "Time Out", nullptr}),
                         [](const auto &place) { return place.param.name; });

TEST_F(PlugInAnswersFixture, ArePutOffForAsLongAsTheMachineHasNoProcessorForThem)
{
    const auto diesAfter = [&](std::chrono::milliseconds starved, std::chrono::milliseconds after) {
        QFile::remove(root.join("/marks.asked"));
        std::chrono::milliseconds told(5000); // before it was asked
        AskingPerformer performer(PERFORMER_PROGRAM, clock, [&](const RunningProgram &) { return told; });
        const auto hanging = trouble({{"Time Out", "mark and hang"}});
        PerformanceOrder question;
        question.bundlePath = hanging.fullBundlePath();
        question.parameters = hanging.parameters;
        question.date = hanging.calendarDate();
        QString why;
        performer.ask(question, [&](const AskingPerformer::Reply &reply) {
            why = reply.kind == AskingPerformer::Reply::Kind::Died ? reply.answer.error().text : "not died";
        });
        EXPECT_TRUE(waitUntil([&] { return QFileInfo(root.join("/marks.asked")).size() > 0; }));
        told += starved;
        clock.advance(after - 1ms);
        EXPECT_EQ(why, "") << "too early";
        clock.advance(1ms);
        return why;
    };
    EXPECT_EQ(diesAfter(0ms, 2s), "it took longer than 2 s");
    EXPECT_EQ(diesAfter(1500ms, 3500ms), "it took longer than 2 s") << "of its own";
    EXPECT_EQ(diesAfter(1h, 20s), "it took longer than 20 s");
}

TEST_F(PlugInAnswersFixture, EndWithWhoeverWantedToKnow)
{
    // A host that dies while a plug-in hangs, which would hang for ever.
    const pid_t host = ::fork();
    ASSERT_GE(host, 0);
    if (host == 0) {
        int ends[2];
        const auto hanging = trouble({{"Time Out", "mark and hang"}});
        PerformanceOrder question;
        question.bundlePath = hanging.fullBundlePath();
        question.parameters = hanging.parameters;
        question.date = hanging.calendarDate();
        const bool isMade = ::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) == 0;
        ChildProgram program{PERFORMER_PROGRAM, {"--ask", "--root", root.path()}, {}};
        program.input = ends[1];
        const auto performer = program.start([](const auto &) {});
        const bool isAsked = isMade && OrderStream::send(ends[0], question).ok();
        waitUntil([&] { return !isAsked || QFileInfo(root.join("/marks.asked")).size() > 0; });
        ::_exit(isAsked ? 0 : 1); // without a word
    }
    int status = -1;
    ASSERT_EQ(::waitpid(host, &status, 0), host);
    ASSERT_EQ(status, 0);
    const pid_t performer = read("/marks.asked").toInt();
    ASSERT_GT(performer, 1);
    EXPECT_TRUE(waitUntil([&] {
        QFile stat(QString("/proc/%1/stat").arg(performer));
        return !stat.open(QIODevice::ReadOnly) || stat.readAll().contains(") Z ");
    }));
}

using PlugInAnswersAfterTrouble = PlugInAnswersFixture;

TEST_F(PlugInAnswersAfterTrouble, AreAskedForAgainAfterAMinute)
{
    const auto schedule = trouble({{"Time Out", "throw"}});
    EXPECT_THAT(reason(schedule), HasSubstr("the plug-in was told to"));
    clock.advance(59s);
    EXPECT_TRUE(answers->of(schedule)) << "not yet";
    clock.advance(1s);
    EXPECT_FALSE(answers->of(schedule));
    EXPECT_THAT(reason(schedule), HasSubstr("the plug-in was told to"));
    EXPECT_EQ(messages().size(), 0) << "it has not died";
}

TEST_F(PlugInAnswersAfterTrouble, AreAskedForAgainWhenTheyAreDue)
{
    const auto schedule = trouble({{"Time Out", "throw"}});
    EXPECT_THAT(reason(schedule), HasSubstr("the plug-in was told to"));
    clock.advance(5s);
    EXPECT_TRUE(answers->of(schedule));
    EXPECT_FALSE(answers->of(schedule, Urgency::Due));
    EXPECT_THAT(reason(schedule, Urgency::Due), HasSubstr("the plug-in was told to")) << "known at once";
}

TEST_F(PlugInAnswersAfterTrouble, AreNotAskedForAfterFiveDeathsUntilTheBundleChanges)
{
    makeTrouble("Bad", {{"At Initialising", "crash"}});
    const auto schedule = scheduleOf("Bad");
    for (int i = 0; i < PlugInAnswers::mostDeaths; ++i) {
        EXPECT_THAT(reason(schedule), HasSubstr("signal 11"));
        clock.advance(1min);
    }
    EXPECT_THAT(reason(schedule, Urgency::Due), HasSubstr("is left alone until it changes"));
    EXPECT_THAT(reason(scheduleOf("Bad", {{"Number", 1LL}})), HasSubstr("is left alone"));
    EXPECT_EQ(messages().size(), PlugInAnswers::mostDeaths);
    EXPECT_THAT(messages().last().toStdString(), HasSubstr("; from now on it is left alone"));

    ASSERT_TRUE(QFile::remove(root.join(schedule.bundlePath + "/Contents/Linux/TroublePlugIn.so")));
    makeTrouble("Bad");
    EXPECT_TRUE(waitUntil([&] {
        const auto answer = answers->of(schedule);
        return answer && answer->ok();
    }));
}

TEST_F(PlugInAnswersAfterTrouble, AreLeftWithParametersThatKillAndComeForOthers)
{
    const auto bad = trouble({{"Time Out", "crash"}});
    for (int i = 0; i < 2 * PlugInAnswers::mostDeaths; ++i) {
        EXPECT_THAT(reason(bad), HasSubstr("signal 11"));
        EXPECT_TRUE(known(trouble({{"Number", static_cast<qint64>(i)}})));
        clock.advance(1min);
    }
    EXPECT_EQ(messages().size(), PlugInAnswers::mostDeaths) << "then these parameters are left alone";
}

TEST_F(PlugInAnswersAfterTrouble, AreNoneForABundleThatDiedFiveTimesActing)
{
    ASSERT_TRUE(known(trouble()));
    for (int i = 0; i < PlugInAnswers::mostDeaths - 1; ++i)
        answers->noteDeath(trouble(), "its process was ended by signal 9 (Killed)");
    answers->noteSuccess(trouble());
    for (int i = 0; i < PlugInAnswers::mostDeaths - 1; ++i)
        answers->noteDeath(trouble(), "its process was ended by signal 9 (Killed)");
    EXPECT_TRUE(*answers->of(trouble()));
    answers->noteDeath(trouble(), "its process was ended by signal 9 (Killed)");
    EXPECT_THAT(reason(trouble()), HasSubstr("the last time its process was ended by signal 9 (Killed)"));
    EXPECT_EQ(messages().size(), 2 * PlugInAnswers::mostDeaths - 1) << "one line each";
}
