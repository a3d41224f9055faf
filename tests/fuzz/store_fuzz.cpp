// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "hosts/daemon/CompactSchedules.h"
#include "hosts/daemon/Scheduler.h"
#include "support/FuzzedSystem.h"
#include "support/Steer.h"

using namespace dozely;

using PropertyList::Format;

namespace
{
const QString arrayKey = "Schedule Array";

/// A store that is made by the input, and what is known of it without reading it.
struct MadeStore {
    QVariantMap root;
    QList<Schedule> good; ///< Those that nothing was done to, in their order.
};

class StoreMaker
{
public:
    StoreMaker(Steer &steer, const QDateTime &now) : m_steer(steer), m_now(now) {}

    MadeStore make()
    {
        MadeStore store;
        QVariantList entries;
        for (int left = m_steer.below(12); left > 0; --left) {
            const Schedule schedule = goodSchedule(static_cast<int>(entries.size()));
            if (m_steer.flag()) {
                store.good += schedule;
                entries += schedule.toEntry();
            } else {
                entries += mutated(schedule, store.good);
            }
        }
        store.root = m_steer.dictionary(m_now);
        store.root.insert(arrayKey, entries);
        return store;
    }

    Schedule goodSchedule(int number)
    {
        Schedule schedule;
        schedule.identifier = QString("schedule-%1").arg(number);
        schedule.name = "Name " + QString::number(m_steer.byte());
        schedule.isEnabled = m_steer.below(4) != 0;
        schedule.bundlePath = QString("/Library/%1.plugin").arg(m_steer.below(3));
        if (m_steer.flag())
            schedule.parameters = {{"Alert", m_steer.below(3)}, {"When", m_now}};
        schedule.date = m_now.addSecs((m_steer.byte() - 128) * 1800);
        schedule.timeZone = m_steer.oneOf<const char *>({"", "Europe/Berlin", "Etc/UTC", "Asia/Kathmandu"});
        if (m_steer.flag())
            schedule.owner = m_steer.oneOf<quint32>({0, 1000, 0xfffffffe});
        if (m_steer.flag())
            schedule.otherKeys.insert("Colour", m_steer.below(10));
        return schedule;
    }

private:
    /// The entry with something done to it, which may leave it a good one or not. Its identifier is none of
    /// those that good ones have, unless an earlier good one has it, so that it must be a bad one.
    QVariant mutated(const Schedule &schedule, const QList<Schedule> &earlier)
    {
        if (m_steer.below(8) == 0)
            return m_steer.value(m_now);
        QVariantMap entry = schedule.toEntry();
        entry.insert("Identifier", "odd-" + schedule.identifier);
        static const QStringList keys{"Identifier", "Name", "Is Enabled", "Bundle Path",
                                      "Parameters", "Date", "Time Zone",  "Owner"};
        for (int left = 1 + m_steer.below(3); left > 0; --left) {
            const QString &key = keys.at(m_steer.below(static_cast<int>(keys.size())));
            if (m_steer.below(4) == 0)
                entry.remove(key);
            else
                entry.insert(key, m_steer.value(m_now));
        }
        if (entry.value("Identifier").toString().startsWith("schedule-"))
            entry.insert("Identifier", "");
        if (!earlier.isEmpty() && m_steer.below(8) == 0)
            entry.insert("Identifier", earlier.last().identifier); // taken
        if (m_steer.below(4) == 0)
            entry.insert(m_steer.oneOf<const char *>({"Colour", "", "Owner "}), 5);
        return entry;
    }

    Steer &m_steer;
    const QDateTime m_now;
};

/// What a list holds under the array's key.
QVariantList entriesIn(const QByteArray &data)
{
    const auto root = PropertyList::fromData(data, nullptr, PropertyList::ofTheSystem);
    REQUIRE(root);
    return root->toMap().value(arrayKey).toList();
}

void checkSchedule(const Schedule &schedule)
{
    REQUIRE(!schedule.identifier.isEmpty());
    REQUIRE(schedule.date.isValid() && schedule.date.timeSpec() == Qt::UTC &&
            schedule.date.time().msec() == 0);
    REQUIRE(schedule.calendarDate() == schedule.date);
    REQUIRE(schedule.fullBundlePath() == RootFolder::path() + schedule.bundlePath);
    const auto again = Schedule::fromEntry(schedule.toEntry());
    REQUIRE(again && *again == schedule);
}

/// Each entry is a schedule or a fault, and each fault is one line that names its entry.
void checkContent(const ScheduleStore::Content &content, const QVariantList &entries)
{
    REQUIRE(content.exists);
    REQUIRE(content.schedules.size() + content.faults.size() == entries.size());
    QSet<QString> identifiers;
    for (const Schedule &schedule : content.schedules) {
        checkSchedule(schedule);
        REQUIRE(!identifiers.contains(schedule.identifier));
        identifiers += schedule.identifier;
    }
    qsizetype last = 0;
    for (const QString &fault : content.faults) {
        REQUIRE(fault.startsWith("Schedule entry "));
        const qsizetype number = fault.mid(15).section(' ', 0, 0).toLongLong();
        REQUIRE(number > last && number <= entries.size());
        last = number;
        for (const QChar c : fault)
            REQUIRE(c.category() != QChar::Other_Control && c.category() != QChar::Separator_Line);
    }
    REQUIRE(!content.hasUnknown || !content.faults.isEmpty());
    REQUIRE(content.faultyIdentifiers.size() <= content.faults.size());
}

/// What the daemon makes of the schedules.
void checkPlans(const QList<Schedule> &schedules, const Clock &clock)
{
    REQUIRE(CompactSchedules::thaw(CompactSchedules::freeze(schedules)) == schedules);
    Scheduler scheduler(clock);
    scheduler.setSchedules(schedules);
    std::optional<QDateTime> earliest;
    qsizetype due = 0;
    for (const Schedule &schedule : schedules) {
        if (!schedule.isEnabled)
            continue;
        if (!earliest || schedule.date < *earliest)
            earliest = schedule.date;
        due += schedule.date <= clock.currentDate() ? 1 : 0;
    }
    REQUIRE(scheduler.nextDate() == earliest);
    const QList<Occurrence> occurrences = scheduler.due();
    REQUIRE(occurrences.size() == due);
    for (const Occurrence &occurrence : occurrences)
        scheduler.noteBegun(occurrence, ActingPlace::Daemon);
    REQUIRE(scheduler.due().isEmpty());
    // What has begun is not next: what is next lies ahead.
    REQUIRE(!scheduler.nextDate() || *scheduler.nextDate() > clock.currentDate());
}

/// Written again without a change it is the same; with changes, it has those and nothing else.
void checkRewriting(const QByteArray &data, const ScheduleStore::Content &content, Schedule added)
{
    const QVariantList entries = entriesIn(data);
    const auto same = ScheduleStore::rewritten(data, content.schedules);
    REQUIRE(same && entriesIn(*same) == entries);

    while (std::any_of(content.schedules.begin(), content.schedules.end(),
                       [&](const Schedule &schedule) { return schedule.identifier == added.identifier; }))
        added.identifier += '+';
    QList<Schedule> wanted = content.schedules;
    if (!wanted.isEmpty())
        wanted.removeFirst();
    if (!wanted.isEmpty())
        wanted.last().isEnabled = !wanted.last().isEnabled;
    wanted += added;
    const auto changed = ScheduleStore::rewritten(data, wanted);
    if (!changed)
        return; // it was as large as it may be
    const auto again = ScheduleStore::parse(*changed);
    REQUIRE(again);
    // An entry may have been bad for the identifier of one that is gone.
    for (const Schedule &schedule : std::as_const(wanted))
        REQUIRE(again->schedules.contains(schedule));
    REQUIRE(again->schedules.size() + again->faults.size() ==
            entries.size() - (content.schedules.isEmpty() ? 0 : 1) + 1);
}
} // namespace

/// A store of schedules. With an even first byte what follows makes one, entry by entry, good ones beside
/// others, of which it is known what must come of them; with an odd one what follows is the file.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static FuzzedSystem system;
    Steer steer(data, size);
    if (steer.flag()) {
        const QByteArray bytes = steer.rest();
        const auto content = ScheduleStore::parse(bytes);
        if (!content) {
            REQUIRE(!content.error().text.isEmpty());
            REQUIRE(!ScheduleStore::rewritten(bytes, {})); // never replaced by what was not understood
            return 0;
        }
        checkContent(*content, entriesIn(bytes));
        checkPlans(content->schedules, *system.clock);
        return 0;
    }
    const Format format = steer.flag() ? Format::Binary : Format::Xml;
    StoreMaker maker(steer, system.now());
    const MadeStore made = maker.make();
    const QByteArray bytes = PropertyList::toData(made.root, format, PropertyList::ofTheSystem);
    if (bytes.isNull())
        return 0; // a text that XML cannot carry
    const auto content = ScheduleStore::parse(bytes);
    REQUIRE(content);
    checkContent(*content, entriesIn(bytes));
    QList<Schedule> kept = content->schedules;
    kept.removeIf([](const Schedule &schedule) { return !schedule.identifier.startsWith("schedule-"); });
    REQUIRE(kept == made.good);
    checkPlans(content->schedules, *system.clock);
    checkRewriting(bytes, *content, maker.goodSchedule(100));
    return 0;
}
