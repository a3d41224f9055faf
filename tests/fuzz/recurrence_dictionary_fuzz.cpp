// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/OccurrenceSeries.h"
#include "support/FuzzedSystem.h"
#include "support/Require.h"
#include "support/Steer.h"

using namespace dozely;

namespace
{
const char *const keys[] = {"Rule", "Local Start", "Extra Dates", "Excluded Dates", "Colour"};

QVariant date(Steer &steer)
{
    if (steer.below(6) == 0)
        return QString::fromUtf8(steer.bytes(24));
    return steer.oneOf<QString>({"2026-03-14T06:55:00", "2026-03-29T02:30:00", "0001-01-01T00:00:00",
                                 "9999-12-31T23:59:59", "2026-02-30T00:00:00", "2026-03-14"});
}

QVariantList dates(Steer &steer)
{
    QVariantList list;
    for (int left = steer.below(6); left > 0; --left)
        list.append(date(steer));
    while (steer.below(64) == 1 && list.size() < 1500)
        list += QVariantList(400, "2026-03-14T06:55:00");
    return list;
}

/// A dictionary that is one of a recurrence but for some keys.
QVariantMap made(Steer &steer, const QDateTime &now)
{
    QVariantMap map{
        {"Rule", steer.oneOf<QString>({"FREQ=DAILY", "FREQ=HOURLY;BYDAY=MO", "FREQ=YEARLY;BYWEEKNO=1"})}};
    map.insert("Local Start", date(steer));
    if (steer.flag())
        map.insert("Extra Dates", dates(steer));
    if (steer.flag())
        map.insert("Excluded Dates", dates(steer));
    if (steer.flag())
        map.insert("Colour", steer.value(now));
    for (int left = steer.below(3); left > 0; --left) {
        const QString key = keys[steer.below(std::size(keys))];
        if (steer.flag())
            map.remove(key);
        else
            map.insert(key, steer.value(now));
    }
    return map;
}
} // namespace

/// What stands in the store for a recurrence. It is refused with a reason, or is written again as it was
/// read, and what it says can be asked.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static FuzzedSystem system;
    Steer steer(data, size);
    const QVariant value = steer.below(4) == 0 ? steer.value(system.now()) : made(steer, system.now());
    const auto read = Recurrence::fromDictionary(value);
    if (!read) {
        REQUIRE(read.error().text.contains("\"Recurrence Rule\"") && !read.error().text.endsWith('.'));
        return 0;
    }
    REQUIRE(read->localStart.isValid() && read->rule.size() <= 4096);
    REQUIRE(read->extraDates.size() <= 1000 && read->excludedDates.size() <= 1000);
    QVariantMap wanted = value.toMap();
    for (const char *key : {"Extra Dates", "Excluded Dates"}) {
        if (wanted.value(key).toList().isEmpty())
            wanted.remove(key);
    }
    REQUIRE(read->toDictionary() == wanted);
    const auto again = Recurrence::fromDictionary(read->toDictionary());
    REQUIRE(again && *again == *read);
    const auto series = OccurrenceSeries::of(*read, QTimeZone("Europe/Paris"));
    REQUIRE(series || !series.error().text.isEmpty());
    if (!series)
        return 0;
    const auto first = series->first();
    REQUIRE(!first || series->upTo(first->addSecs(-1)) == std::nullopt);
    for (const WallTime &excluded : read->excludedDates) {
        const QDateTime date(excluded.day, excluded.time, QTimeZone("Europe/Paris"));
        const auto found = series->upTo(date);
        REQUIRE(!found ||
                WallTime::of(found->toTimeZone(QTimeZone("Europe/Paris"))).toString() != excluded.toString());
    }
    return 0;
}
