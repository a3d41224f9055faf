// SPDX-License-Identifier: MIT
#include "hosts/admin/Output.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

TEST(Output, EscapesControlAndDirectionCharactersAndNothingElse)
{
    EXPECT_EQ(Output::escaped(QString::fromUtf8("a\tb\n\x7f\u0085\u200e\u2029")),
              "a\\u0009b\\u000a\\u007f\\u0085\\u200e\\u2029");
    const QString harmless = QString::fromUtf8("Grüße, 日本 \\ \"x\" 🌱");
    EXPECT_EQ(Output::escaped(harmless), harmless);
}

TEST(Output, AlignsTheColumnsOfATable)
{
    testing::internal::CaptureStdout();
    Output::table({"A", "LONG TITLE", "C"}, {{"long cell", "x", "1"}, {"y", "", "2\n"}});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "A          LONG TITLE  C\n"
                                                      "long cell  x           1\n"
                                                      "y                      2\\u000a\n");
}

TEST(Output, WritesOneJsonObjectOnALine)
{
    testing::internal::CaptureStdout();
    Output::json(
        {{"data", QByteArray("\0\xff", 2)},
         {"date", QDateTime({2026, 3, 14}, {6, 55}, Qt::UTC)},
         {"list", QVariantList{1LL << 60, true, 0.5, QVariantMap{{"k", QString::fromUtf8("\u0085\n")}}}},
         {"nothing", QVariant()}});
    const std::string text = testing::internal::GetCapturedStdout();
    EXPECT_EQ(text,
              "{\"data\":\"AP8=\",\"date\":\"2026-03-14T06:55:00Z\",\"list\":[1152921504606846976,true,0.5,"
              "{\"k\":\"\\u0085\\n\"}],\"nothing\":null}\n");
    EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(text))
                  .object()["list"][3]
                  .toObject()["k"]
                  .toString(),
              QString::fromUtf8("\u0085\n"));
}
