// SPDX-License-Identifier: MIT
#include "hosts/admin/CalendarFile.h"
#include "hosts/admin/StructuredFile.h"
#include "hosts/admin/WantedSchedules.h"
#include "support/Require.h"

/// A file that "apply" is given: what is understood of it is what the store can hold, means the same when it
/// is applied again, on another day, and can be shown as a calendar.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QDateTime now({2026, 3, 14}, {6, 0}, Qt::UTC);
    const auto value =
        StructuredFile::parse(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    if (!value)
        return 0;
    const auto wanted = WantedSchedules::in(*value, {}, now);
    if (!wanted)
        return 0;
    for (const Schedule &schedule : *wanted) {
        const auto again = Schedule::fromEntry(schedule.toEntry());
        REQUIRE(again && *again == schedule);
    }
    const auto later = WantedSchedules::in(*value, *wanted, now.addDays(3));
    REQUIRE(later && later->size() == wanted->size());
    REQUIRE(CalendarFile::of(*wanted, now).endsWith("END:VCALENDAR\r\n"));
    return 0;
}
