// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/OccurrenceSeries.h"
#include "support/Require.h"
#include "support/Steer.h"

using namespace dozely;

namespace
{
/// A rule of parts that there are, with values that there are and some that there are not.
class RuleMaker
{
public:
    explicit RuleMaker(Steer &steer) : m_steer(steer) {}

    QString make()
    {
        QStringList parts{"FREQ=" + m_steer.oneOf<QString>({"SECONDLY", "MINUTELY", "HOURLY", "DAILY",
                                                            "WEEKLY", "MONTHLY", "YEARLY"})};
        for (int left = m_steer.below(7); left > 0; --left)
            parts.append(part());
        return parts.join(';');
    }

private:
    QString part()
    {
        switch (m_steer.below(14)) {
        case 0:
            return "INTERVAL=" + QString::number(m_steer.number());
        case 1:
            return "COUNT=" + QString::number(m_steer.number());
        case 2:
            return "UNTIL=" + m_steer.oneOf<QString>({"20300101", "20260329T023000", "20261025T003000Z",
                                                      "00010101", "99991231T235959Z", "20260230"});
        case 3:
            return "WKST=" + weekday();
        case 4:
            return list("BYSECOND", 62);
        case 5:
            return list("BYMINUTE", 61);
        case 6:
            return list("BYHOUR", 25);
        case 7:
            return list("BYMONTHDAY", 33);
        case 8:
            return list("BYYEARDAY", 256);
        case 9:
            return list("BYWEEKNO", 55);
        case 10:
            return list("BYMONTH", 14);
        case 11:
            return list("BYSETPOS", 256);
        case 12:
            return "BYDAY=" + weekday() + "," + number(55) + weekday();
        default:
            return "BYDAY=" + weekday() + "," + weekday();
        }
    }

    QString weekday() { return m_steer.oneOf<QString>({"MO", "TU", "WE", "TH", "FR", "SA", "SU"}); }

    QString number(int below)
    {
        const int value = m_steer.below(below);
        return QString::number(m_steer.below(4) == 0 ? -value : value);
    }

    QString list(const QString &name, int below)
    {
        QStringList numbers;
        for (int left = 1 + m_steer.below(5); left > 0; --left)
            numbers.append(number(below));
        return name + '=' + numbers.join(',');
    }

    Steer &m_steer;
};

void checkFrom(const OccurrenceSeries &series, const QDateTime &from)
{
    QDateTime previous = from;
    int count = 0;
    for (auto date = series.after(from); date && count < 20; date = series.after(previous)) {
        REQUIRE(date->timeSpec() == Qt::UTC && date->time().msec() == 0);
        REQUIRE(*date > previous && date->date().year() >= 1 && date->date().year() <= 9999);
        REQUIRE(series.upTo(*date) == date);
        REQUIRE(series.after(date->addSecs(-1)) == date);
        const auto before = series.upTo(date->addSecs(-1));
        REQUIRE(!before || *before < *date);
        REQUIRE(count == 0 || before == previous);
        previous = *date;
        ++count;
    }
    const OccurrenceSeries::Run run = series.between(from, previous);
    REQUIRE(run.isCountExact ? run.count == count : run.count <= count);
    REQUIRE(count == 0 || (run.last == previous && run.first > from));
}
} // namespace

/// A rule, made of parts or as it stands in the input, with dates beside it, in a zone. It is refused with a
/// reason, or has occurrences in order, whichever way one asks for them; nobody waits long for either.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Steer steer(data, size);
    const bool isMade = steer.flag();
    static constexpr const char *zones[] = {"UTC", "Europe/Paris", "Pacific/Apia", "Australia/Lord_Howe",
                                            "Africa/Casablanca"};
    const QTimeZone zone(zones[steer.below(std::size(zones))]);
    const int year = steer.oneOf<int>({2026, 2011, 1, 9999, 2037});
    const int month = 1 + steer.below(12);
    const int day = 1 + steer.below(28);
    const int hour = steer.below(24);
    const int minute = steer.below(60);
    Recurrence recurrence;
    recurrence.localStart = {{year, month, day}, {hour, minute}};
    for (int left = steer.below(4); left > 0; --left) {
        const WallTime other{recurrence.localStart.day.addDays(left), {hour, steer.below(60)}};
        if (other.isValid())
            (steer.flag() ? recurrence.extraDates : recurrence.excludedDates).append(other);
    }
    const qint64 ahead = steer.number() % (40LL * 365 * 86400);
    recurrence.rule = isMade ? RuleMaker(steer).make() : QString::fromUtf8(steer.rest());

    const auto series = OccurrenceSeries::of(recurrence, zone);
    if (!series) {
        const QString text = series.error().text;
        REQUIRE(!text.isEmpty() && text.size() < 200 && !text.endsWith('.') && !text.contains('\n'));
        return 0;
    }
    REQUIRE(recurrence.rule.contains("FREQ=", Qt::CaseInsensitive));
    const QDateTime start(recurrence.localStart.day, recurrence.localStart.time, Qt::UTC);
    checkFrom(*series, start.addDays(-2));
    checkFrom(*series, start.addSecs(ahead));
    return 0;
}
