// SPDX-License-Identifier: MIT
#include "DozelyKit/update/UpdateAnswer_p.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
QString refusalOf(const QByteArray &data)
{
    const auto answer = UpdateAnswer::parse(data);
    return answer ? QString("accepted") : answer.error().text;
}

/// An object with lists in it, so many levels in all.
QByteArray nested(int levels)
{
    return "{\"a\":" + QByteArray(levels - 1, '[') + QByteArray(levels - 1, ']') + "}";
}
} // namespace

TEST(UpdateAnswer, IsAnObject)
{
    const auto answer =
        UpdateAnswer::parse(R"( {"a": 1, "b": "x", "c": [true, null], "d": 9007199254740993} )");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->value("a"), QVariant(1));
    EXPECT_EQ(answer->value("b"), QVariant("x"));
    EXPECT_EQ(answer->value("d").toLongLong(), 9007199254740993);
    EXPECT_TRUE(UpdateAnswer::parse("{}"));
}

TEST(UpdateAnswer, IsNothingElse)
{
    EXPECT_EQ(refusalOf("[1]"), "is not a JSON object");
    for (const char *text :
         {"", " ", "42", "\"text\"", "null", "{", "{\"a\":1", "{\"a\":1}x", "<html></html>", "{'a':1}"})
        EXPECT_TRUE(refusalOf(text).startsWith("is not JSON: ")) << text;
    EXPECT_TRUE(refusalOf(QByteArray("{\"a\":\"\xff\"}")).startsWith("is not JSON: "));
}

TEST(UpdateAnswer, IsAtMostOneMebibyte)
{
    QByteArray data = "{\"a\":1}";
    data += QByteArray((1 << 20) - data.size(), ' ');
    EXPECT_EQ(refusalOf(data), "accepted");
    EXPECT_EQ(refusalOf(data + ' '), "is larger than 1048576 bytes");
}

TEST(UpdateAnswer, IsAtMost64LevelsDeep)
{
    EXPECT_EQ(refusalOf(nested(64)), "accepted");
    EXPECT_EQ(refusalOf(nested(65)), "is nested deeper than 64 levels");
    EXPECT_EQ(refusalOf(nested(100'000)), "is nested deeper than 64 levels");
    EXPECT_EQ(refusalOf(QByteArray(100'000, '[')), "is nested deeper than 64 levels");
    EXPECT_EQ(refusalOf("{\"a\":" + QByteArray("{\"a\":").repeated(100'000)),
              "is nested deeper than 64 levels");
}

TEST(UpdateAnswer, MayHaveBracketsInItsTexts)
{
    const QByteArray many(100, '[');
    EXPECT_EQ(refusalOf("{\"a\":\"" + many + "\"}"), "accepted");
    EXPECT_EQ(refusalOf("{\"a\":\"\\\"" + many + "\\\\\"}"), "accepted");
    // A text that ends before the brackets does not hide them.
    EXPECT_EQ(refusalOf("{\"a\":\"\\\\\"," + many), "is nested deeper than 64 levels");
    EXPECT_EQ(refusalOf("[],[],[]," + QByteArray("[],").repeated(100)).left(12), "is not JSON:");
}

TEST(UpdateAnswer, TakesTheLastOfSeveralEqualKeys)
{
    const auto answer = UpdateAnswer::parse(R"({"Latest Version Number": 1, "Latest Version Number": 42})");
    ASSERT_TRUE(answer);
    EXPECT_TRUE(UpdateAnswer::isNewer(*answer, 41));
}
