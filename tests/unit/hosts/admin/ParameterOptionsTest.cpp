// SPDX-License-Identifier: MIT
#include "hosts/admin/ParameterOptions.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"

#include <gtest/gtest.h>

namespace
{
QVariantMap read(const QStringList &arguments)
{
    AdminOptions options;
    EXPECT_FALSE(options.parse(QStringList{"dozely-admin", "add", "A"} + arguments));
    return ParameterOptions::read(options);
}

QVariant valueOf(const QString &option)
{
    return read({"--parameter", option}).value("Key");
}

QString refusal(const QStringList &arguments)
{
    try {
        read(arguments);
    } catch (const AdminError &error) {
        EXPECT_EQ(error.status(), ExitStatus::BadUsage);
        return error.sentence();
    }
    return "not refused";
}
} // namespace

TEST(ParameterOptions, TakesIntegersNumbersAndBooleansAsSuch)
{
    EXPECT_EQ(valueOf("Key=15"), QVariant(15LL));
    EXPECT_EQ(valueOf("Key=-9223372036854775808"), QVariant(std::numeric_limits<qint64>::min()));
    EXPECT_EQ(valueOf("Key=1.50"), QVariant(1.5));
    EXPECT_EQ(valueOf("Key=true"), QVariant(true));
    EXPECT_EQ(valueOf("Key=false"), QVariant(false));
}

TEST(ParameterOptions, KeepsATextThatANumberWouldNotPrintAgain)
{
    for (const char *text :
         {"007", "+5", " 5", "5 ", "1e3", "0x10", "9223372036854775808", "True", "nan", ".5", ""})
        EXPECT_EQ(valueOf(QString("Key=%1").arg(text)), QVariant(QString(text)));
}

TEST(ParameterOptions, TakesTheTypeThatIsNamed)
{
    EXPECT_EQ(valueOf("Key:string=15"), QVariant("15"));
    EXPECT_EQ(valueOf("Key:integer=007"), QVariant(7LL));
    EXPECT_EQ(valueOf("Key:real=2"), QVariant(2.0));
    EXPECT_EQ(valueOf("Key:boolean=1"), QVariant(true));
    EXPECT_EQ(valueOf("Key:boolean=no"), QVariant(false));
}

TEST(ParameterOptions, KeepsColonsAndFurtherEqualSigns)
{
    EXPECT_EQ(read({"--parameter", "a:b=c=d"}), QVariantMap({{"a:b", "c=d"}}));
    EXPECT_EQ(read({"--parameter", "Delay before alert=3"}), QVariantMap({{"Delay before alert", 3LL}}));
}

TEST(ParameterOptions, RefusesAValueThatIsNotOfItsType)
{
    EXPECT_EQ(refusal({"--parameter", "Key:integer=1.5"}), "\"1.5\" is not of the type integer.");
    EXPECT_EQ(refusal({"--parameter", "Key:real=inf"}), "\"inf\" is not of the type real.");
    EXPECT_EQ(refusal({"--parameter", "Key:boolean=maybe"}), "\"maybe\" is not of the type boolean.");
}

TEST(ParameterOptions, RefusesAParameterWithoutKeyOrValue)
{
    EXPECT_EQ(refusal({"--parameter", "Key"}), "\"Key\" is not of the form KEY=VALUE.");
    EXPECT_EQ(refusal({"--parameter", "=5"}), "\"=5\" is not of the form KEY=VALUE.");
}

TEST(ParameterOptions, RefusesATextThatAPropertyListCannotCarry)
{
    EXPECT_EQ(refusal({"--parameter", "Key=\x01"}), "A parameter holds what a property list cannot carry.");
}

TEST(ParameterOptions, ProgramAndArgumentsAreThoseOfTheCommandBundle)
{
    EXPECT_EQ(read({"--program", "/bin/echo", "--argument", "a b", "--argument", "-n", "--argument", ""}),
              QVariantMap({{"Program", "/bin/echo"}, {"Arguments", QVariantList{"a b", "-n", ""}}}));
}

TEST(ParameterOptions, ThePlaceOfTheActionIsOneOfTwo)
{
    EXPECT_EQ(read({"--in-session"}), QVariantMap({{"Acts In User Agent", 1LL}}));
    EXPECT_EQ(read({"--in-daemon"}), QVariantMap({{"Acts In User Agent", 0LL}}));
    EXPECT_EQ(refusal({"--in-daemon", "--in-session"}),
              "An action runs in the daemon or in the session, not in both.");
}

TEST(ParameterOptions, TheUserIsToldOfAFailureWhereThatIsWanted)
{
    EXPECT_EQ(read({"--tell-failure"}), QVariantMap({{"Tell Failure", 1LL}}));
}

TEST(ParameterOptions, AnAlertIsWantedWithItsLeadTimeInSeconds)
{
    EXPECT_EQ(read({"--alert", "60"}), QVariantMap({{"Alert", 1LL}, {"Delay before alert", 60LL}}));
    EXPECT_EQ(read({"--parameter", "Alert=0", "--alert", "5"}),
              QVariantMap({{"Alert", 1LL}, {"Delay before alert", 5LL}}));
}

TEST(ParameterOptions, RefusesALeadTimeThatLeavesNothingToAnnounce)
{
    for (const QString seconds : {"0", "-1", "1.5", "soon", "", "2147483648"}) {
        EXPECT_EQ(refusal({"--alert=" + seconds}),
                  QString("--alert needs a whole number of seconds, 1 or more, not \"%1\".").arg(seconds));
    }
}
