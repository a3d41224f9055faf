// SPDX-License-Identifier: MIT
#include "hosts/common/bus/ScheduleWish.h"

#include "DozelyKit/core/dbus/BusConnection.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
const QDateTime now({2026, 3, 14}, {6, 0}, Qt::UTC);

QVariantMap wish(const QVariantMap &more = {})
{
    QVariantMap wish{
        {"name", "Water"}, {"bundlePath", "/Library/Water.plugin"}, {"date", "2026-03-15T06:00:00Z"}};
    wish.insert(more);
    return wish;
}

Schedule made(const QVariantMap &wish)
{
    const auto schedule = ScheduleWish::made("a", wish, now);
    EXPECT_TRUE(schedule) << schedule.error().text.toStdString();
    return schedule ? *schedule : Schedule();
}

std::string refused(const QVariantMap &wish)
{
    const auto schedule = ScheduleWish::made("a", wish, now);
    return schedule ? std::string() : schedule.error().text.toStdString();
}

Schedule changed(const Schedule &schedule, const QVariantMap &wish)
{
    const auto after = ScheduleWish::changed(schedule, wish, now);
    EXPECT_TRUE(after) << after.error().text.toStdString();
    return after ? *after : Schedule();
}

const QVariantMap daily{{"rule", "FREQ=DAILY;BYHOUR=7;BYMINUTE=0;BYSECOND=0"},
                        {"localStart", "2026-01-01T07:00:00"},
                        {"excludedDates", QStringList{"2026-03-15T07:00:00"}}};
} // namespace

TEST(ScheduleWish, MakesWhatTakesPlaceOnce)
{
    const Schedule once = made(wish({{"timeZone", "Europe/Paris"}, {"owner", 501U}, {"actsIn", "session"}}));
    EXPECT_EQ(once.identifier, "a");
    EXPECT_TRUE(once.isEnabled);
    EXPECT_EQ(once.date, now.addDays(1));
    EXPECT_EQ(once.timeZone, "Europe/Paris");
    EXPECT_EQ(once.owner, 501U);
    EXPECT_EQ(ScheduleWish::changed(once, {{"owner", ""}}, now)->owner, std::nullopt);
    EXPECT_EQ(ScheduleWish::changed(once, {{"owner", 502U}}, now)->owner, 502U);
    EXPECT_EQ(ScheduleWish::changed(once, {{"name", "Other"}}, now)->owner, 501U);
    EXPECT_EQ(once.parameters, (QVariantMap{{"Acts In User Agent", 1LL}}));
}

TEST(ScheduleWish, BeginsWhatRepeatsAnewSoThatNothingWasMissed)
{
    // Where it is 15:00 already.
    const Schedule repeated = made(wish({{"date", ""}, {"repeats", daily}, {"timeZone", "Asia/Tokyo"}}));
    EXPECT_EQ(repeated.recurrence->localStart.toString(), "2026-03-16T07:00:00");
    EXPECT_EQ(repeated.date, QDateTime({2026, 3, 15}, {22, 0}, Qt::UTC));
}

TEST(ScheduleWish, KeepsWhatIsNotNamedAndWhatIsTheSame)
{
    Schedule before = made(wish({{"date", ""},
                                 {"repeats", daily},
                                 {"timeZone", "UTC"},
                                 {"missed", "run once"},
                                 {"missedLimit", quint64(60)},
                                 {"overlap", "run"}}));
    before.otherKeys = {{"Colour", "green"}};
    Schedule renamed = before;
    renamed.name = "Plants";
    EXPECT_EQ(changed(before, {{"name", "Plants"}}), renamed);
    const QVariantMap same{{"rule", before.recurrence->rule},
                           {"localStart", before.recurrence->localStart.toString()},
                           {"excludedDates", QStringList{"2026-03-15T07:00:00"}}};
    EXPECT_EQ(changed(before, {{"repeats", same}}).recurrence->localStart, before.recurrence->localStart);
}

TEST(ScheduleWish, TakesBackWhatIsEmpty)
{
    const Schedule before = made(wish({{"date", ""},
                                       {"repeats", daily},
                                       {"timeZone", "UTC"},
                                       {"missed", "run once"},
                                       {"missedLimit", quint64(60)},
                                       {"overlap", "run"},
                                       {"actsIn", "daemon"}}));
    const Schedule after = changed(before, {{"repeats", QVariantMap()}, {"missed", ""}, {"actsIn", ""}});
    EXPECT_FALSE(after.recurrence || after.missedPolicy || after.missedLimit || after.overlapPolicy);
    EXPECT_EQ(after.date, before.date); // the next one is the one that is left
    EXPECT_TRUE(after.parameters.isEmpty());
}

TEST(ScheduleWish, KeepsADateWithinParametersAsLongAsItsTextStays)
{
    Schedule before = made(wish());
    before.parameters = {{"When", now}, {"Then", QVariantList{now}}};
    const Schedule after =
        changed(before, {{"parameters", QVariantMap{{"When", "2026-03-14T06:00:00Z"},
                                                    {"Then", QVariantList{"2026-03-14T06:00:00Z"}},
                                                    {"Else", "2026-03-14T06:00:00Z"},
                                                    {"Number", QVariant(7U)}}}});
    EXPECT_EQ(
        after.parameters,
        (QVariantMap{
            {"When", now}, {"Then", QVariantList{now}}, {"Else", "2026-03-14T06:00:00Z"}, {"Number", 7LL}}));
}

TEST(ScheduleWish, RefusesWithOneSentence)
{
    EXPECT_EQ(refused(wish({{"colour", "red"}})), "A schedule has no \"colour\" that could be set.");
    EXPECT_EQ(refused(wish({{"identifier", "b"}})), "A schedule has no \"identifier\" that could be set.");
    EXPECT_EQ(refused(wish({{"isEnabled", 1}})), "\"isEnabled\" is not a boolean.");
    EXPECT_EQ(refused(wish({{"owner", "501"}})),
              "\"owner\" is not a user id, an unsigned number of 32 bits.");
    EXPECT_EQ(refused(wish({{"owner", 501}})), "\"owner\" is not a user id, an unsigned number of 32 bits.");
    EXPECT_EQ(refused(wish({{"owner", 0xffffffffU}})), "It is no schedule: \"Owner\" is not a user id.");
    EXPECT_EQ(refused(wish({{"name", "  "}})), "A schedule needs a name.");
    EXPECT_EQ(refused(wish({{"name", QString(501, 'x')}})), "The name has more than 500 characters.");
    for (const QChar control : {QChar('\t'), QChar('\n'), QChar(0x1b), QChar(0x2028)})
        EXPECT_EQ(refused(wish({{"name", QString("a") + control}})), "The name holds control characters.");
    EXPECT_EQ(refused(wish({{"date", "2026-03-14T05:59:59Z"}})), "\"date\" is past.");
    EXPECT_EQ(refused(wish({{"date", ""}})), "Say when, by \"date\", or how often, by \"repeats\".");
    EXPECT_EQ(refused(wish({{"repeats", QVariantMap{{"inWords", "daily"}}}})),
              "\"repeats\" has no \"inWords\".");
    EXPECT_EQ(refused(wish({{"repeats", QVariantMap{{"rule", "FREQ=DAILY;UNTIL=20260101T000000Z"}}}})),
              "It cannot repeat so: the rule gives no date within 100 years from its start.");
    EXPECT_EQ(refused(wish({{"parameters", QVariantMap{{"File", QVariant::fromValue(BusDescriptor())}}}})),
              "\"parameters\" hold something that no schedule can keep.");
    EXPECT_EQ(refused(wish({{"parameters", QVariantMap{{"Text", QString(QChar(1))}}}})),
              "It holds something that no schedule can keep.");
    EXPECT_EQ(refused(wish({{"parameters", QVariantMap{{"Text", QString(200'000, 'x')}}}})),
              "It is too large: a schedule has at most 131072 bytes.");
}

TEST(ScheduleWish, NamesTheWordThatIsWrong)
{
    for (const char *path : {"Sleep.plugin", "/", "/a/../b.plugin", "/a/b.plugin/", ""})
        EXPECT_EQ(refused(wish({{"bundlePath", path}})),
                  "\"bundlePath\" is not the absolute path of a bundle.")
            << path;
    EXPECT_EQ(refused(wish({{"actsIn", "agent"}})), "\"actsIn\" is \"session\", \"daemon\" or empty.");
    EXPECT_EQ(refused(wish({{"date", "tomorrow"}})),
              "\"date\" is no date such as 2026-03-14T06:55:00+01:00: tomorrow.");
    EXPECT_EQ(refused(wish({{"timeZone", "Nowhere/Else"}})), "There is no time zone \"Nowhere/Else\".");
    for (const char *policy : {"missed", "overlap", "after"})
        EXPECT_EQ(refused(wish({{policy, "never"}})),
                  std::string("\"") + policy + "\" is none of those that there are: \"never\".");
    EXPECT_EQ(refused(wish({{"overlap", "run"}})), "\"overlap\" is of what repeats.");
    EXPECT_EQ(refused(wish({{"missedLimit", quint64(60)}})),
              "\"missedLimit\" is a number of seconds, and is of what is \"run once\".");
    const Schedule twice = made(
        wish({{"date", ""}, {"timeZone", "UTC"}, {"repeats", QVariantMap{{"rule", "FREQ=DAILY;COUNT=2"}}}}));
    const auto once = ScheduleWish::changed(twice, {{"repeats", QVariantMap()}}, now.addDays(9));
    ASSERT_FALSE(once);
    EXPECT_EQ(once.error().text, "It is over: say \"date\", too.");
}

TEST(ScheduleWish, TakesWhatIsJustWithinItsLimits)
{
    EXPECT_EQ(made(wish({{"name", QString(500, 'x')}})).name.size(), 500);
    EXPECT_EQ(made(wish({{"date", "2026-03-14T06:00:00Z"}})).date, now);
    const quint64 hundredYears = 100ULL * 366 * 24 * 3600;
    const auto within = [](quint64 seconds) {
        return wish({{"missed", "run once"}, {"missedLimit", QVariant::fromValue(seconds)}});
    };
    EXPECT_EQ(made(within(hundredYears)).missedLimit, std::chrono::seconds(hundredYears));
    EXPECT_EQ(refused(within(hundredYears + 1)),
              "\"missedLimit\" is a number of seconds, and is of what is \"run once\".");

    const qsizetype without = *ScheduleWish::sizeOf(made(wish({{"parameters", QVariantMap{{"Text", "x"}}}})));
    const auto filled = [without](qsizetype bytes) {
        return wish({{"parameters", QVariantMap{{"Text", QString(bytes - without + 1, 'x')}}}});
    };
    EXPECT_EQ(ScheduleWish::sizeOf(made(filled(ScheduleWish::largestEntry))), ScheduleWish::largestEntry);
    EXPECT_EQ(refused(filled(ScheduleWish::largestEntry + 1)),
              "It is too large: a schedule has at most 131072 bytes.");
}
