// SPDX-License-Identifier: MIT
#include "hosts/daemon/JournalStory.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "hosts/daemon/DaemonController.h"

using namespace dozely;

namespace
{
constexpr std::chrono::milliseconds afterTheStart(50);
constexpr std::chrono::milliseconds untilThereIsRoom(200);
constexpr int mostATurn = 16;           // so that nothing that is due waits for long
constexpr qsizetype mostWaiting = 4096; // for a journal that takes nothing

/// One for each kind of entry (MESSAGE_ID of systemd.journal-fields(7)).
constexpr char announcedId[] = "6f0d8d0a5c0f4f35b8c7e1d3a94e2b10";
constexpr char begunId[] = "6f0d8d0a5c0f4f35b8c7e1d3a94e2b11";
constexpr char outcomeId[] = "6f0d8d0a5c0f4f35b8c7e1d3a94e2b12";

bool isBad(OccurrenceState state)
{
    switch (state) {
    case OccurrenceState::Failed:
    case OccurrenceState::NotPerformed:
    case OccurrenceState::Interrupted:
    case OccurrenceState::Unknown:
    case OccurrenceState::Missed:
    case OccurrenceState::Skipped:
        return true;
    default:
        return false;
    }
}

QString textOf(const QDateTime &date)
{
    return date.toUTC().toString(Qt::ISODate);
}
} // namespace

JournalStory::JournalStory(DaemonController &controller, Clock &clock)
    : m_controller(controller), m_clock(clock)
{
    ScheduleKeeper &keeper = controller.keeper();
    connect(&controller, &DaemonController::announced, this, [this](const Occurrence &occurrence) {
        tell({occurrence.key(), announcedId, false, "is announced", {{"DOZELY_OUTCOME", "announced"}}});
    });
    connect(&keeper, &ScheduleKeeper::began, this, [this](const Occurrence &occurrence) {
        tell({occurrence.key(), begunId, false, "begins", {{"DOZELY_OUTCOME", "begun"}}});
    });
    connect(&keeper, &ScheduleKeeper::noted, this, &JournalStory::tellOutcome);
}

JournalStory::~JournalStory()
{
    send(static_cast<int>(m_waiting.size()));
}

void JournalStory::tellOutcome(const OccurrenceRecord::Key &key)
{
    const auto entry = m_controller.keeper().scheduler().record().find(key.first, key.second);
    if (!entry || entry->state == OccurrenceState::Begun)
        return;
    const QString state = OccurrenceRecord::nameOf(entry->state);
    Entry told{key, outcomeId, isBad(entry->state), state, {{"DOZELY_OUTCOME", state}}};
    const auto add = [&](const char *name, const QString &text) { told.details += {name, text}; };
    if (entry->lateness)
        add("DOZELY_LATENESS_MSEC", QString::number(*entry->lateness));
    if (entry->askedBy)
        add("DOZELY_ASKED_BY", QString::number(*entry->askedBy));
    if (entry->handedTo)
        add("DOZELY_HANDED_TO", QString::number(*entry->handedTo));
    if (entry->postponedTo.isValid())
        add("DOZELY_POSTPONED_TO", textOf(entry->postponedTo));
    if (entry->run)
        add("DOZELY_COUNT", QString::number(entry->run->count));
    if (entry->exitStatus)
        add("DOZELY_EXIT_STATUS", QString::number(*entry->exitStatus));
    if (!entry->failure.isEmpty()) {
        add("DOZELY_FAILURE", entry->failure);
        told.what += QString(": %1").arg(logLabel(entry->failure));
    } else if (entry->exitStatus.value_or(0) != 0) {
        told.what += QString(": exit %1").arg(*entry->exitStatus);
    }
    tell(std::move(told));
}

void JournalStory::tell(Entry entry)
{
    if (m_waiting.size() >= mostWaiting)
        return;
    m_waiting += std::move(entry);
    sendSoon(afterTheStart);
}

void JournalStory::sendSoon(std::chrono::milliseconds delay)
{
    if (std::exchange(m_isSendComing, true))
        return;
    m_clock.callAfter(delay, this, [this] {
        m_isSendComing = false;
        send(mostATurn);
    });
}

void JournalStory::send(int most)
{
    for (int i = 0; i < most && !m_waiting.isEmpty(); ++i) {
        if (m_journal.send(fieldsOf(m_waiting.constFirst())) == Journal::Sent::Later) {
            sendSoon(untilThereIsRoom);
            return;
        }
        m_waiting.removeFirst();
    }
    if (!m_waiting.isEmpty())
        sendSoon({});
}

Journal::Fields JournalStory::fieldsOf(const Entry &entry) const
{
    const Scheduler &scheduler = m_controller.keeper().scheduler();
    const auto place = scheduler.placeOf(entry.key.first);
    const Schedule schedule = place ? Schedule(scheduler.schedules().at(*place)) : Schedule();
    const QString unit = m_controller.unitOf(entry.key);
    constexpr char warning[] = "4";
    constexpr char information[] = "6";
    const QString name = place ? schedule.name : entry.key.first;
    Journal::Fields fields{{"MESSAGE", QString("Schedule \"%1\" %2").arg(logLabel(name), entry.what)},
                           {"MESSAGE_ID", entry.messageId},
                           {"PRIORITY", entry.isBad ? warning : information},
                           {"SYSLOG_IDENTIFIER", "dozelyd"},
                           {"DOZELY_SCHEDULE", name},
                           {"DOZELY_IDENTIFIER", entry.key.first},
                           {"DOZELY_OCCURRENCE", textOf(entry.key.second)}};
    if (place)
        fields += {"DOZELY_USER", QString::number(schedule.owner.value_or(0))};
    if (!unit.isEmpty())
        fields += {"DOZELY_UNIT", unit};
    return fields + entry.details;
}
