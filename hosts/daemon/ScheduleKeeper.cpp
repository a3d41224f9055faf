// SPDX-License-Identifier: MIT
#include "hosts/daemon/ScheduleKeeper.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/IdleMemory.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "hosts/daemon/CompactSchedules.h"

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
/// Gathers the ends of several occurrences in one write; their beginnings are on disk by then.
constexpr std::chrono::milliseconds saveDelay(50);

/// Between attempts to read a store that cannot be read, and to save a record that the disk refuses.
/// @{
constexpr std::chrono::seconds firstPause(1);
constexpr std::chrono::seconds longestPause(60);
/// @}

constexpr qint64 daysShown = 30; // a schedule that is over

constexpr qint64 daysRemembered = 400; // a year, and time to look at its end

/// So much of what one user asks for is remembered: a bound for the record, whatever programs of that user
/// do.
constexpr qsizetype mostAskedByOneUser = 200;

constexpr qsizetype mostOutputsInMemory = 1000;

/// So long nothing happens to an occurrence before the memory that it took is given back.
constexpr std::chrono::seconds untilRest(10);
constexpr std::chrono::seconds soon(3); // what is due then is being made ready

/// An agent may hand an occurrence back, or say what became of it, for so long.
constexpr std::chrono::hours handOverTime(1);
} // namespace

ScheduleKeeper::ScheduleKeeper(Clock &clock, const OccurrenceDatabase::Limits &limits, const GoesOn &goesOn,
                               QObject *parent)
    : QObject(parent), m_clock(clock), m_scheduler(clock), m_pause(firstPause), m_savePause(firstPause)
{
    m_database.setLimits(limits);
    loadRecord(goesOn);
}

bool ScheduleKeeper::isLongOver(qint32 place) const
{
    const Schedule &schedule = m_scheduler.schedules().at(place);
    const QList<OccurrenceRecord::Key> &asked = m_scheduler.record().asked();
    const bool isAskedFor = std::any_of(asked.cbegin(), asked.cend(), [&](const OccurrenceRecord::Key &key) {
        return key.first == schedule.identifier;
    });
    if (schedule.staysWhenOver || isAskedFor || !m_scheduler.isOver(place))
        return false;
    QDateTime end = schedule.date;
    for (const QDateTime &date : m_scheduler.record().dates(schedule.identifier)) {
        const auto entry = m_scheduler.record().find(schedule.identifier, date);
        if (!entry->isOver())
            return false;
        for (const QDateTime &later : {entry->begun, entry->handedOver}) {
            if (later.isValid())
                end = std::max(end, later);
        }
    }
    return end.addDays(daysShown) < m_clock.currentDate();
}

void ScheduleKeeper::removeOver()
{
    QList<Schedule> over;
    for (qint32 place = 0; place < m_scheduler.schedules().size(); ++place) {
        if (isLongOver(place))
            over += m_scheduler.stored(place);
    }
    if (over.isEmpty())
        return;
    flush();
    const auto edited = ScheduleStore::edit(
        [&](QList<Schedule> &schedules) {
            // One that was changed meanwhile is another.
            over.removeIf([&](const Schedule &schedule) { return !schedules.contains(schedule); });
            schedules.removeIf([&](const Schedule &schedule) { return over.contains(schedule); });
            return true;
        },
        std::chrono::milliseconds(0));
    if (!edited) {
        ZDRLog("What is over stays in the store: %@", logLabel(edited.error().text));
        return;
    }
    for (const Schedule &schedule : std::as_const(over))
        ZDRLog("Schedule \"%@\" was removed: it is over for %lld days", logLabel(schedule.name),
               static_cast<qlonglong>(daysShown));
}

void ScheduleKeeper::loadRecord(const GoesOn &goesOn)
{
    OccurrenceDatabase::Opened opened = m_database.open(m_clock.currentDate());
    for (const QString &complaint : std::as_const(opened.complaints))
        ZDRLog("%@", logLabel(complaint));
    m_scheduler.setNothingKnownBefore(opened.nothingKnownBefore);
    m_interrupted = opened.record.interruptBegun([&](const auto &key, const OccurrenceEntry &entry) {
        return entry.place == ActingPlace::Daemon && goesOn && goesOn(key);
    });
    m_scheduler.setRecord(std::move(opened.record));
    if (m_scheduler.record().hasChanges())
        saveSoon();
}

void ScheduleKeeper::tryAgainLater()
{
    m_clock.callAfter(m_pause, this, [this, reading = m_reading] {
        if (reading != m_reading)
            return; // it was read meanwhile
        m_pause = std::min(2 * m_pause, longestPause);
        Q_EMIT storeMayBeReadable();
    });
}

/// Once the store was read, which has the names.
void ScheduleKeeper::tellInterrupted()
{
    for (const auto &[identifier, date] : std::exchange(m_interrupted, {})) {
        const auto schedule = m_scheduler.schedule(identifier);
        const QString name =
            schedule ? QString("\"%1\"").arg(logLabel(schedule->name)) : logLabel(identifier); // it is gone
        ZDRLog("Schedule %@ at %@ was interrupted and is not repeated", name, date.toString(Qt::ISODate));
    }
}

void ScheduleKeeper::readStore()
{
    ++m_reading;
    QStringList complaints;
    if (auto content = ScheduleStore::read()) {
        complaints = content->faults + takeOutBadRules(content->schedules, content->faultyIdentifiers);
        const bool exists = content->exists;
        keep(std::exchange(content->schedules, {}), content->faultyIdentifiers);
        if (exists)
            forgetGone(content->faultyIdentifiers, content->hasUnknown);
        m_wasEverRead = true;
        if (std::exchange(m_whyUnread, std::nullopt))
            Q_EMIT readAtLast();
        m_pause = firstPause;
    } else {
        const char *const whatNow =
            m_wasEverRead ? "its schedules stay as they were" : "none of its schedules was read";
        complaints +=
            QString("%1 cannot be used, %2: %3").arg(ScheduleStore::path(), whatNow, content.error().text);
        if (!m_wasEverRead)
            m_whyUnread = content.error();
        tryAgainLater();
    }
    for (const QString &complaint : complaints) {
        if (!m_complaints.contains(complaint))
            ZDRLog("%@", complaint);
    }
    m_complaints = complaints;
    if (m_scheduleCount != m_scheduler.schedules().size()) {
        m_scheduleCount = m_scheduler.schedules().size();
        ZDRLog("Schedules: %lld", static_cast<qlonglong>(m_scheduleCount));
    }
    tellInterrupted();
    rest();
}

OccurrenceDatabase::Needed ScheduleKeeper::needed() const
{
    return [this](const QString &identifier) {
        const auto calendar = m_scheduler.record().calendar(identifier);
        return OccurrenceDatabase::Occurrences{m_scheduler.currentDate(identifier),
                                               calendar ? calendar->settled : QDateTime()};
    };
}

/// What a bad entry stands for is kept: all there is, when one does not even have a readable identifier.
void ScheduleKeeper::forgetGone(const QSet<QString> &faultyIdentifiers, bool hasUnknown)
{
    flush();
    if (m_scheduler.record().hasChanges())
        return; // what the disk does not have yet is not dropped from memory
    const auto isGone = [&](const QString &identifier) {
        return !hasUnknown && !faultyIdentifiers.contains(identifier) && !m_scheduler.placeOf(identifier);
    };
    for (const auto &[identifier, date] : m_scheduler.record().asked() + m_scheduler.record().postponed()) {
        if (isGone(identifier))
            ZDRLog("Schedule %@ was not performed: it was removed", logLabel(identifier));
    }
    m_scheduler.pruneRecord(isGone);
    if (!m_mayHoldGone)
        return;
    // By a clock that is doubted nothing is long ago.
    const bool isDoubted = m_scheduler.isClockDoubted();
    const QDateTime oldest = isDoubted ? QDateTime::fromSecsSinceEpoch(0, Qt::UTC)
                                       : m_clock.currentDate().addDays(-daysRemembered);
    const auto forgotten = m_database.forget(isGone, oldest, needed());
    m_mayHoldGone = !forgotten || isDoubted || hasUnknown || !faultyIdentifiers.isEmpty();
}

/// Whatever became of an occurrence earlier, however long ago, it does not come due again: what the schedules
/// in force may ask about has to be in memory.
void ScheduleKeeper::learnAbout(const QList<Schedule> &schedules)
{
    QHash<QString, QDateTime> known;
    for (qint32 place = 0; place < m_scheduler.schedules().size(); ++place) {
        const Schedule former = m_scheduler.stored(place);
        known.insert(former.identifier, former.date);
    }
    QList<OccurrenceRecord::Key> once;
    QList<OccurrenceRecord::Key> repeated;
    for (const Schedule &schedule : schedules) {
        const OccurrenceRecord::Key key(schedule.identifier, schedule.date);
        const QDateTime former = known.take(schedule.identifier);
        if (schedule.recurrence && !m_scheduler.record().calendar(schedule.identifier))
            repeated += {schedule.identifier, schedule.date.addMSecs(-1)};
        else if (former != schedule.date && !m_scheduler.record().find(key.first, key.second))
            once += key;
    }
    // What is on record of one that repeats, from where it is settled on, has been in memory from the start.
    for (const auto &found : {m_database.findAll(once), m_database.findLater(repeated)}) {
        for (const auto &[key, entry] : found ? *found : OccurrenceDatabase::Found()) {
            if (!m_scheduler.record().find(key.first, key.second))
                m_scheduler.record().restore(key, entry);
        }
    }
    m_mayHoldGone |= !known.isEmpty();
}

/// A rule that there is no sense in makes its schedule a bad entry of the store.
QStringList ScheduleKeeper::takeOutBadRules(QList<Schedule> &schedules,
                                            QSet<QString> &faultyIdentifiers) const
{
    QStringList complaints;
    QHash<QString, ZoneClock> zones;
    schedules.removeIf([&](const Schedule &schedule) {
        if (!schedule.recurrence)
            return false;
        const auto place = m_scheduler.placeOf(schedule.identifier);
        const Schedule *const former = place ? &m_scheduler.schedules().at(*place) : nullptr;
        if (former && former->recurrence == schedule.recurrence && former->timeZone == schedule.timeZone)
            return false;
        auto zone = zones.find(schedule.timeZone);
        if (zone == zones.end())
            zone = zones.insert(schedule.timeZone, ZoneClock(schedule.zone()));
        const auto series = OccurrenceSeries::of(*schedule.recurrence, *zone);
        if (series)
            return false;
        complaints += QString("Schedule \"%1\" is bad: %2").arg(logLabel(schedule.name), series.error().text);
        faultyIdentifiers.insert(schedule.identifier);
        return true;
    });
    return complaints;
}

/// What they had before the record was lost is not told one by one.
void ScheduleKeeper::tellOfLoss(const QList<Schedule> &schedules) const
{
    const QDateTime before = m_scheduler.nothingKnownBefore();
    const auto count = std::count_if(schedules.cbegin(), schedules.cend(), [&](const Schedule &schedule) {
        return before.isValid() && schedule.recurrence && schedule.date <= before &&
               !m_scheduler.record().calendar(schedule.identifier);
    });
    if (count > 0)
        ZDRLog("Schedules that repeat: %lld; what they had up to %@ is skipped: it may have run before the "
               "record was lost",
               static_cast<qlonglong>(count), before.toString(Qt::ISODate));
}

/// What is postponed of a schedule that was disabled, or has another date now, is nobody's wish any more.
void ScheduleKeeper::dropPostponed()
{
    const QList<OccurrenceRecord::Key> postponed = m_scheduler.record().postponed();
    for (const auto &[identifier, date] : postponed) {
        const auto schedule = m_scheduler.schedule(identifier);
        const bool isMoved = schedule && !schedule->recurrence && schedule->date != date;
        if (!schedule || (schedule->isEnabled && !isMoved))
            continue;
        note({*schedule, date}, OccurrenceState::Removed);
        ZDRLog("Schedule \"%@\": what was postponed is not performed: it was %@", logLabel(schedule->name),
               QString(isMoved ? "given another date" : "disabled"));
    }
}

void ScheduleKeeper::keep(QList<Schedule> schedules, const QSet<QString> &faultyIdentifiers)
{
    QSet<QString> missing = faultyIdentifiers;
    for (const Schedule &schedule : schedules)
        missing.remove(schedule.identifier);
    QList<qint32> formerPlaces;
    for (const QString &identifier : std::as_const(missing)) {
        if (const auto place = m_scheduler.placeOf(identifier))
            formerPlaces += *place;
    }
    std::sort(formerPlaces.begin(), formerPlaces.end());
    for (const qint32 place : std::as_const(formerPlaces))
        schedules += m_scheduler.stored(place); // its last good state
    if (m_scheduler.hasStored(schedules))
        return;
    learnAbout(schedules);
    tellOfLoss(schedules);
    const QByteArray frozen = CompactSchedules::freeze(schedules);
    schedules.clear();
    m_scheduler.setSchedules({});
    IdleMemory::giveHeapBack();
    m_scheduler.setSchedules(CompactSchedules::thaw(frozen));
    dropPostponed();
    if (m_scheduler.record().hasChanges())
        saveSoon();
}

Result<void> ScheduleKeeper::noteAsked(const Occurrence &occurrence, quint32 userId)
{
    if (!m_scheduler.record().makeRoom(userId, mostAskedByOneUser))
        return Error{QString("%1 actions that this user asked for are not over").arg(mostAskedByOneUser)};
    m_scheduler.noteAsked(occurrence, userId);
    const auto saved = save();
    if (saved)
        return {};
    m_scheduler.record().remove(occurrence.schedule.identifier, occurrence.date);
    return Error{"the record of occurrences could not be saved"};
}

void ScheduleKeeper::noteBegun(const QList<Beginning> &beginnings)
{
    for (const Beginning &beginning : beginnings)
        m_scheduler.noteBegun(beginning.occurrence, beginning.place);
    // An occurrence is performed even when the disk refuses: within its time-out it might run twice after a
    // restart, but without this it would not run at all.
    (void)save();
    for (const Beginning &beginning : beginnings)
        Q_EMIT began(beginning.occurrence);
}

void ScheduleKeeper::takeBack(const Occurrence &occurrence)
{
    m_scheduler.takeBack(occurrence);
    saveSoon();
}

void ScheduleKeeper::note(const Occurrence &occurrence, OccurrenceState state,
                          std::optional<quint32> handedTo)
{
    m_scheduler.note(occurrence, state, handedTo);
    saveSoon();
    Q_EMIT noted(occurrence.key());
}

void ScheduleKeeper::noteRun(const Schedule &schedule, const OccurrenceSeries::Run &run,
                             OccurrenceState state)
{
    m_scheduler.noteRun(schedule, run, state);
    saveSoon();
    Q_EMIT noted({schedule.identifier, run.last});
}

Result<void> ScheduleKeeper::noteForGood(const Occurrence &occurrence, const std::function<void()> &note)
{
    const QString &identifier = occurrence.schedule.identifier;
    const auto former = m_scheduler.record().find(identifier, occurrence.date);
    const auto calendar = m_scheduler.record().calendar(identifier);
    note();
    if (save()) {
        Q_EMIT noted(occurrence.key());
        return {};
    }
    m_scheduler.restore(occurrence, former, calendar);
    return Error{"the record of occurrences could not be saved"};
}

Result<void> ScheduleKeeper::noteRemoved(const Occurrence &occurrence, const QDateTime &upTo)
{
    const OccurrenceSeries::Run run =
        upTo.isValid() ? m_scheduler.runUpTo(occurrence, upTo) : m_scheduler.dueRun(occurrence);
    return noteForGood({occurrence.schedule, run.last},
                       [&] { m_scheduler.noteRun(occurrence.schedule, run, OccurrenceState::Removed); });
}

Result<void> ScheduleKeeper::notePostponed(const Occurrence &occurrence, const QDateTime &to)
{
    return noteForGood(occurrence, [&] { m_scheduler.notePostponed(occurrence, to); });
}

void ScheduleKeeper::noteInterrupted(const Occurrence &occurrence)
{
    note(occurrence, OccurrenceState::Interrupted);
    m_interrupted += {occurrence.schedule.identifier, occurrence.date};
    tellInterrupted();
}

void ScheduleKeeper::noteEnd(const Occurrence &occurrence, const PerformanceOutcome &outcome,
                             std::optional<quint32> handedTo)
{
    m_scheduler.noteEnd(occurrence, outcome, handedTo);
    // While the disk refuses, what would grow without end is given up.
    if (!outcome.output.isEmpty() && m_outputs.size() < mostOutputsInMemory)
        m_outputs.insert({occurrence.schedule.identifier, occurrence.date}, outcome.output);
    saveSoon();
    Q_EMIT ended(occurrence);
    Q_EMIT noted(occurrence.key());
}

void ScheduleKeeper::flush()
{
    (void)save();
}

void ScheduleKeeper::saveSoon()
{
    if (m_isSaveComing)
        return;
    m_isSaveComing = true;
    m_clock.callAfter(saveDelay, this, [this] {
        m_isSaveComing = false;
        flush();
    });
}

void ScheduleKeeper::saveAgainLater()
{
    if (m_isSaveRepeated)
        return;
    m_isSaveRepeated = true;
    m_clock.callAfter(m_savePause, this, [this] {
        m_isSaveRepeated = false;
        m_savePause = std::min(2 * m_savePause, longestPause);
        flush();
    });
}

Result<void> ScheduleKeeper::save()
{
    OccurrenceRecord &record = m_scheduler.record();
    if (!record.hasChanges())
        return {};
    restSoon();
    auto saved = m_database.write(record.changes(), needed(), m_outputs, record.calendarChanges());
    if (saved) {
        record.pruneChanged([this](const QString &identifier,
                                   const QDateTime &date) { return m_scheduler.isNeeded(identifier, date); },
                            m_clock.currentDate().addDuration(-handOverTime));
        record.forgetChanges();
        m_outputs.clear();
        m_savePause = firstPause;
    } else {
        saveAgainLater();
    }
    const QString error = saved ? QString() : saved.error().text;
    if (!error.isEmpty() && error != m_saveError)
        ZDRLog("The record of occurrences could not be saved: %@", logLabel(error));
    m_saveError = error;
    if (saved)
        Q_EMIT this->saved();
    return saved;
}

/// The daemon mostly sleeps: what many occurrences took at once it would keep for days.
void ScheduleKeeper::restSoon()
{
    m_isAtWork = m_isRestComing;
    if (std::exchange(m_isRestComing, true))
        return;
    m_clock.callAfter(untilRest, this, [this] {
        m_isRestComing = false;
        if (m_isAtWork || isDueSoon())
            restSoon();
        else
            rest();
    });
}

bool ScheduleKeeper::isDueSoon() const
{
    const QDateTime now = m_clock.currentDate();
    const auto next = m_scheduler.nextDate();
    return next && *next >= now && *next < now.addDuration(soon);
}

void ScheduleKeeper::rest()
{
    m_database.rest();
    IdleMemory::giveBack();
}
