// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ZoneClock.h"

#include "DozelyKit/core/foundation/DateExtensions.h"

#include <QFileInfo>

namespace dozely
{

namespace
{
constexpr qint64 second = 1000;
/// No zone is further from UTC, and no two offsets are further apart than twice this. POSIX rules reach a
/// day.
constexpr qint64 furthest = 25 * 3600 * second;
} // namespace

ZoneClock::ZoneClock(const QTimeZone &zone) : ZoneClock(0)
{
    if (!zone.isValid())
        return;
    m_zone = zone;
    m_last = {0, 0, 0, 0}; // holds nothing
}

ZoneClock::ZoneClock(qint64 fixedOffset) : m_last{noBegin, noEnd, fixedOffset, fixedOffset} {}

ZoneClock ZoneClock::of(const QDateTime &date)
{
    switch (date.timeSpec()) {
    case Qt::UTC:
    case Qt::OffsetFromUTC:
        return ZoneClock(date.offsetFromUtc() * second);
    case Qt::LocalTime:
    case Qt::TimeZone:
        break;
    }
    return ZoneClock(date.timeZone());
}

const ZoneClock::Stretch &ZoneClock::stretchAt(qint64 moment) const
{
    if (!m_last.holds(moment))
        m_last = found(moment);
    return m_last;
}

ZoneClock::Stretch ZoneClock::found(qint64 moment) const
{
    const auto offsetAt = [this](qint64 at) {
        return m_zone.offsetFromUtc(QDateTime::fromMSecsSinceEpoch(at, Qt::UTC)) * second;
    };
    const auto date = [](qint64 at) { return QDateTime::fromMSecsSinceEpoch(at, Qt::UTC); };
    const qint64 offset = offsetAt(moment);
    Stretch stretch{noBegin, noEnd, offset, offset};
    if (!m_zone.hasTransitions())
        return stretch;
    // Each question is for what lies strictly before, or after.
    const QDateTime before = m_zone.previousTransition(date(moment + 1)).atUtc;
    if (before.isValid()) {
        stretch.begin = before.toMSecsSinceEpoch();
        stretch.offsetBefore = offsetAt(stretch.begin - 1);
    }
    QDateTime after = m_zone.nextTransition(date(moment)).atUtc;
    if (!after.isValid()) // as Qt says at the very moment of the last change that is listed, where a rule
                          // goes on
        after = m_zone.nextTransition(date(moment + 1)).atUtc;
    if (after.isValid())
        stretch.end = after.toMSecsSinceEpoch();
    return stretch;
}

qint64 ZoneClock::momentOf(qint64 wallTime) const
{
    // Further from the stretch's begin than two offsets are apart, nothing before it has shown this.
    if (const qint64 moment = wallTime - m_last.offset;
        m_last.holds(moment) && (m_last.begin == noBegin || moment - m_last.begin >= 2 * furthest))
        return moment;
    for (Stretch stretch = stretchAt(wallTime - furthest);; stretch = stretchAt(stretch.end)) {
        const qint64 moment = wallTime - stretch.offset;
        if (moment < stretch.begin) // the change before it has skipped this
            return wallTime - stretch.offsetBefore;
        if (moment < stretch.end)
            return moment;
    }
}

void readZonesAgain()
{
    // Qt keeps what it read of some hundred zones, and lets go of those that were not asked for longest.
    // There are several times as many, so that each falls out on the way, those that are asked for first in
    // the end.
    for (const QByteArray &name : QTimeZone::availableTimeZoneIds())
        QTimeZone{name};
}

QTimeZone machineTimeZone()
{
    static const QByteArray defaultFile = ":/etc/localtime"; // as the C library reads it
    const QByteArray named = qgetenv("TZ");
    if (!named.isEmpty() && named != defaultFile)
        return QTimeZone::systemTimeZone();
    // Qt tells by the number of the file that the link leads to whether it has changed, which may be that of
    // a file that is gone; so the name is read anew each time.
    static const QString folder = "/zoneinfo/";
    const QString target = QFileInfo("/etc/localtime").symLinkTarget();
    const qsizetype begin = target.indexOf(folder);
    const QString name = begin < 0 ? QString() : target.mid(begin + folder.size());
    if (isTimeZoneName(name))
        return QTimeZone(name.toUtf8());
    return QTimeZone(QByteArray()); // a copy, by its content
}

} // namespace dozely
