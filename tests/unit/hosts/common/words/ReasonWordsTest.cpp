// SPDX-License-Identifier: MIT
#include "hosts/common/words/ReasonWords.h"

#include "DozelyKit/plugin/Names.h"
#include "hosts/common/bus/ScheduleWish.h"
#include "hosts/common/plugins/Feasibility.h"
#include "hosts/common/words/CompiledTexts.h"

#include <gmock/gmock.h>

using namespace dozely;

namespace
{
/// By a person with German; each test is a process of its own.
class ReasonWordsTest : public testing::Test
{
protected:
    ReasonWordsTest() { CompiledTexts::install("none", "de"); }

    static std::string words(const QString &reason) { return ReasonWords::of(reason).toStdString(); }
};
} // namespace

TEST(ReasonWordsInEnglish, StayAsTheyCome)
{
    CompiledTexts::install("none", "en");
    for (const QString said :
         {"You are not allowed to do this.", "Nothing could come of it: there is no program /x.",
          "An action goes on, or is due too soon.", "its program ended with status 3", "what nobody knows"})
        EXPECT_EQ(ReasonWords::of(said).toStdString(), said.toStdString());
}

TEST_F(ReasonWordsTest, HasSentencesOfTheDaemon)
{
    EXPECT_EQ(words("You are not allowed to do this."), "Das dürfen Sie nicht.");
    EXPECT_EQ(words("A user may have 200 schedules."), "Ein Benutzer darf 200 Zeitpläne haben.");
    EXPECT_EQ(words("\"Backup\" was changed by somebody else meanwhile."),
              "„Backup“ hat inzwischen jemand anders geändert.");
}

TEST_F(ReasonWordsTest, HasReasonsWithinReasons)
{
    EXPECT_EQ(words("Nothing could come of it: there is no program /x/y."),
              "Daraus könnte nichts werden: es gibt kein Programm /x/y.");
    EXPECT_EQ(
        words("Nothing could come of it: Sleep cannot act in the session: it acts in the daemon alone."),
        "Daraus könnte nichts werden: Sleep kann in der Sitzung nicht handeln: es handelt nur im Dienst.");
}

TEST_F(ReasonWordsTest, HasClausesThatWereMadeSentences)
{
    EXPECT_EQ(words("An action goes on, or is due too soon."), "Eine Aktion läuft oder steht zu bald an.");
    EXPECT_EQ(words("The machine is kept awake by Player (plays music)."),
              "Der Computer wird wach gehalten von Player (plays music).");
    EXPECT_EQ(words("it took longer than 5 s"), "sie dauerte länger als 5 s");
}

TEST_F(ReasonWordsTest, LeavesWhatItDoesNotKnow)
{
    for (const QString said : {"", ".", "Something new happened.", "rsync: connection lost", "%1", "%1."})
        EXPECT_EQ(words(said), said.toStdString());
    EXPECT_EQ(words("Nothing could come of it: the moon is full."),
              "Daraus könnte nichts werden: the moon is full.");
}

TEST_F(ReasonWordsTest, FillsInWhatAStrangerChoseAsItIs)
{
    EXPECT_EQ(words("Nothing could come of it: there is no program %2 %1."),
              "Daraus könnte nichts werden: es gibt kein Programm %2 %1.");
    EXPECT_EQ(words("\"session\" was changed by somebody else meanwhile."),
              "„session“ hat inzwischen jemand anders geändert.");
    const QString deep = QString("Nothing could come of it: ").repeated(3000) + "x.";
    EXPECT_EQ(words(deep), deep.toStdString());
    EXPECT_THAT(words(QString("Nothing could come of it: ").repeated(20) + "x."),
                testing::StartsWith("Daraus könnte nichts werden: "));
}

TEST_F(ReasonWordsTest, TellsOfTheBusByItsErrorsNames)
{
    EXPECT_EQ(ReasonWords::of(Error{"The name com.dozely was not provided by any .service files",
                                    "org.freedesktop.DBus.Error.ServiceUnknown"})
                  .toStdString(),
              "Der Dozely-Dienst läuft nicht.");
    const auto ofBus = [](const QByteArray &name) {
        return ReasonWords::of(Error{"what libraries say", "org.freedesktop.DBus.Error." + name})
            .toStdString();
    };
    EXPECT_EQ(ofBus("NameHasNoOwner"), "Der Dozely-Dienst läuft nicht.");
    for (const char *late : {"NoReply", "Timeout", "TimedOut"})
        EXPECT_EQ(ofBus(late), "Der Dozely-Dienst hat nicht rechtzeitig geantwortet.") << late;
    EXPECT_NE(ofBus("NoServer"), "what libraries say");
    EXPECT_EQ(ofBus("Disconnected"), ofBus("NoServer"));
    EXPECT_EQ(ofBus("Failed"), "what libraries say");
    EXPECT_EQ(ReasonWords::of(Error{"You are not allowed to do this.", "com.dozely.Error.NotAllowed"})
                  .toStdString(),
              "Das dürfen Sie nicht.");
}

TEST_F(ReasonWordsTest, KnowsWhatTheRealCodeSays)
{
    Schedule schedule;
    schedule.bundlePath = "/nowhere/Backup.plugin";
    const auto why = Feasibility::reasonAgainst(schedule);
    ASSERT_TRUE(why);
    EXPECT_EQ(words(*why), "unter " + schedule.fullBundlePath().toStdString() + " gibt es kein Bündel");

    const auto made = ScheduleWish::made("1", {{"name", QString(600, 'x')}}, QDateTime::currentDateTimeUtc());
    ASSERT_FALSE(made);
    EXPECT_EQ(words(made.error().text), "Der Name hat mehr als 500 Zeichen.");
}
