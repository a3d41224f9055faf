// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/NSAppleScript.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

#include <lua.hpp>
#include <random>

// The functions that match patterns against those that the language comes with.
namespace
{
/// Writes what the calls of the four functions give, errors included, as one text.
constexpr char report[] = R"(
local out = {}
local function show(name, ...)
    local parts = {name}
    for i = 1, select('#', ...) do
        local v = select(i, ...)
        -- where in the script an error was raised differs
        parts[#parts + 1] = type(v) == 'string' and ('%q'):format(v) or tostring(v)
    end
    out[#out + 1] = table.concat(parts, ' ')
end
local function try(name, f)
    local results = table.pack(pcall(f))
    if not results[1] then
        local message = results[2]
        local at = string.find(message, ': ', 1, true)
        if string.find(message, 'calling', 1, true) or string.find(message, 'bad argument', 1, true) then
            message = 'bad argument'
        elseif at then
            message = string.sub(message, at + 2)
        end
        show(name, 'error', message)
    else
        show(name, table.unpack(results, 2, results.n))
    end
end
for _, c in ipairs(cases) do
    local s, p, r = c[1], c[2], c[3]
    try('find', function() return string.find(s, p) end)
    try('find2', function() return string.find(s, p, -2) end)
    try('find3', function() return string.find(s, p, 3) end)
    try('find9', function() return string.find(s, p, 99) end)
    try('plain', function() return string.find(s, p, 1, true) end)
    try('match', function() return string.match(s, p) end)
    try('match2', function() return string.match(s, p, 2) end)
    try('gmatch', function()
        local n, all = 0, {}
        for a, b in string.gmatch(s, p) do n = n + 1; all[#all + 1] = tostring(a) .. '/' .. tostring(b) end
        return n, table.concat(all, ',')
    end)
    try('gmatch3', function()
        local n = 0
        for _ in string.gmatch(s, p, 3) do n = n + 1 end
        return n
    end)
    try('gsub', function() return string.gsub(s, p, r) end)
    try('gsub2', function() return string.gsub(s, p, r, 2) end)
    try('gsubt', function() return string.gsub(s, p, {a = 'A', b = 7, ['1'] = false}) end)
    try('gsubf', function() return string.gsub(s, p, function(a, b) return b or (a ~= 'b' and a) end) end)
end
return table.concat(out, '\n')
)";

using Case = std::array<std::string, 3>; // text, pattern, replacement

std::string quoted(const std::string &bytes)
{
    std::string text = "'";
    for (const char c : bytes) {
        char escape[5];
        std::snprintf(escape, sizeof escape, "\\%03u", static_cast<unsigned>(static_cast<unsigned char>(c)));
        text += escape;
    }
    return text + "'";
}

QString scriptFor(const std::vector<Case> &cases)
{
    std::string text = "local cases = {";
    for (const Case &one : cases)
        text += "{" + quoted(one[0]) + "," + quoted(one[1]) + "," + quoted(one[2]) + "},";
    return QString::fromStdString(text + "}\n" + report);
}

/// What the language itself gives.
QString byTheLanguage(const QString &source)
{
    lua_State *lua = luaL_newstate();
    luaL_openlibs(lua);
    const QByteArray text = source.toUtf8();
    QString result;
    if (luaL_loadbuffer(lua, text.constData(), static_cast<std::size_t>(text.size()), "=script") != LUA_OK ||
        lua_pcall(lua, 0, 1, 0) != LUA_OK)
        ADD_FAILURE() << lua_tostring(lua, -1);
    std::size_t size = 0;
    const char *bytes = lua_tolstring(lua, -1, &size);
    result = QString::fromUtf8(bytes, static_cast<qsizetype>(size));
    lua_close(lua);
    return result;
}

void expectSameAsTheLanguage(const std::vector<Case> &cases)
{
    const QString source = scriptFor(cases);
    NSAppleScript script(source);
    QVariantMap errorInfo;
    const auto result = script.executeAndReturnError(&errorInfo);
    ASSERT_TRUE(result) << qPrintable(errorInfo.value(NSAppleScriptErrorMessage).toString());
    const QStringList ours = result->stringValue().split('\n');
    const QStringList theirs = byTheLanguage(source).split('\n');
    ASSERT_EQ(ours.size(), theirs.size());
    const auto each = static_cast<std::size_t>(ours.size()) / cases.size();
    for (qsizetype i = 0; i < ours.size(); ++i) {
        const Case &one = cases[static_cast<std::size_t>(i) / each];
        ASSERT_EQ(ours[i], theirs[i])
            << "text '" << one[0] << "' pattern '" << one[1] << "' by '" << one[2] << "'";
    }
}
} // namespace

TEST(ScriptPattern, MatchesEachKindOfItemAsTheLanguageDoes)
{
    const std::string all = [] {
        std::string bytes;
        for (int c = 0; c < 256; ++c)
            bytes += static_cast<char>(c);
        return bytes;
    }();
    std::vector<Case> cases;
    for (const char *pattern :
         {"%a",   "%A",     "%c",    "%C",     "%d",    "%D",      "%g",     "%G",    "%l",    "%L",
          "%p",   "%P",     "%s",    "%S",     "%u",    "%U",      "%w",     "%W",    "%x",    "%X",
          ".",    "%.",     "[%a]",  "[^%a]",  "[a-f]", "[^a-f]",  "[]x]",   "[^]x]", "[%]x]", "[a-]",
          "[-a]", "[%a-z]", "[%w_]", "[a%-z]", "%z",    "[%d%u]+", "[!-~]*", "%%",    "[[:]"})
        cases.push_back({all, pattern, "<%0>"});
    expectSameAsTheLanguage(cases);
}

TEST(ScriptPattern, MatchesKnownPatternsAsTheLanguageDoes)
{
    expectSameAsTheLanguage({
        {"hello world", "(o)(.)", "%2%1"},
        {"key = value", "^(%w+)%s*=%s*(%w+)$", "%2=%1"},
        {"  trim me  ", "^%s*(.-)%s*$", "%1"},
        {"THE (quick) fox", "%((%a+)%)", "%1"},
        {"f(a(b)c)d)", "%b()", "[]"},
        {"THE (quick) fox", "%f[%a]%a+%f[%A]", "<%0>"},
        {"\"it's\" 'x'", "([\"'])(.-)%1", "%2"},
        {"abc", "", "-"},
        {"abc", "()", "%1"},
        {"abc", "()b()", "%1%2"},
        {"", "", "x"},
        {"", "^$", "x"},
        {"aaa", "a-", "x"},
        {"aaa", "a*", "x"},
        {"aaab", "^a", "x"},
        {"a$b^c", "$b^", "x"},
        {"abcabc", "(a)(b)(c)%1%2%3", "%0"},
        {"a\0b\0c", "%z", "x"},
        {"x", "x", "%%%0%1"},
        {"one two", "%a+", "%"},
        {"one two", "%a+", "%x"},
        {"one two", "%a+", "%2"},
        {"abc", "b", "a"},
        {"banana", "a", "b"},
    });
}

TEST(ScriptPattern, RefusesWhatIsNoPatternAsTheLanguageDoes)
{
    std::vector<Case> cases;
    for (const char *pattern :
         {"%",    "[",  "[a",  "[^", "[]",  "[^]", "[%", "[%]", "(",     ")",    "(()", "a)",  "%1",
          "(%1)", "%b", "%bx", "%f", "%fa", "%f[", "%9", "%0",  "(a)%2", "()%1", "[a-", "[a-%"})
        cases.push_back({"abc", pattern, "x"});
    cases.push_back({"abc", std::string("(").append("()").append(64, '('), "x"});
    std::string many;
    for (int i = 0; i < 33; ++i)
        many += "()";
    cases.push_back({"abc", many, "x"});
    expectSameAsTheLanguage(cases);
}

TEST(ScriptPattern, MatchesThousandsOfRandomPatternsAsTheLanguageDoes)
{
    std::mt19937 random(20260314);
    const auto pick = [&random](const std::vector<std::string> &from) {
        return from[std::uniform_int_distribution<std::size_t>(0, from.size() - 1)(random)];
    };
    const std::vector<std::string> pieces{
        "a", "b", ".", "%a",    "%d",   "[ab]", "[^a]", "(",   ")",    "()",  "%1",  "*", "+",  "-",
        "?", "^", "$", "%f[a]", "%b()", "%",    "1",    "[a-", "a-z]", "%s*", "%w+", "-", "%(", "%2"};
    const std::vector<std::string> letters{"a", "b", "1", " ", "(", ")", "-", "$", "aab"};
    const std::vector<std::string> replacements{"", "x", "%0", "<%1>", "%2", "%%", "%1%0"};
    std::vector<Case> cases;
    for (int i = 0; i < 6000; ++i) {
        Case one;
        for (int n = std::uniform_int_distribution<int>(0, 10)(random); n > 0; --n)
            one[0] += pick(letters);
        for (int n = std::uniform_int_distribution<int>(0, 6)(random); n > 0; --n)
            one[1] += pick(pieces);
        one[2] = pick(replacements);
        cases.push_back(one);
        if (cases.size() == 500) {
            expectSameAsTheLanguage(cases);
            cases.clear();
        }
    }
}

TEST(ScriptPattern, StaysShallowOnDeepPatterns)
{
    NSAppleScript script("return ('a'):rep(10000):match(('a?'):rep(10000))");
    QVariantMap errorInfo;
    EXPECT_FALSE(script.executeAndReturnError(&errorInfo));
    EXPECT_EQ(errorInfo.value(NSAppleScriptErrorMessage).toString(), "script:1: pattern too complex");
}
