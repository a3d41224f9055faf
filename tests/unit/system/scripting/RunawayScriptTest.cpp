// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/NSAppleScript.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"

#include <gmock/gmock.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::HasSubstr;

namespace
{
constexpr char tooManySteps[] = "the script takes too many steps.";
constexpr char tooLong[] = "the script takes too long.";

/// A clock that stands still: what ends these scripts is not that time passed.
class RunawayScriptTest : public testing::Test
{
protected:
    RunawayScriptTest() { Port<Clock>::current() = clock; }

    std::string errorOf(const QString &source, NSAppleScript::Limits limits = {})
    {
        NSAppleScript script(source);
        script.setLimits(limits);
        QVariantMap errorInfo;
        const auto result = script.executeAndReturnError(&errorInfo);
        EXPECT_FALSE(result) << "it ended with " << (result ? qPrintable(result->stringValue()) : "");
        return errorInfo.value(NSAppleScriptErrorMessage).toString().toStdString();
    }
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
};

NSAppleScript::Limits fewSteps()
{
    NSAppleScript::Limits limits;
    limits.instructions = 1'000'000;
    return limits;
}
} // namespace

TEST_F(RunawayScriptTest, IsEndedInALoop)
{
    EXPECT_EQ(errorOf("while true do end"), tooManySteps);
    EXPECT_EQ(errorOf("for i = 1, math.huge do end", fewSteps()), tooManySteps);
    EXPECT_EQ(errorOf("::again:: goto again", fewSteps()), tooManySteps);
    EXPECT_EQ(errorOf("local function f() return f() end; f()", fewSteps()), tooManySteps);
}

TEST_F(RunawayScriptTest, HasAllItsStepsAndItsTimeAnewEachTimeThatItIsExecuted)
{
    NSAppleScript script("for i = 1, 300000 do end return 'over'");
    script.setLimits(fewSteps());
    for (int i = 0; i < 10; ++i) {
        QVariantMap errorInfo;
        const auto result = script.executeAndReturnError(&errorInfo);
        ASSERT_TRUE(result) << i << ": " << qPrintable(errorInfo.value(NSAppleScriptErrorMessage).toString());
        EXPECT_EQ(result->stringValue(), "over");
        clock->advance(fewSteps().time - 1ms);
    }
}

TEST_F(RunawayScriptTest, CannotCatchItsEndAndGoOn)
{
    for (const char *source : {"while true do pcall(function() while true do end end) end",
                               "return pcall(function() while true do end end)",
                               "xpcall(function() while true do end end, function() while true do end end)",
                               "while true do xpcall(error, function() end) end",
                               "local function f() while true do pcall(f) end end; f()",
                               "local function f() while true do xpcall(f, f) end end; f()",
                               "local t <close> = setmetatable({}, {__close = function() while true do end "
                               "end}); while true do end"})
        EXPECT_EQ(errorOf(source, fewSteps()), tooManySteps) << source;
}

TEST_F(RunawayScriptTest, IsEndedInAMetamethod)
{
    for (const char *source :
         {"local t = setmetatable({}, {__index = function() while true do end end}); return t.x",
          "return setmetatable({}, {__tostring = function() while true do end end}) .. ''",
          "table.sort({3, 1, 2}, function() while true do end end)",
          "('x'):gsub('x', function() while true do end end)",
          "return tostring(setmetatable({}, {__tostring = function() while true do end end}))"})
        EXPECT_NE(errorOf(source, fewSteps()), "") << source;
    EXPECT_EQ(errorOf("('x'):gsub('x', function() while true do end end)", fewSteps()), tooManySteps);
}

TEST_F(RunawayScriptTest, MayNotLeaveWorkToTheGarbageCollector)
{
    EXPECT_THAT(errorOf("setmetatable({}, {__gc = function() while true do end end})"),
                HasSubstr("\"__gc\""));
    // Added later, the language pays no heed to it.
    NSAppleScript script(
        "local m = {}; setmetatable({}, m); m.__gc = function() while true do end end; return 'over'");
    const auto result = script.executeAndReturnError(nullptr);
    EXPECT_EQ(result.value_or(NSAppleScript::Result()).stringValue(), "over");
}

TEST_F(RunawayScriptTest, IsEndedWithinOnePatternThatTriesEverything)
{
    // Within one call of the library; with the language's own functions each of these takes longer than
    // anybody lives.
    for (const char *call :
         {"find(('a*'):rep(50) .. 'b')", "match(('a*'):rep(50) .. 'b')", "gsub(('a-'):rep(50) .. 'b', '')",
          "gmatch(('a?'):rep(90) .. ('a'):rep(190) .. 'b')()"})
        EXPECT_EQ(errorOf(QString("return ('a'):rep(200):%1").arg(call), fewSteps()), tooManySteps) << call;
    EXPECT_EQ(errorOf("return ('x'):rep(1 << 20):find('[' .. ('a'):rep(1 << 20) .. ']')", fewSteps()),
              tooManySteps);
    EXPECT_EQ(errorOf("return ('('):rep(1 << 16):find('%b()')", fewSteps()), tooManySteps);
}

TEST_F(RunawayScriptTest, IsEndedWhenTheLibraryWouldCountForYears)
{
    for (const char *source :
         {"table.move({}, 1, math.maxinteger - 1, 2)", "table.concat({}, '', math.mininteger)",
          "table.unpack({}, 1, 1 << 40)", "table.unpack({}, math.mininteger, math.maxinteger)"})
        EXPECT_THAT(errorOf(source), HasSubstr("the range is too large")) << source;
    for (const char *source : {"table.insert(t, 1, 'x')", "table.remove(t, 1)", "table.sort(t)",
                               "table.concat(t)", "table.move({1}, 1, 1, 1, t)"})
        EXPECT_THAT(
            errorOf(
                QString("local t = setmetatable({}, {__len = function() return math.maxinteger - 1 end}) ") +
                source),
            HasSubstr("\"__len\""))
            << source;
}

TEST_F(RunawayScriptTest, IsEndedByTheWorkThatOneCallOfTheLibraryDoes)
{
    const QString prepared = "local s = ('x'):rep(1 << 20); local list = {}\n"
                             "for i = 1, 1000 do list[i] = s end\n";
    for (const char *source :
         {"table.sort(list)", "table.sort(list, function() return false end)",
          "for i = 1, 100 do table.concat({s, s, s}) end",
          "local t = {}; for i = 1, 1000 do t[i] = ('a'):rep(40) .. i end\n"
          "for i = 1, 10000 do table.concat(t) end",
          "for i = 1, 100 do ('%s%s'):format(s, s) end", "for i = 1, 100 do s:upper() end",
          "for i = 1, 100 do s:lower() end", "for i = 1, 100 do s:reverse() end",
          "for i = 1, 100 do s:rep(2) end", "for i = 1, 100 do s:find('y', 1, true) end",
          "for i = 1, 200 do s:sub(2) end", "for i = 1, 100 do utf8.len(s) end",
          "for i = 1, 100 do string.pack('s', s) end",
          "for i = 1, 100 do string.packsize(('b'):rep(1 << 16)) end", "for i = 1, 100 do load(s) end",
          "for i = 1, 100 do os.date(('%c'):rep(200)) end",
          "for i = 1, 100 do tonumber((' '):rep(1 << 18)) end",
          "local t = {}; for i = 1, 1 << 14 do t[i] = i end\n"
          "for i = 1, 1000 do table.insert(t, 1, 0); table.remove(t, 1) end",
          "local t = {}; for i = 1, 1 << 14 do t[i] = i end; for i = 1, 1000 do table.move(t, 1, #t, 2) end"})
        EXPECT_EQ(errorOf(prepared + source, fewSteps()), tooManySteps) << source;
}

namespace
{
/// The fewest steps with which a script comes to its end. It has too few instructions to be counted
/// themselves.
quint64 stepsOf(const QString &source)
{
    NSAppleScript script(source);
    quint64 tooFew = 0;
    quint64 enough = 1 << 20;
    while (enough - tooFew > 1) {
        NSAppleScript::Limits limits;
        limits.instructions = (tooFew + enough) / 2;
        script.setLimits(limits);
        (script.executeAndReturnError(nullptr) ? enough : tooFew) = limits.instructions;
    }
    return enough;
}

/// What a call takes beyond one that is like it and has nothing to do.
qint64 work(const QString &call, const QString &idle)
{
    const auto script = [](const QString &call) {
        return "local s, e, t, n = ('x'):rep(1600), '', {}, {}\n"
               "for i = 1, 401 do t[i] = 'ab' end\n" +
               call;
    };
    return static_cast<qint64>(stepsOf(script(call)) - stepsOf(script(idle)));
}
} // namespace

TEST_F(RunawayScriptTest, PaysForEachCallOfTheLibraryByWhatItDoes)
{
    // By the byte of texts that are read, and of those that are given: 16 a step.
    EXPECT_EQ(work("tonumber(s)", "tonumber(e)"), 100);
    for (const char *name : {"upper", "lower", "reverse"})
        EXPECT_EQ(work(QString("s:%1()").arg(name), QString("e:%1()").arg(name)), 200) << name;
    EXPECT_EQ(work("s:sub(1)", "e:sub(1)"), 100);
    EXPECT_EQ(work("s:find('y')", "e:find('y')"), 100);
    EXPECT_EQ(work("s:find('y', 801)", "e:find('y')"), 50);
    EXPECT_EQ(work("s:find('[y]')", "e:find('[y]')"), 6400);  // four a place
    EXPECT_EQ(work("s:byte(1, 400)", "e:byte(1, 400)"), 100); // values: 4 a step
    EXPECT_EQ(work("utf8.codepoint(s, 1, 400)", "utf8.codepoint(s, 1, 0)"), 100);
    EXPECT_EQ(work("utf8.len(s)", "utf8.len(e)"), 1599 / 16);
    EXPECT_EQ(work("utf8.len(s, 801)", "utf8.len(e, 1)"), 799 / 16);
    EXPECT_EQ(work("utf8.len(s, -800)", "utf8.len(e, 1)"), 799 / 16);
    EXPECT_EQ(work("utf8.len(s, 1, 320)", "utf8.len(e, 1, 0)"), 319 / 16);
    EXPECT_EQ(work("utf8.offset(s, 400)", "utf8.offset(e, 0)"), 100);
    EXPECT_EQ(work("utf8.offset(s, -400)", "utf8.offset(e, 0)"), 100);
    // By the byte of a format: 8 steps, of a date's 100, of a program 4.
    EXPECT_EQ(work("('%s'):format(s)", "('%s'):format(e)"), 200);
    EXPECT_EQ(work("('y'):rep(160):format()", "('y'):rep(160):len()"), 11 + 1281 + 11);
    EXPECT_EQ(work("os.date('!yyyyyyyyyy')", "os.date('!')"), 1000);
    EXPECT_EQ(work("load('--' .. s)", "load('--' .. e)"), 6400);
    EXPECT_EQ(work("load('=')", "load(' ')"), 501); // an error that was caught
    // By the piece and the byte.
    EXPECT_EQ(work("s:rep(4)", "e:rep(4)"), 1 + 1 + 400);
    EXPECT_EQ(work("e:rep(4, s)", "e:rep(4, e)"), 1 + 1 + 400);
    // By the value of a table that is moved, walked over or compared.
    EXPECT_EQ(work("table.insert(t, 1, 0)", "table.insert(n, 1, 0)"), 100);
    EXPECT_EQ(work("table.insert(t, 201, 0)", "table.insert(n, 1, 0)"), 50);
    EXPECT_EQ(work("table.insert(t, 0)", "table.insert(n, 0)"), 0);
    EXPECT_EQ(work("table.remove(t, 1)", "table.remove(n, 1)"), 100);
    EXPECT_EQ(work("table.remove(t)", "table.remove(n)"), 0);
    EXPECT_EQ(work("table.concat(t)", "table.concat(n)"), 100 + 802 / 16);
    EXPECT_EQ(work("table.concat(t, e, 2, 202)", "table.concat(n, e, 2, 1)"), 50 + 402 / 16);
    EXPECT_EQ(work("table.move(t, 1, 401, 2)", "table.move(n, 1, 0, 2)"), 100);
    EXPECT_EQ(work("table.unpack(t, 1, 5)", "table.unpack(t, 1, 1)"), 1);
    EXPECT_EQ(work("table.sort({s, s})", "table.sort({e, s})"), 100);
}

TEST_F(RunawayScriptTest, MayLookAtALongTextPieceByPiece)
{
    NSAppleScript script(
        "local s, n = ('ab'):rep(1 << 16), 0\n"
        "for i = 1, 10000 do if s:sub(i, i) == 'a' and s:byte(i) == 97 and #s == s:len() and\n"
        "utf8.offset(s, 1, i) == i and utf8.codepoint(s, i) == 97 then n = n + 1 end end\n"
        "return n");
    script.setLimits(fewSteps());
    QVariantMap errorInfo;
    const auto result = script.executeAndReturnError(&errorInfo);
    EXPECT_EQ(result.value_or(NSAppleScript::Result()).stringValue(), "5000")
        << qPrintable(errorInfo.value(NSAppleScriptErrorMessage).toString());
}

TEST_F(RunawayScriptTest, RepeatsNothingForYears)
{
    for (const char *source : {"return #(''):rep(math.maxinteger)", "return #('').rep('', 1 << 40, '')"}) {
        NSAppleScript script(source);
        const auto result = script.executeAndReturnError(nullptr);
        EXPECT_EQ(result.value_or(NSAppleScript::Result()).stringValue(), "0") << source;
    }
    EXPECT_THAT(errorOf("('xy'):rep(math.maxinteger)"), HasSubstr("resulting string too large"));
}

TEST_F(RunawayScriptTest, CannotCatchThatItNeedsTooMuchMemoryAndGoOn)
{
    const QString greedy = "local function greedy() local s = 'x'; while true do s = s .. s end end\n";
    for (const char *source :
         {"pcall(greedy); return 'went on'", "while true do pcall(greedy) end",
          "xpcall(greedy, function() return 'handled' end); return 'went on'",
          "pcall(function() local c <close> = setmetatable({}, {__close = function() error('other') end})\n"
          "greedy() end); return 'went on'",
          "pcall(string.rep, 'x', 1 << 30); return 'went on'", "load(greedy); return 'went on'",
          "pcall(load, greedy); return 'went on'", "pcall(table.sort, {2, 1}, greedy); return 'went on'",
          "pcall(string.gsub, 'x', 'x', greedy); return 'went on'"})
        EXPECT_EQ(errorOf(greedy + source), "not enough memory") << source;
}

TEST_F(RunawayScriptTest, IsEndedWhenItNeedsTooMuchMemory)
{
    for (const char *source :
         {"local s = 'x'; while true do s = s .. s end", "return ('x'):rep(1 << 30)",
          "local t = {}; for i = 1, math.huge do t[i] = i end", "local t = {}; while true do t = {t} end",
          "return ('x'):rep(1 << 20):gsub('x', ('y'):rep(1000))"})
        EXPECT_EQ(errorOf(source), "not enough memory") << source;
}

TEST_F(RunawayScriptTest, UsesNoMoreMemoryThanItMay)
{
    NSAppleScript::Limits limits;
    limits.memory = 300'000;
    EXPECT_EQ(errorOf("return #('x'):rep(200000)", limits), "not enough memory");
    NSAppleScript script("return #('x'):rep(100000)");
    script.setLimits(limits);
    const auto result = script.executeAndReturnError(nullptr);
    EXPECT_EQ(result.value_or(NSAppleScript::Result()).stringValue(), "100000");
}

TEST_F(RunawayScriptTest, EndsWithASentenceWhereverMemoryRunsOut)
{
    int refused = 0;
    int done = 0;
    constexpr qint64 plenty = 64'000;
    for (qint64 memory = 0; memory <= plenty; memory += 100) {
        NSAppleScript::Limits limits;
        limits.memory = memory;
        NSAppleScript script(
            "local t = {}; for i = 1, 100 do t[i] = ('%d'):format(i):gsub('%d', 'x') end; return #t");
        script.setLimits(limits);
        QVariantMap errorInfo;
        if (const auto result = script.executeAndReturnError(&errorInfo)) {
            EXPECT_EQ(result->stringValue(), "100");
            ++done;
        } else {
            EXPECT_EQ(errorInfo.value(NSAppleScriptErrorMessage), "not enough memory") << memory;
            ++refused;
        }
    }
    EXPECT_GT(refused, 100); // in the making of the interpreter, in compiling and in running
    EXPECT_GT(done, 100);
}

TEST_F(RunawayScriptTest, IsEndedWhenItTakesTooLong)
{
    NSAppleScript::registerFunction("wait", [this](const QVariantList &) {
        clock->advance(1s);
        return QVariant();
    });
    NSAppleScript::Limits limits;
    limits.time = 10s;
    EXPECT_EQ(errorOf("while true do dozely.wait() end", limits), tooLong);
    NSAppleScript script("for i = 1, 9 do dozely.wait() end; return 'in time'");
    script.setLimits(limits);
    for (int i = 0; i < 2; ++i) { // each execution has its own time
        const auto result = script.executeAndReturnError(nullptr);
        EXPECT_EQ(result.value_or(NSAppleScript::Result()).stringValue(), "in time");
    }
}

TEST_F(RunawayScriptTest, IsEndedByTheClockOfTheMachine)
{
    Port<Clock>::current() = std::make_shared<FakeClock>();
    NSAppleScript::Limits limits;
    limits.instructions = std::numeric_limits<quint64>::max();
    limits.time = 0ms;
    EXPECT_EQ(errorOf("while true do end", limits), tooLong);
}

TEST_F(RunawayScriptTest, LeavesOtherScriptsTheirOwnBudget)
{
    NSAppleScript second("local n = 0; for i = 1, 1000 do n = n + i end; return n");
    second.setLimits(fewSteps());
    EXPECT_EQ(errorOf("while true do end", fewSteps()), tooManySteps);
    for (int i = 0; i < 300; ++i) {
        const auto result = second.executeAndReturnError(nullptr);
        ASSERT_EQ(result.value_or(NSAppleScript::Result()).stringValue(), "500500");
    }
}
