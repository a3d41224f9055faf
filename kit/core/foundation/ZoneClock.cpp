// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ZoneClock.h"

#include "DozelyKit/core/foundation/DateExtensions.h"

#include <QFileInfo>

#include <algorithm>

namespace dozely
{

namespace
{
constexpr qint64 second = 1000;
/// No zone is further from UTC, and no two offsets are further apart than twice this. POSIX rules reach a
/// day.
constexpr qint64 furthest = 25 * 3600 * second;

/// Thirty years of a zone with summer time. Who looks further begins anew.
constexpr size_t mostKept = 64;
} // namespace

ZoneClock::ZoneClock(const QTimeZone &zone) : ZoneClock(0)
{
    if (!zone.isValid())
        return;
    m_zone = zone;
    m_last = {0, 0, 0, 0}; // holds nothing
    m_kept = std::make_shared<std::vector<Stretch>>();
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
        m_last = kept(moment);
    return m_last;
}

ZoneClock::Stretch ZoneClock::kept(qint64 moment) const
{
    const auto isBefore = [](qint64 at, const Stretch &stretch) { return at < stretch.begin; };
    const auto later = std::upper_bound(m_kept->begin(), m_kept->end(), moment, isBefore);
    if (later != m_kept->begin() && std::prev(later)->holds(moment))
        return *std::prev(later);
    const Stretch stretch = found(moment);
    if (m_kept->size() >= mostKept)
        m_kept->assign(1, stretch);
    else
        m_kept->insert(later, stretch);
    return stretch;
}

ZoneClock::Stretch ZoneClock::found(qint64 moment) const
{
    const auto date = [](qint64 at) { return QDateTime::fromMSecsSinceEpoch(at, Qt::UTC); };
    const auto offsetAt = [&](qint64 at) { return m_zone.offsetFromUtc(date(at)) * second; };
    Stretch stretch{noBegin, noEnd, offsetAt(moment), 0};
    stretch.offsetBefore = stretch.offset;
    if (!m_zone.hasTransitions())
        return stretch;
    // Some changes are of the name alone. A rule may have nothing but such, for ever.
    constexpr int inARow = 8;
    qint64 at = moment + 1; // each question is for what lies strictly before, or after
    for (int i = 0; i < inARow && stretch.offsetBefore == stretch.offset; ++i) {
        const QDateTime before = m_zone.previousTransition(date(at)).atUtc;
        stretch.begin = before.isValid() ? before.toMSecsSinceEpoch() : noBegin;
        if (!before.isValid())
            break;
        stretch.offsetBefore = offsetAt(stretch.begin - 1);
        at = stretch.begin;
    }
    at = moment;
    for (int i = 0; i < inARow; ++i) {
        QDateTime after = m_zone.nextTransition(date(at)).atUtc;
        if (!after.isValid()) // as Qt says at the very moment of the last one that is listed, where a rule
                              // goes on
            after = m_zone.nextTransition(date(at + 1)).atUtc;
        stretch.end = after.isValid() ? after.toMSecsSinceEpoch() : noEnd;
        if (!after.isValid() || offsetAt(stretch.end) != stretch.offset)
            break;
        at = stretch.end;
    }
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
    // A copy, which Qt reads for what it takes to be the name of a zone.
    const QTimeZone copied("../../../etc/localtime");
    return copied.isValid() ? copied : QTimeZone::systemTimeZone();
}

} // namespace dozely
