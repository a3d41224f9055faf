// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/Recurrence.h"

#include <gmock/gmock.h>

namespace
{
QVariantMap dictionary()
{
    return {{"Rule", "FREQ=DAILY"},
            {"Local Start", "2026-03-14T06:55:00"},
            {"Extra Dates", QVariantList{"2026-03-20T12:00:00", "2026-03-19T12:00:00"}},
            {"Excluded Dates", QVariantList{"2026-03-15T06:55:00"}},
            {"Colour", 5}};
}

QVariantMap with(const QString &key, const QVariant &value)
{
    QVariantMap map = dictionary();
    map.insert(key, value);
    return map;
}

QVariantMap without(const QString &key)
{
    QVariantMap map = dictionary();
    map.remove(key);
    return map;
}

/// Why it is refused; empty when it is accepted.
std::string faultOf(const QVariant &value)
{
    const auto recurrence = Recurrence::fromDictionary(value);
    return recurrence ? std::string() : recurrence.error().text.toStdString();
}
} // namespace

TEST(Recurrence, ReadsEveryKeyAndKeepsTheOthers)
{
    const auto recurrence = Recurrence::fromDictionary(dictionary());
    ASSERT_TRUE(recurrence);
    EXPECT_EQ(recurrence->rule, "FREQ=DAILY");
    EXPECT_EQ(recurrence->localStart, (WallTime{{2026, 3, 14}, {6, 55}}));
    EXPECT_EQ(recurrence->extraDates, (QList<WallTime>{{{2026, 3, 20}, {12, 0}}, {{2026, 3, 19}, {12, 0}}}));
    EXPECT_EQ(recurrence->excludedDates, (QList<WallTime>{{{2026, 3, 15}, {6, 55}}}));
    EXPECT_EQ(recurrence->otherKeys, (QVariantMap{{"Colour", 5}}));
    EXPECT_EQ(recurrence->toDictionary(), dictionary());
}

TEST(Recurrence, NeedsARuleAndAStartAlone)
{
    const QVariantMap least{{"Rule", "FREQ=DAILY"}, {"Local Start", "2026-03-14T06:55:00"}};
    const auto recurrence = Recurrence::fromDictionary(least);
    ASSERT_TRUE(recurrence);
    EXPECT_EQ(recurrence->toDictionary(), least);
    EXPECT_EQ(faultOf(without("Rule")), "\"Recurrence Rule\" has no \"Rule\"");
    EXPECT_EQ(faultOf(without("Local Start")), "\"Recurrence Rule\" has no \"Local Start\"");
}

TEST(Recurrence, RefusesWhatIsOfAnotherType)
{
    EXPECT_EQ(faultOf(QVariant()), "\"Recurrence Rule\" is not a dictionary");
    EXPECT_EQ(faultOf("FREQ=DAILY"), "\"Recurrence Rule\" is not a dictionary");
    EXPECT_EQ(faultOf(with("Rule", 5)), "\"Rule\" of \"Recurrence Rule\" is not a string");
    EXPECT_EQ(faultOf(with("Local Start", QDateTime::currentDateTime())),
              "\"Local Start\" of \"Recurrence Rule\" is not a string");
    EXPECT_EQ(faultOf(with("Local Start", "tomorrow")),
              "\"Local Start\" of \"Recurrence Rule\" is no date and time such as 2026-03-14T06:55:00");
    for (const char *key : {"Extra Dates", "Excluded Dates"}) {
        EXPECT_EQ(faultOf(with(key, "2026-03-14T06:55:00")),
                  std::string("\"") + key + "\" of \"Recurrence Rule\" is not an array");
        for (const QVariant &entry : {QVariant(5), QVariant("2026-03-14"), QVariant()})
            EXPECT_EQ(faultOf(with(key, QVariantList{entry})),
                      std::string("\"") + key +
                          "\" of \"Recurrence Rule\" has an entry that is no date and time such as "
                          "2026-03-14T06:55:00");
    }
}

TEST(Recurrence, RefusesWhatIsLongerThanAnybodyWrites)
{
    EXPECT_EQ(faultOf(with("Rule", QString(4096, 'A'))), ""); // whether it is a rule is asked elsewhere
    EXPECT_EQ(faultOf(with("Rule", QString(4097, 'A'))),
              "\"Rule\" of \"Recurrence Rule\" has more than 4096 characters");
    QVariantList dates(1000, "2026-03-14T06:55:00");
    EXPECT_EQ(faultOf(with("Extra Dates", dates)), "");
    dates.append("2026-03-14T06:55:00");
    EXPECT_EQ(faultOf(with("Extra Dates", dates)),
              "\"Extra Dates\" of \"Recurrence Rule\" has more than 1000 dates");
    EXPECT_EQ(faultOf(with("Excluded Dates", dates)),
              "\"Excluded Dates\" of \"Recurrence Rule\" has more than 1000 dates");
}

TEST(Recurrence, IsEqualWhenAllOfItIs)
{
    const Recurrence one = *Recurrence::fromDictionary(dictionary());
    EXPECT_EQ(one, *Recurrence::fromDictionary(dictionary()));
    for (const char *key : {"Rule", "Local Start", "Extra Dates", "Excluded Dates", "Colour"}) {
        const QVariant other = *key == 'R'   ? QVariant("FREQ=WEEKLY")
                               : *key == 'L' ? QVariant("2026-03-14T06:56:00")
                               : *key == 'C' ? QVariant(6)
                                             : QVariant(QVariantList{"2026-03-14T06:56:00"});
        EXPECT_FALSE(one == *Recurrence::fromDictionary(with(key, other))) << key;
    }
}
