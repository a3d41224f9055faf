// SPDX-License-Identifier: MIT
#include "hosts/daemon/ScheduleKeeper.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "hosts/daemon/CompactSchedules.h"
#include "hosts/daemon/OccurrenceFile.h"

using namespace dozely;

namespace
{
/// Gathers the ends of several occurrences in one write; their beginnings are on disk by then.
constexpr std::chrono::milliseconds saveDelay(50);

/// So much of what one user asks for is remembered: a bound for the record, whatever programs of that user
/// do.
constexpr qsizetype mostAskedByOneUser = 200;
} // namespace

ScheduleKeeper::ScheduleKeeper(Clock &clock, QObject *parent)
    : QObject(parent), m_clock(clock), m_scheduler(clock)
{
    loadRecord();
}

void ScheduleKeeper::loadRecord()
{
    OccurrenceFile::Loaded loaded = OccurrenceFile::load();
    if (!loaded.damage.isEmpty()) {
        ZDRLog("The record of occurrences is damaged and was moved aside: %@", logLabel(loaded.damage));
        m_scheduler.setNothingKnownBefore(m_clock.currentDate());
    }
    const QStringList interrupted = loaded.record.interruptBegun();
    for (const QString &occurrence : interrupted)
        ZDRLog("Schedule %@ was interrupted and is not repeated", logLabel(occurrence));
    m_scheduler.record() = std::move(loaded.record);
    if (!interrupted.isEmpty())
        saveSoon();
}

void ScheduleKeeper::readStore()
{
    QStringList complaints;
    if (auto content = ScheduleStore::read()) {
        complaints = content->faults;
        const bool exists = content->exists;
        keep(std::move(content->schedules), content->faultyIdentifiers);
        content = ScheduleStore::Content();
        // What a bad entry stands for is not known, so nothing is forgotten.
        if (exists && complaints.isEmpty()) {
            reportGone();
            if (m_scheduler.pruneRecord())
                saveSoon();
        }
    } else {
        complaints += QString("%1 cannot be used, its schedules stay as they were: %2")
                          .arg(ScheduleStore::path(), content.error().text);
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
    CompactSchedules::giveFreeMemoryBack();
}

void ScheduleKeeper::reportGone() const
{
    for (const auto &[identifier, date] : m_scheduler.record().asked()) {
        if (!m_scheduler.schedule(identifier))
            ZDRLog("Schedule %@ was not performed: it was removed", logLabel(identifier));
    }
}

void ScheduleKeeper::keep(QList<Schedule> schedules, const QSet<QString> &faultyIdentifiers)
{
    QSet<QString> missing = faultyIdentifiers;
    for (const Schedule &schedule : schedules)
        missing.remove(schedule.identifier);
    for (const Schedule &former : m_scheduler.schedules()) {
        if (missing.contains(former.identifier))
            schedules += former; // its last good state
    }
    if (schedules == m_scheduler.schedules())
        return;
    const QByteArray frozen = CompactSchedules::freeze(schedules);
    schedules.clear();
    m_scheduler.setSchedules({});
    CompactSchedules::giveFreeMemoryBack();
    m_scheduler.setSchedules(CompactSchedules::thaw(frozen));
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

void ScheduleKeeper::noteBegun(const Occurrence &occurrence)
{
    m_scheduler.note(occurrence, OccurrenceState::Begun);
    // An occurrence is performed even when the disk refuses: within its time-out it might run twice after a
    // restart, but without this it would not run at all.
    (void)save();
}

void ScheduleKeeper::note(const Occurrence &occurrence, OccurrenceState state,
                          std::optional<quint32> handedTo)
{
    m_scheduler.note(occurrence, state, handedTo);
    saveSoon();
}

void ScheduleKeeper::flush()
{
    if (m_isDirty)
        (void)save();
}

void ScheduleKeeper::saveSoon()
{
    m_isDirty = true;
    if (m_isSaveComing)
        return;
    m_isSaveComing = true;
    m_clock.callAfter(saveDelay, this, [this] {
        m_isSaveComing = false;
        flush();
    });
}

Result<void> ScheduleKeeper::save()
{
    m_isDirty = false;
    auto saved = OccurrenceFile::save(m_scheduler.record());
    const QString error = saved ? QString() : saved.error().text;
    if (!error.isEmpty() && error != m_saveError)
        ZDRLog("The record of occurrences could not be saved: %@", logLabel(error));
    m_saveError = error;
    return saved;
}
