// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "hosts/common/bus/ScheduleDictionary.h"
#include "hosts/common/bus/ScheduleWish.h"
#include "support/FuzzedSystem.h"
#include "support/Require.h"
#include "support/Steer.h"

using namespace dozely;

namespace
{
const char *const keys[] = {"name",    "isEnabled", "bundlePath",    "parameters", "date",   "timeZone",
                            "actsIn",  "owner",     "staysWhenOver", "repeats",    "missed", "missedLimit",
                            "overlap", "after",     "inWords",       "identifier", ""};

/// Anything that may come from the bus: wider than what a property list holds.
QVariant fromBus(Steer &steer, const QDateTime &now)
{
    switch (steer.below(12)) {
    case 0:
        return QVariant::fromValue<quint8>(steer.byte());
    case 1:
        return QVariant::fromValue<qint16>(static_cast<qint16>(steer.number()));
    case 2:
        return static_cast<quint32>(steer.number());
    case 3:
        return static_cast<qint32>(steer.number());
    case 4:
        return QStringList{"a", steer.text()};
    case 5:
        return QVariant::fromValue(BusDescriptor());
    case 6:
        return QVariant::fromValue(BusVariant{"s", steer.text()});
    case 7:
        return QVariantList{QVariantList{steer.text(), steer.number()}};
    default:
        return steer.value(now);
    }
}

QString date(Steer &steer, const QDateTime &now)
{
    if (steer.below(4) == 0)
        return steer.text();
    return steer.oneOf<QString>({"2026-03-14T06:55:00+01:00", "2090-01-01T00:00:00Z",
                                 "2090-01-01T00:00:00.5Z", "0001-01-01T00:00:00+14:00",
                                 "9999-12-31T23:59:59.9Z", "2026-02-30T00:00:00Z", "",
                                 ScheduleDictionary::textOf(now.addDays(1))});
}

QVariantMap repeats(Steer &steer, const QDateTime &now)
{
    QVariantMap map{
        {"rule", steer.oneOf<QString>({"FREQ=DAILY", "FREQ=MINUTELY;INTERVAL=7", "FREQ=YEARLY;BYWEEKNO=53",
                                       "FREQ=MONTHLY;BYDAY=2TU;COUNT=4", "FREQ=DAILY;UNTIL=20200101"})}};
    if (steer.flag())
        map.insert("localStart",
                   steer.oneOf<QString>({"2026-03-29T02:30:00", "2000-01-31T23:59:59", "soon"}));
    if (steer.flag())
        map.insert("excludedDates", QStringList{"2026-03-14T06:55:00", "2026-03-30T02:30:00"});
    if (steer.below(4) == 0) {
        const QString key =
            steer.oneOf<const char *>({"rule", "localStart", "extraDates", "inWords", "Rule"});
        map.insert(key, fromBus(steer, now));
    }
    return map;
}

/// A dictionary that is a good one but for some keys.
QVariantMap made(Steer &steer, const QDateTime &now)
{
    QVariantMap wish{{"name", "Water"}, {"bundlePath", "/Library/Command.plugin"}};
    if (steer.flag())
        wish.insert("date", date(steer, now));
    if (steer.flag())
        wish.insert("repeats", repeats(steer, now));
    if (steer.flag())
        wish.insert("timeZone",
                    steer.oneOf<QString>({"", "Europe/Paris", "Asia/Kathmandu", "CET-1", "../etc"}));
    if (steer.flag())
        wish.insert("parameters", QVariantMap{{"Deep", fromBus(steer, now)}});
    if (steer.flag())
        wish.insert("missed", steer.oneOf<QString>({"run once", "skip", "", "plug-in", "never"}));
    for (int left = steer.below(4); left > 0; --left) {
        const QString key = keys[steer.below(std::size(keys))];
        if (steer.flag())
            wish.remove(key);
        else
            wish.insert(key, fromBus(steer, now));
    }
    return wish;
}

/// One sentence on one line.
void checkSentence(const Error &error)
{
    REQUIRE(error.text.endsWith('.') && error.text.size() < 1000);
    for (const QChar c : error.text)
        REQUIRE(c.category() != QChar::Other_Control && c.category() != QChar::Separator_Line);
}

void checkSchedule(const Schedule &schedule, const QDateTime &now)
{
    const QByteArray entry = PropertyList::toData(schedule.toEntry(), PropertyList::Format::Xml);
    REQUIRE(!entry.isNull() && entry.size() <= ScheduleWish::largestEntry);
    const auto read = PropertyList::fromData(entry);
    REQUIRE(read);
    const auto again = Schedule::fromEntry(*read);
    REQUIRE(again && again->toEntry() == schedule.toEntry());
    REQUIRE(!schedule.name.trimmed().isEmpty() && schedule.name.size() <= ScheduleWish::longestName);
    REQUIRE(schedule.date >= now);
    REQUIRE(schedule.otherKeys.isEmpty());
}

/// What is told of a schedule, wished again, changes nothing.
void checkRoundTrip(const Schedule &schedule, const QDateTime &now)
{
    QVariantMap told = ScheduleDictionary::of(schedule);
    REQUIRE(told.take("identifier") == schedule.identifier);
    if (told.contains("repeats")) {
        QVariantMap repeats = told["repeats"].toMap();
        repeats.remove("inWords");
        told.insert("repeats", repeats);
    }
    const auto same = ScheduleWish::changed(schedule, told, now);
    REQUIRE(same && *same == schedule);
    REQUIRE(ScheduleDictionary::revisionOf(*same) == ScheduleDictionary::revisionOf(schedule));
    const auto renamed = ScheduleWish::changed(schedule, {{"name", schedule.name + "!"}}, now);
    REQUIRE(!renamed || ScheduleDictionary::revisionOf(*renamed) != ScheduleDictionary::revisionOf(schedule));
}
} // namespace

/// What Add and Change are given on the bus, by anybody. It is refused with one sentence, or gives a schedule
/// that the store keeps as it is and that is told as it was wished.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static FuzzedSystem system;
    Steer steer(data, size);
    const QDateTime now = system.now();
    const QVariantMap wish = steer.below(8) == 0 ? steer.dictionary(now) : made(steer, now);
    const auto schedule = ScheduleWish::made("one", wish, now);
    if (!schedule) {
        checkSentence(schedule.error());
        return 0;
    }
    checkSchedule(*schedule, now);
    checkRoundTrip(*schedule, now);
    const QVariantMap change = made(steer, now);
    const auto changed = ScheduleWish::changed(*schedule, change, now);
    if (!changed) {
        checkSentence(changed.error());
        return 0;
    }
    checkSchedule(*changed, now);
    checkRoundTrip(*changed, now);
    REQUIRE(changed->identifier == "one");
    return 0;
}
