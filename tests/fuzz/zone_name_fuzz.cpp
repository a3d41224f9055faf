// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/common/schedules/Schedule.h"
#include "support/FuzzedSystem.h"
#include "support/Steer.h"

#include <QFileInfo>
#include <QRegularExpression>

using namespace dozely;

namespace
{
/// A moment and the wall time that it has in the zone belong together.
void checkMoment(const QDateTime &moment, const QString &name, const QTimeZone &zone)
{
    const QDateTime shown = calendarDate(moment, name);
    REQUIRE(shown.isValid() && shown.toMSecsSinceEpoch() == moment.toMSecsSinceEpoch());
    const QDateTime again = dateAtWallTime(shown.date(), shown.time(), zone);
    // Of a time that occurs twice, the first.
    REQUIRE(again <= moment && again.date() == shown.date() && again.time() == shown.time());
}

/// A wall time is what clocks in the zone show then; one that they skip is as much later as they were moved.
void checkWallTime(QDate day, QTime time, const QTimeZone &zone)
{
    const QDateTime moment = dateAtWallTime(day, time, zone);
    REQUIRE(moment.isValid());
    const QDateTime wanted(day, time, Qt::UTC);
    const QDateTime shown(moment.date(), moment.time(), Qt::UTC);
    REQUIRE(shown >= wanted && wanted.secsTo(shown) <= 26 * 3600);
    if (shown == wanted)
        return;
    const QDateTime before = moment.addMSecs(-wanted.msecsTo(shown)); // in the same offset it would be that
    REQUIRE(QDateTime(before.date(), before.time(), Qt::UTC) != wanted);
}
} // namespace

/// What stands for a time zone in a schedule, and one of those that Qt lists. Only names that the system's
/// own folder of zones has, and bare offsets, are taken, and with each of them dates have their meaning.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static FuzzedSystem system;
    Steer steer(data, size);
    const QDate day{1900 + steer.below(200), 1 + steer.below(12), 1 + steer.below(28)};
    const QTime time{steer.below(24), steer.below(60), steer.below(60)};
    static const QByteArrayList zones = QTimeZone::availableTimeZoneIds();
    const QString name = QString::fromUtf8(steer.flag() ? zones.at(steer.index(zones.size())) : steer.rest());

    const bool isKnown = isTimeZoneName(name);
    Schedule schedule;
    schedule.identifier = "a";
    schedule.bundlePath = "/a";
    schedule.date = QDateTime(day, time, Qt::UTC);
    QVariantMap entry = schedule.toEntry();
    entry.insert("Time Zone", name);
    const auto read = Schedule::fromEntry(entry);
    REQUIRE(read.ok() == (isKnown || name.isEmpty()));
    if (!isKnown)
        return 0;
    REQUIRE(read->timeZone == name && Schedule::fromEntry(read->toEntry()).ok());
    REQUIRE(!name.startsWith('/') && !name.contains("..") && !name.contains(QChar(0)));
    static const QRegularExpression bareOffset("\\AUTC[+-]\\d\\d:\\d\\d\\z"); // which Qt knows of itself
    REQUIRE(bareOffset.match(name).hasMatch() || QFileInfo("/usr/share/zoneinfo/" + name).isFile());
    const QTimeZone zone(name.toUtf8());
    REQUIRE(zone.isValid());
    checkMoment(schedule.date, name, zone);
    checkWallTime(day, time, zone);
    return 0;
}
