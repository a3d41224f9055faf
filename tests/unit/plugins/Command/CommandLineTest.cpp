// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandLine.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace
{
QString faultOf(const QVariantMap &parameters)
{
    const auto line = CommandLine::fromParameters(parameters);
    return line ? QString("none") : line.error().text;
}
} // namespace

TEST(CommandLine, TakesAProgramWithoutArguments)
{
    const auto line = CommandLine::fromParameters({{"Program", "/usr/bin/true"}});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->program, "/usr/bin/true");
    EXPECT_TRUE(line->arguments.isEmpty());
}

TEST(CommandLine, KeepsArgumentsInTheirOrderEmptyOnesIncluded)
{
    const auto line = CommandLine::fromParameters(
        {{"Program", "/usr/bin/true"}, {"Arguments", QVariantList{"b", "", "a"}}});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->arguments, QStringList({"b", "", "a"}));
}

TEST(CommandLine, NamesAProgramThatIsMissing)
{
    EXPECT_EQ(faultOf({}), "the parameter \"Program\" is missing");
}

TEST(CommandLine, NamesAProgramThatIsNoString)
{
    EXPECT_EQ(faultOf({{"Program", 7}}), "the parameter \"Program\" is not a string");
}

TEST(CommandLine, RefusesARelativeOrEmptyProgram)
{
    for (const char *path : {"touch", "./touch", ""})
        EXPECT_EQ(faultOf({{"Program", path}}), "the parameter \"Program\" is not an absolute path");
}

TEST(CommandLine, RefusesNulCharactersThatWouldCutATextShort)
{
    EXPECT_EQ(faultOf({{"Program", QString("/bin/a") + QChar(0) + "b"}}),
              "the parameter \"Program\" holds a NUL character");
    EXPECT_EQ(faultOf({{"Program", "/bin/a"}, {"Arguments", QVariantList{"x", QString(QChar(0))}}}),
              "entry 2 of the parameter \"Arguments\" holds a NUL character");
}

TEST(CommandLine, RefusesArgumentsThatAreNoList)
{
    EXPECT_EQ(faultOf({{"Program", "/bin/a"}, {"Arguments", "-l /tmp"}}),
              "the parameter \"Arguments\" is not a list");
}

TEST(CommandLine, NamesTheFirstArgumentThatIsNoString)
{
    EXPECT_EQ(faultOf({{"Program", "/bin/a"}, {"Arguments", QVariantList{"x", 5, true}}}),
              "entry 2 of the parameter \"Arguments\" is not a string");
}
