// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/NSAppleScript.h"

#include "DozelyKit/core/foundation/NSException.h"
#include "support/PrintTo.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <clocale>
#include <sys/stat.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{
/// The text of a script's result; what went wrong in brackets; "(no text)" for a result that has none.
std::string outcome(NSAppleScript &script)
{
    QVariantMap errorInfo;
    const auto result = script.executeAndReturnError(&errorInfo);
    if (!result)
        return "[" + errorInfo.value(NSAppleScriptErrorMessage).toString().toStdString() + "]";
    EXPECT_TRUE(errorInfo.isEmpty());
    return result->stringValue().isNull() ? "(no text)" : result->stringValue().toStdString();
}

std::string outcomeOf(const QString &source)
{
    NSAppleScript script(source);
    return outcome(script);
}

class ScriptFileTest : public testing::Test
{
protected:
    QString write(const QByteArray &content)
    {
        QFile file(folder.filePath("script.lua"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    static std::string outcomeOfFile(const QString &path)
    {
        QVariantMap errorInfo;
        const auto script = NSAppleScript::initWithContentsOfURL(QUrl::fromLocalFile(path), &errorInfo);
        if (!script)
            return "not loaded: " + errorInfo.value(NSAppleScriptErrorMessage).toString().toStdString();
        return outcome(*script);
    }
    QTemporaryDir folder;
};
} // namespace

TEST(NSAppleScript, CompilesWithoutRunningAnything)
{
    static int calls = 0;
    NSAppleScript::registerFunction("called", [](const QVariantList &) {
        ++calls;
        return QVariant();
    });
    NSAppleScript script("dozely.called()");
    EXPECT_FALSE(script.isCompiled());
    EXPECT_TRUE(script.compileAndReturnError(nullptr));
    EXPECT_TRUE(script.isCompiled());
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(script.executeAndReturnError(nullptr));
    EXPECT_EQ(calls, 1);
}

TEST(NSAppleScript, TellsWhyItDoesNotCompile)
{
    NSAppleScript script("x = = 1");
    QVariantMap errorInfo{{"old", 1}};
    EXPECT_FALSE(script.compileAndReturnError(&errorInfo));
    EXPECT_FALSE(script.isCompiled());
    EXPECT_EQ(errorInfo.keys(), QStringList("NSAppleScriptErrorMessage"));
    EXPECT_THAT(errorInfo.value(NSAppleScriptErrorMessage).toString().toStdString(),
                StartsWith("script:1: unexpected symbol near '='"));
    EXPECT_FALSE(script.compileAndReturnError(nullptr)); // nobody has to ask
    EXPECT_THAT(outcome(script), StartsWith("[script:1: unexpected symbol"));
}

TEST(NSAppleScript, GivesItsResultAsText)
{
    EXPECT_EQ(outcomeOf("return 'Zoë'"), "Zoë");
    EXPECT_EQ(outcomeOf("return ''"), "");
    EXPECT_EQ(outcomeOf("return 42"), "42");
    EXPECT_EQ(outcomeOf("return math.mininteger"), "-9223372036854775808");
    EXPECT_EQ(outcomeOf("return 1.5"), "1.5");
    EXPECT_EQ(outcomeOf("return 10 / 2"), "5.0");
    EXPECT_EQ(outcomeOf("return -1e300"), "-1e+300");
    EXPECT_EQ(outcomeOf("return 1/0"), "inf");
    EXPECT_EQ(outcomeOf("return 2 > 1"), "true");
    EXPECT_EQ(outcomeOf("return 'first', 'second'"), "first");
}

TEST(NSAppleScript, HasNoTextForNothingTablesAndFunctions)
{
    for (const char *source : {"", "return", "return nil", "return {1, 2}", "return tostring"})
        EXPECT_EQ(outcomeOf(source), "(no text)") << source;
}

TEST(NSAppleScript, TellsTheErrorOfTheLanguageWithItsLine)
{
    EXPECT_EQ(outcomeOf("local x\n\nreturn x.y"), "[script:3: attempt to index a nil value (local 'x')]");
    EXPECT_EQ(outcomeOf("error('broken')"), "[script:1: broken]");
    EXPECT_EQ(outcomeOf("error('broken', 0)"), "[broken]");
    EXPECT_EQ(outcomeOf("error(7)"), "[7]");
    EXPECT_EQ(outcomeOf("error({})"), "[The script raised an error without a text.]");
    EXPECT_EQ(outcomeOf("error()"), "[The script raised an error without a text.]");
}

TEST(NSAppleScript, KeepsItsGlobalVariablesFromOneExecutionToTheNext)
{
    NSAppleScript script("count = (count or 0) + 1; return count");
    EXPECT_EQ(outcome(script), "1");
    EXPECT_EQ(outcome(script), "2");
    NSAppleScript other("return count");
    EXPECT_EQ(outcome(other), "(no text)");
}

TEST(NSAppleScript, CanBeRunAgainAfterAnError)
{
    NSAppleScript script("if not once then once = true; error('first time') end; return 'fine'");
    EXPECT_EQ(outcome(script), "[script:1: first time]");
    EXPECT_EQ(outcome(script), "fine");
}

TEST(NSAppleScript, ReachesNoFilesProgramsOrOtherCode)
{
    for (const char *name : {"io", "require", "package", "debug", "coroutine", "dofile", "loadfile", "print",
                             "warn", "collectgarbage", "os.execute", "os.exit", "os.getenv", "os.remove",
                             "os.rename", "os.tmpname", "os.setlocale", "string.dump"})
        EXPECT_EQ(outcomeOf(QString("return type(%1)").arg(name)), "nil") << name;
}

TEST(NSAppleScript, HasTheHarmlessPartOfTheLibrary)
{
    EXPECT_EQ(outcomeOf("local t = {3, 1, 2}; table.sort(t); return table.concat(t, ' ')"), "1 2 3");
    EXPECT_EQ(outcomeOf("return ('%05.1f|%s'):format(3.14159, 'x')"), "003.1|x");
    EXPECT_EQ(outcomeOf("return math.floor(2.7) .. utf8.len('Zoë') .. select('#', table.unpack({1, 2}))"),
              "232");
    EXPECT_EQ(
        outcomeOf("local t = {}; table.insert(t, 'b'); table.insert(t, 1, 'a'); table.move(t, 1, 2, 3)\n"
                  "table.remove(t, 1); return table.concat(t)"),
        "bab");
    EXPECT_EQ(outcomeOf("return os.date('!%Y-%m-%d', os.time{year=2026, month=3, day=14, hour=12})"),
              "2026-03-14");
    EXPECT_EQ(outcomeOf("return select(2, pcall(error, 'caught', 0))"), "caught");
    EXPECT_EQ(outcomeOf("return load('return 6 * 7')()"), "42");
    EXPECT_EQ(outcomeOf("return load('return x', 'name', 't', {})"), "(no text)");
    EXPECT_EQ(
        outcomeOf("local t = setmetatable({}, {__index = function(_, k) return k .. '!' end}); return t.a"),
        "a!");
}

TEST(NSAppleScript, CatchesErrorsAsTheLanguageDoes)
{
    const char show[] =
        "local function show(...) local t = table.pack(...); for i = 1, t.n do t[i] = tostring(t[i]) end "
        "return table.concat(t, ' ') end return show(";
    const auto shown = [&show](const char *expression) {
        return outcomeOf(QString(show) + expression + ")");
    };
    EXPECT_EQ(shown("pcall(function(...) return ... end, 1, nil, 3)"), "true 1 nil 3");
    EXPECT_EQ(shown("pcall(error, 'x', 0)"), "false x");
    EXPECT_EQ(shown("pcall(error)"), "false nil");
    EXPECT_EQ(shown("pcall(7)"), "false attempt to call a number value");
    EXPECT_EQ(shown("pcall(function() end)"), "true");
    EXPECT_EQ(shown("xpcall(function(...) return ... end, tostring, 1, nil, 3)"), "true 1 nil 3");
    EXPECT_EQ(shown("xpcall(error, function(e) return 'handled', e end, 'x', 0)"), "false handled x");
    EXPECT_EQ(shown("xpcall(function() end, tostring)"), "true");
    EXPECT_THAT(outcomeOf("pcall()"), HasSubstr("bad argument #1 to 'pcall' (value expected)"));
    EXPECT_THAT(outcomeOf("xpcall(error, 7)"), HasSubstr("bad argument #2 to 'xpcall' (function expected"));
    EXPECT_EQ(outcomeOf("xpcall(error, function(e) error('in the handler', 0) end)"), "[in the handler]");
}

TEST(NSAppleScript, LoadsTextsAsTheLanguageDoes)
{
    EXPECT_EQ(outcomeOf("return load('return x', 'name', 't', {x = 'mine'})()"), "mine");
    EXPECT_EQ(outcomeOf("return load('return x', 'name', nil, {x = 'mine'})()"), "mine");
    EXPECT_EQ(outcomeOf("x = 'global'; return load('return x', 'name')()"), "global");
    EXPECT_EQ(outcomeOf("local p, n = {'return ', '6 ', '* 7'}, 0\n"
                        "return load(function() n = n + 1; return p[n] end)()"),
              "42");
    EXPECT_EQ(outcomeOf("return select(2, load('x = ='))"),
              "[string \"x = =\"]:1: unexpected symbol near '='");
    EXPECT_EQ(outcomeOf("return select(2, load('x = =', '=mine'))"), "mine:1: unexpected symbol near '='");
    EXPECT_EQ(outcomeOf("return select(2, load(function() error('no more', 0) end))"), "no more");
    EXPECT_THAT(outcomeOf("return select(2, load('x = 1', 'name', 'b'))"),
                HasSubstr("attempt to load a text chunk"));
    EXPECT_THAT(outcomeOf("load(7 == 7)"), HasSubstr("bad argument #1 to 'load'"));
}

TEST(NSAppleScript, KeepsAProtectedMetatableAndRefusesReplacementsThatAreNoText)
{
    EXPECT_THAT(outcomeOf("local t = setmetatable({}, {__metatable = 'mine'}); setmetatable(t, {})"),
                HasSubstr("cannot change a protected metatable"));
    EXPECT_THAT(outcomeOf("setmetatable({}, {__gc = function() end})"),
                HasSubstr("a metatable with \"__gc\" is not accepted"));
    EXPECT_THAT(outcomeOf("setmetatable({}, 7)"), HasSubstr("bad argument #2 to 'setmetatable'"));
    EXPECT_THAT(outcomeOf("string.gsub('ab', 'a', function() return {} end)"),
                HasSubstr("invalid replacement value (a table)"));
    EXPECT_THAT(outcomeOf("string.gsub('ab', 'b', {b = true})"),
                HasSubstr("invalid replacement value (a boolean)"));
    EXPECT_EQ(outcomeOf("return (string.gsub('ab', '.', {a = 1, b = false}))"), "1b");
}

TEST(NSAppleScript, SaysWhichFunctionOfTheLibraryWasCalledAmiss)
{
    EXPECT_THAT(outcomeOf("string.rep()"), HasSubstr("bad argument #1 to 'rep'"));
    EXPECT_THAT(outcomeOf("table.concat(7)"), HasSubstr("bad argument #1 to 'concat'"));
    EXPECT_THAT(outcomeOf("table.sort({1}, 7)"), HasSubstr("bad argument #2 to 'sort'"));
}

TEST(NSAppleScript, RefusesCompiledCodeWhereverItComesFrom)
{
    for (const char *mode : {"nil", "'b'", "'bt'", "'t'"}) {
        EXPECT_THAT(outcomeOf(QString("return select(2, load('\\27Lua\\x54\\0', 'x', %1))").arg(mode)),
                    HasSubstr("attempt to load a binary chunk"));
        EXPECT_THAT(outcomeOf(QString("local n = 0; return select(2, load(function() n = n + 1\n"
                                      "return ({'\\27', 'Lua\\x54\\0'})[n] end, 'x', %1))")
                                  .arg(mode)),
                    HasSubstr("attempt to load a binary chunk"));
    }
    EXPECT_THAT(outcomeOf("\x1bLua"), HasSubstr("attempt to load a binary chunk"));
    EXPECT_THAT(outcomeOf("return select(2, load('\\27Lua\\x54\\0'))"),
                HasSubstr("attempt to load a binary chunk"));
}

TEST(NSAppleScript, RefusesASourceThatIsTooLong)
{
    NSAppleScript script(QString(NSAppleScript::maximumSourceSize + 1, ' '));
    EXPECT_EQ(outcome(script), "[The script is larger than 1048576 bytes.]");
    NSAppleScript longest(QString(NSAppleScript::maximumSourceSize, ' '));
    EXPECT_EQ(outcome(longest), "(no text)");
}

TEST(NSAppleScript, SurvivesSourceThatIsNestedWithoutAnEnd)
{
    constexpr int levels = 100'000;
    EXPECT_THAT(outcomeOf("return " + QString("(").repeated(levels) + "1" + QString(")").repeated(levels)),
                HasSubstr("overflow"));
    EXPECT_THAT(outcomeOf("return " + QString("{").repeated(levels)), HasSubstr("overflow"));
    EXPECT_THAT(outcomeOf("local function f() return 1 + f() end; return f()"),
                testing::AnyOf(HasSubstr("overflow"), HasSubstr("not enough memory")));
}

TEST(NSAppleScript, MeansTheSameInEveryLocale)
{
    // A locale with a decimal comma; made known to the process as an application does for its user.
    const char *const former = std::setlocale(LC_ALL, nullptr);
    const std::string kept = former ? former : "C";
    const bool hasComma = std::setlocale(LC_ALL, "de_DE.UTF-8") || std::setlocale(LC_ALL, "fr_FR.UTF-8");
    EXPECT_EQ(
        outcomeOf("return tostring(1.5) .. ' ' .. string.format('%.2f', 2.5) .. ' ' .. tonumber('3.5')"),
        "1.5 2.50 3.5");
    if (hasComma) {
        // The functions of a host run in the locale of the process.
        NSAppleScript::registerFunction("point", [](const QVariantList &) {
            return QVariant(QString(std::localeconv()->decimal_point));
        });
        EXPECT_EQ(outcomeOf("return dozely.point()"), ",");
    }
    std::setlocale(LC_ALL, kept.c_str());
}

TEST(NSAppleScript, HandsValuesToRegisteredFunctionsAndBack)
{
    static QVariantList received;
    NSAppleScript::registerFunction("take", [](const QVariantList &arguments) {
        received = arguments;
        return QVariant(QVariantMap{{"list", QVariantList{1, "two", true}}, {"real", 0.5}});
    });
    EXPECT_EQ(outcomeOf("local r = dozely.take('Zoë', 7, 1.5, false, nil, {'a', {}}, {key = {1}})\n"
                        "return r.list[1] .. r.list[2] .. tostring(r.list[3]) .. r.real"),
              "1twotrue0.5");
    const QVariantList expected{"Zoë",
                                qlonglong(7),
                                1.5,
                                false,
                                QVariant(),
                                QVariantList{"a", QVariantList{}},
                                QVariantMap{{"key", QVariantList{qlonglong(1)}}}};
    EXPECT_EQ(received, expected);
}

TEST(NSAppleScript, GetsDatesAsTextsAndNothingThatIsTooDeep)
{
    NSAppleScript::registerFunction("when", [](const QVariantList &) {
        return QVariant(QDateTime({2026, 3, 14}, {6, 55}, Qt::UTC));
    });
    EXPECT_EQ(outcomeOf("return dozely.when()"), "2026-03-14T06:55:00Z");
    NSAppleScript::registerFunction("nest", [](const QVariantList &arguments) {
        QVariant value("inmost");
        for (qint64 depth = 0; depth < arguments.value(0).toLongLong(); ++depth)
            value = QVariantList{value};
        return value;
    });
    const char unpacked[] =
        "local v, n = dozely.nest(%1), 0; while type(v) == 'table' do v, n = v[1], n + 1 end\n"
        "return v .. n";
    EXPECT_EQ(outcomeOf(QString(unpacked).arg(20)), "inmost20");
    EXPECT_THAT(outcomeOf(QString(unpacked).arg(2000)), HasSubstr("a result is too deep"));
}

TEST(NSAppleScript, TurnsTheExceptionOfAFunctionIntoAnErrorOfTheScript)
{
    NSAppleScript::registerFunction("refuse", [](const QVariantList &arguments) -> QVariant {
        if (arguments.isEmpty())
            throw NSException(NSInvalidArgumentException, "no, Zoë");
        throw std::runtime_error("100% no");
    });
    EXPECT_EQ(outcomeOf("dozely.refuse()"), "[script:1: no, Zoë]");
    EXPECT_EQ(outcomeOf("dozely.refuse(1)"), "[script:1: 100% no]");
    EXPECT_EQ(outcomeOf("return tostring(pcall(dozely.refuse))"), "false");
}

TEST(NSAppleScript, ReplacesAFunctionForTheScriptsToCome)
{
    NSAppleScript::registerFunction("answer", [](const QVariantList &) { return QVariant("old"); });
    NSAppleScript before("return dozely.answer()");
    ASSERT_TRUE(before.compileAndReturnError(nullptr));
    NSAppleScript::registerFunction("answer", [](const QVariantList &) { return QVariant("new"); });
    EXPECT_EQ(outcome(before), "old");
    EXPECT_EQ(outcomeOf("return dozely.answer()"), "new");
}

TEST(NSAppleScript, RefusesValuesThatCannotBeHandedOver)
{
    NSAppleScript::registerFunction("take", [](const QVariantList &) { return QVariant(); });
    EXPECT_THAT(outcomeOf("dozely.take(print or tostring)"), HasSubstr("a function cannot be handed over"));
    EXPECT_THAT(outcomeOf("local t = {}; t[1] = t; dozely.take(t)"), HasSubstr("too large or too deep"));
    for (const char *level : {"{t}", "{key = t}"}) {
        const QString nesting =
            QString("local t = 1; for i = 1, %2 do t = %1 end; dozely.take(t); return 'fine'").arg(level);
        EXPECT_EQ(outcomeOf(nesting.arg(20)), "fine") << level;
        EXPECT_THAT(outcomeOf(nesting.arg(21)), HasSubstr("too large or too deep")) << level;
    }
    EXPECT_THAT(outcomeOf("local t = {1}; for i = 1, 19 do t = {t, t} end; dozely.take(t)"),
                HasSubstr("too large or too deep"));
    EXPECT_THAT(outcomeOf("dozely.take({1, 2, key = 3})"),
                HasSubstr("needs the keys 1 to n, or texts as keys"));
    EXPECT_THAT(outcomeOf("dozely.take({[7] = 1})"), HasSubstr("needs the keys 1 to n, or texts as keys"));
    EXPECT_THAT(outcomeOf("dozely.take({[1.5] = 1})"), HasSubstr("needs the keys 1 to n, or texts as keys"));
    EXPECT_THAT(outcomeOf("local s = ('x'):rep(600000); dozely.take({s, s})"), HasSubstr("too long"));
    EXPECT_EQ(outcomeOf("dozely.take(('x'):rep(1 << 20)); return 'fine'"), "fine");
}

TEST_F(ScriptFileTest, RunsAFile)
{
    EXPECT_EQ(outcomeOfFile(write("return 'from a file'")), "from a file");
    EXPECT_EQ(outcomeOfFile(write("\xef\xbb\xbfreturn 'after a mark'")), "after a mark");
    EXPECT_EQ(outcomeOfFile(write("")), "(no text)");
    EXPECT_EQ(outcomeOfFile(write("# only a comment")), "(no text)");
}

TEST_F(ScriptFileTest, PassesOverAFirstLineForTheSystemButCountsIt)
{
    EXPECT_EQ(outcomeOfFile(write("#!/usr/bin/osascript\nreturn 1")), "1");
    EXPECT_EQ(outcomeOfFile(write("#!/usr/bin/osascript\nerror('here')")), "[script.lua:2: here]");
}

TEST_F(ScriptFileTest, IsNotLoadedWhenItCannotBeRead)
{
    EXPECT_THAT(outcomeOfFile(folder.filePath("missing")), StartsWith("not loaded: Cannot read"));
    EXPECT_THAT(outcomeOfFile(folder.path()), HasSubstr("it is not a regular file"));
    EXPECT_THAT(outcomeOfFile(""), HasSubstr("names no local file"));
    ASSERT_EQ(::mkfifo(qPrintable(folder.filePath("pipe")), 0600), 0);
    EXPECT_THAT(outcomeOfFile(folder.filePath("pipe")), HasSubstr("it is not a regular file"));
    ASSERT_TRUE(QFile::link("nowhere", folder.filePath("dangling")));
    EXPECT_THAT(outcomeOfFile(folder.filePath("dangling")), StartsWith("not loaded: Cannot read"));
    QVariantMap errorInfo;
    EXPECT_FALSE(NSAppleScript::initWithContentsOfURL(QUrl("https://example.org/x"), &errorInfo));
    EXPECT_FALSE(NSAppleScript::initWithContentsOfURL(QUrl("https://example.org/x"), nullptr));
    EXPECT_THAT(errorInfo.value(NSAppleScriptErrorMessage).toString().toStdString(),
                HasSubstr("no local file"));
}

TEST_F(ScriptFileTest, IsNotLoadedWhenItIsTooLargeOrNoText)
{
    EXPECT_THAT(outcomeOfFile(write(QByteArray(NSAppleScript::maximumSourceSize + 1, ' '))),
                HasSubstr("it is larger than 1048576 bytes"));
    EXPECT_THAT(outcomeOfFile(write("return '\xff'")), HasSubstr("It is not a text in UTF-8."));
    EXPECT_THAT(outcomeOfFile(write("return '\xc3")), HasSubstr("It is not a text in UTF-8."));
}

TEST_F(ScriptFileTest, IsNotLoadedWhenItIsCompiledCode)
{
    EXPECT_THAT(outcomeOfFile(write("\x1bLuaT")), HasSubstr("Compiled code is not accepted."));
    // Not behind a first line or a mark either.
    EXPECT_THAT(outcomeOfFile(write("\xef\xbb\xbf\x1bLuaT")), HasSubstr("Compiled code is not accepted."));
    EXPECT_THAT(outcomeOfFile(write("#!\n\x1bLuaT")), StartsWith("[script.lua:2: unexpected symbol"));
}
