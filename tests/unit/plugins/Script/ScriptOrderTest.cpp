// SPDX-License-Identifier: MIT
#include "plugins/Script/ScriptOrder.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

namespace
{
QString faultOf(const QVariantMap &parameters)
{
    const auto order = ScriptOrder::fromParameters(parameters);
    return order ? QString() : order.error().text;
}
QStringList argumentsFor(const QVariantMap &parameters)
{
    const auto order = ScriptOrder::fromParameters(parameters);
    EXPECT_TRUE(order) << qPrintable(order.error().text);
    return order ? order->arguments : QStringList();
}
} // namespace

TEST(ScriptOrder, TakesATextOrAFile)
{
    EXPECT_EQ(argumentsFor({{"Script", "return 1"}, {"Name", "x"}}), QStringList({"-e", "return 1"}));
    EXPECT_EQ(argumentsFor({{"Script", ""}}), QStringList({"-e", ""}));
    EXPECT_EQ(argumentsFor({{"Script File", "/home/zoe/my script.lua"}}),
              QStringList("/home/zoe/my script.lua"));
}

TEST(ScriptOrder, NeedsExactlyOneOfTheTwo)
{
    EXPECT_EQ(faultOf({}), "there is neither a parameter \"Script\" nor a parameter \"Script File\"");
    EXPECT_EQ(faultOf({{"Script", "x"}, {"Script File", "/x"}}),
              "there are both parameters \"Script\" and \"Script File\"");
}

TEST(ScriptOrder, NamesAParameterThatIsWrong)
{
    EXPECT_EQ(faultOf({{"Script", 7}}), "the parameter \"Script\" is not a string");
    EXPECT_EQ(faultOf({{"Script", QString("a") + QChar(0)}}),
              "the parameter \"Script\" holds a NUL character");
    EXPECT_EQ(faultOf({{"Script File", "relative.lua"}}),
              "the parameter \"Script File\" is not an absolute path");
    EXPECT_EQ(faultOf({{"Script File", "-e"}}), "the parameter \"Script File\" is not an absolute path");
}

TEST(ScriptOrder, SendsALongScriptIntoAFile)
{
    constexpr int longest = 131'071;
    EXPECT_EQ(argumentsFor({{"Script", QString(longest, ' ')}}).size(), 2);
    EXPECT_EQ(faultOf({{"Script", QString(longest + 1, ' ')}}),
              "the parameter \"Script\" is too long; put the script into a file");
}
