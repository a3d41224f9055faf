// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/AppleScriptExtensions.h"

#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/system/scripting/NSAppleScript.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QDir>

#include <gmock/gmock.h>

#include <stdexcept>

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

namespace
{
class Listener : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void hear(const NSNotification &notification)
    {
        heard += notification;
        if (notification.userInfo().contains("raise"))
            throw std::runtime_error("the listener is unhappy");
    }
    QList<NSNotification> heard;
};

class ScriptFunctionsTest : public testing::Test
{
protected:
    static std::string outcomeOf(const QString &source)
    {
        zandorSoftwaresExtensions::registerScriptFunctions();
        NSAppleScript script(source);
        QVariantMap errorInfo;
        const auto result = script.executeAndReturnError(&errorInfo);
        return (result ? result->stringValue() : errorInfo.value(NSAppleScriptErrorMessage).toString())
            .toStdString();
    }
    std::vector<std::string> lines() const
    {
        std::vector<std::string> texts;
        for (const QString &line : root.logLines())
            texts.push_back(line.toStdString());
        return texts;
    }
    ScratchRoot root;
};
} // namespace

TEST_F(ScriptFunctionsTest, WriteALineToTheLog)
{
    EXPECT_EQ(outcomeOf("dozely.log('Zoë %@ 100%'); dozely.log(42); dozely.log()"), "");
    EXPECT_THAT(lines(), ElementsAre(EndsWith("Zoë %@ 100%"), EndsWith(" 42"), EndsWith("(null)")));
}

TEST_F(ScriptFunctionsTest, WriteOneLineWhateverTheTextHolds)
{
    outcomeOf("dozely.log('first\\nMar 04 09:15:02 (1 - 1 - 0 - Daemon): forged\\r\\0\\u{2028}end')");
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_THAT(lines()[0], EndsWith("first Mar 04 09:15:02 (1 - 1 - 0 - Daemon): forged   end"));
}

TEST_F(ScriptFunctionsTest, WriteNoMoreToTheLogThanOneExecutionMay)
{
    constexpr qsizetype most = 1 << 20;
    for (const char *source :
         {"local s = ('x'):rep(10000); for i = 1, 1000 do dozely.log(s) end",
          "for i = 1, 100000 do dozely.log('') end",
          "for i = 1, 100000 do pcall(dozely.log, ('é'):rep(100)) end; dozely.log('x')"}) {
        const auto before = root.logContent().size();
        EXPECT_THAT(outcomeOf(source), HasSubstr("the script writes too much to the log"));
        const auto written = root.logContent().size() - before;
        EXPECT_LE(written, most) << source;
        EXPECT_GT(written, most / 4) << source;
    }
    EXPECT_EQ(outcomeOf("dozely.log('the next may write again')"), "");
    EXPECT_THAT(lines().back(), EndsWith("the next may write again"));
}

TEST_F(ScriptFunctionsTest, PostANotification)
{
    Listener listener;
    NSNotificationCenter::defaultCenter().addObserver(&listener, "hear", "Lights Are On");
    EXPECT_EQ(
        outcomeOf(
            "dozely.post('Lights Are On', 'com.example.Lights', {Room = 'Kitchen', Count = 3})\n"
            "dozely.post('Lights Are On'); dozely.post('Lights Are On', nil, {}); dozely.post('Other')"),
        "");
    ASSERT_EQ(listener.heard.size(), 3);
    EXPECT_EQ(listener.heard[0].object(), "com.example.Lights");
    EXPECT_EQ(listener.heard[0].userInfo(), (QVariantMap{{"Room", "Kitchen"}, {"Count", qlonglong(3)}}));
    EXPECT_FALSE(listener.heard[1].object().isValid());
    EXPECT_TRUE(listener.heard[2].userInfo().isEmpty());
}

TEST_F(ScriptFunctionsTest, PassOnWhatAnObserverRaises)
{
    Listener listener;
    NSNotificationCenter::defaultCenter().addObserver(&listener, "hear", "X");
    EXPECT_EQ(outcomeOf("dozely.post('X', nil, {raise = true})"), "script:1: the listener is unhappy");
}

TEST_F(ScriptFunctionsTest, RefuseANotificationOfAnotherShape)
{
    EXPECT_THAT(outcomeOf("dozely.post()"), HasSubstr("the notification's name has to be a text"));
    EXPECT_THAT(outcomeOf("dozely.post('x', 7)"), HasSubstr("the notification's sender has to be a text"));
    EXPECT_THAT(outcomeOf("dozely.post('x', nil, {1})"), HasSubstr("has to be a table with texts as keys"));
    EXPECT_THAT(outcomeOf("dozely.post('x', nil, 'y')"), HasSubstr("has to be a table with texts as keys"));
}

TEST_F(ScriptFunctionsTest, RunAProgramAndTellHowItEnded)
{
    EXPECT_EQ(outcomeOf("local r = dozely.run('/bin/echo', {'a b', '$HOME'}); return r.output .. r.status"),
              "a b $HOME\n0");
    EXPECT_EQ(outcomeOf("return dozely.run('/bin/sh', {'-c', 'exit 3'}).status"), "3");
    EXPECT_EQ(
        outcomeOf(
            "local r = dozely.run('/bin/sh', {'-c', 'kill -9 $$'}); return r.signal .. tostring(r.status)"),
        "9nil");
    EXPECT_EQ(outcomeOf("return dozely.run('/bin/true').output"), "");
}

TEST_F(ScriptFunctionsTest, RunAProgramInACleanEnvironment)
{
    qputenv("DOZELY_SECRET", "x");
    const std::string environment = outcomeOf("return dozely.run('/usr/bin/env').output");
    EXPECT_THAT(environment, HasSubstr("PATH=/usr/local/bin:/usr/bin:/bin\n"));
    EXPECT_THAT(environment, HasSubstr("HOME="));
    EXPECT_THAT(environment, testing::Not(HasSubstr("SECRET")));
    EXPECT_EQ(outcomeOf("return dozely.run('/bin/pwd').output"), QDir::homePath().toStdString() + "\n");
}

TEST_F(ScriptFunctionsTest, RefuseToRunWhatIsNoProgramWithArguments)
{
    EXPECT_THAT(outcomeOf("dozely.run('echo')"), HasSubstr("the program has to be an absolute path"));
    EXPECT_THAT(outcomeOf("dozely.run()"), HasSubstr("the program has to be a text"));
    EXPECT_THAT(outcomeOf("dozely.run('/bin/echo\\0x')"), HasSubstr("the program holds a NUL character"));
    EXPECT_THAT(outcomeOf("dozely.run('/bin/echo', 'x')"),
                HasSubstr("the program's arguments have to be a list"));
    EXPECT_THAT(outcomeOf("dozely.run('/bin/echo', {'x', 7})"),
                HasSubstr("the program's argument 2 has to be a text"));
    EXPECT_THAT(outcomeOf("dozely.run('/nonexistent')"), HasSubstr("could not be started: No such file"));
}

TEST_F(ScriptFunctionsTest, LeaveAHostItsOwnFunctionInTheirPlace)
{
    zandorSoftwaresExtensions::registerScriptFunctions();
    NSAppleScript::registerFunction("log", [](const QVariantList &) { return QVariant("the host's"); });
    EXPECT_EQ(outcomeOf("return dozely.log('x')"), "the host's");
}

#include "ScriptFunctionsTest.moc"
