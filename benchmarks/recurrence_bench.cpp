// SPDX-License-Identifier: MIT
//
// What it costs to turn a rule into instants: a thousand daily occurrences through three years of a zone with
// summer time, beside libical, which gives their wall times alone; and the next occurrence of schedules one
// after the other, as the daemon asks for them when it starts.
#include "Bench.h"

#include "hosts/common/calendar/OccurrenceSeries.h"

#include <libical/ical.h>

namespace
{
constexpr int occurrences = 1000;
constexpr const char *rule = "FREQ=DAILY";
constexpr const char *start = "2026-03-14T06:55:00";

Recurrence recurrence(const char *text)
{
    return {text, WallTime::fromString(start).value(), {}, {}, {}};
}

/// The wall times as libical has them.
QStringList byLibical()
{
    const icalrecurrencetype type = icalrecurrencetype_from_string(rule);
    icalrecur_iterator *iterator = icalrecur_iterator_new(type, icaltime_from_string("20260314T065500"));
    QStringList result;
    for (int i = 0; i < occurrences; ++i) {
        const icaltimetype time = icalrecur_iterator_next(iterator);
        result.append(
            WallTime{{time.year, time.month, time.day}, {time.hour, time.minute, time.second}}.toString());
    }
    icalrecur_iterator_free(iterator);
    return result;
}

void walkByLibical()
{
    const icalrecurrencetype type = icalrecurrencetype_from_string(rule);
    icalrecur_iterator *iterator = icalrecur_iterator_new(type, icaltime_from_string("20260314T065500"));
    for (int i = 0; i < occurrences; ++i)
        icalrecur_iterator_next(iterator);
    icalrecur_iterator_free(iterator);
}

/// The last of them; `visit` sees each.
template<class Visit>
void walk(const QTimeZone &zone, Visit visit)
{
    const auto series = OccurrenceSeries::of(recurrence(rule), zone);
    std::optional<QDateTime> date = series->first();
    for (int i = 0; i < occurrences; ++i) {
        visit(*date);
        date = series->after(*date);
    }
}
} // namespace

int main()
{
    const QTimeZone zone("Europe/Paris");
    QStringList wallTimes;
    walk(zone,
         [&](const QDateTime &date) { wallTimes.append(WallTime::of(date.toTimeZone(zone)).toString()); });
    if (wallTimes != byLibical())
        return 1; // two different things are not compared

    const QDateTime now({2036, 7, 14}, QTime(12, 0), Qt::UTC);
    const QList<Recurrence> ordinary{recurrence("FREQ=DAILY"), recurrence("FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR"),
                                     recurrence("FREQ=MONTHLY;BYMONTHDAY=1,15,-1"),
                                     recurrence("FREQ=MONTHLY;BYDAY=2TU"),
                                     recurrence("FREQ=MINUTELY;INTERVAL=15")};
    qsizetype next = 0;
    qint64 sum = 0;

    Bench bench;
    bench.add("instants",
              [&] { walk(zone, [&](const QDateTime &date) { sum += date.toSecsSinceEpoch(); }); });
    bench.add("libical's wall times", walkByLibical);
    bench.add("one schedule", [&] {
        const auto series = OccurrenceSeries::of(ordinary.at(next++ % ordinary.size()), zone);
        sum += series->after(now)->toSecsSinceEpoch();
    });
    bench.run(20, 20);
    if (sum == 0)
        return 1;
    const QJsonObject schedule{{"what", "the next occurrence of a recurring schedule, its rule read anew"},
                               {"value", bench.median("one schedule")},
                               {"unit", "µs"},
                               {"reach", 20},
                               {"detail", "five ordinary rules in turn, ten years after their start"}};
    bench.print("1,000 daily occurrences", {{"instants", "libical's wall times", 2}}, {schedule});
    return 0;
}
