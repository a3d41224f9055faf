// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/DateTerms.h"
#include "support/Require.h"
#include "support/Steer.h"

/// What a person writes for a date: what is read is a day that there is, on the side on which it was looked
/// for, and the same when it is written out.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Steer steer(data, size);
    constexpr qsizetype minutesOfAYear = 366 * 24 * 60;
    const QByteArray name =
        steer.oneOf<const char *>({"Europe/Berlin", "America/New_York", "Asia/Kathmandu", "UTC"});
    const QTimeZone zone(name);
    const QDateTime now = QDateTime({2026, 1, 1}, {0, 0}, Qt::UTC).addSecs(60 * steer.index(minutesOfAYear));
    const auto towards = steer.flag() ? DateTerms::Towards::ToCome : DateTerms::Towards::Past;
    const QString text = QString::fromUtf8(steer.rest());
    const DateTerms terms(now, zone, towards);
    const auto date = terms.read(text);
    if (!date) {
        REQUIRE(!date.error().text.isEmpty());
        return 0;
    }
    REQUIRE(date->day.isValid() && (!date->offset || date->time));
    if (!date->time)
        return 0;
    REQUIRE(date->time->isValid());
    const QString written = date->day.toString(Qt::ISODate) + date->time->toString(" HH:mm:ss");
    if (date->day.year() >= 1000 && date->day.year() <= 9999) { // four digits
        const auto again = terms.read(date->offset ? written + "Z" : written);
        REQUIRE(again && again->day == date->day && again->time == date->time);
    }
    (void)terms.momentOf(*date, text);
    return 0;
}
