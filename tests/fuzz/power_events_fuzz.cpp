// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/system/power/linux/RtcPowerEventScheduler_p.h"
#include "support/FuzzedSystem.h"
#include "support/Steer.h"

#include <cerrno>

using namespace dozely;

using Event = PowerEventScheduler::Event;
using Content = PowerEventStore::Content;

namespace
{
constexpr char folder[] = "/var/lib/dozely";
constexpr char file[] = "/var/lib/dozely/power-events.plist";
constexpr char clockFolder[] = "/sys/class/rtc/rtc0";
constexpr char wakeAlarm[] = "/sys/class/rtc/rtc0/wakealarm";

/// As the kernel does it: an alarm that is set cannot be set again, and one that has passed is none.
int writeAlarm(const FuzzedSystem &system, const QByteArray &text)
{
    const qint64 now = system.now().toSecsSinceEpoch();
    const qint64 value = text.toLongLong();
    if (value > now && system.read(wakeAlarm).trimmed().toLongLong() > now)
        return EBUSY;
    system.write(wakeAlarm, value > now ? text : QByteArray());
    return 0;
}

Event someEvent(Steer &steer, const QDateTime &now)
{
    const QDateTime time = steer.below(4) == 0 ? steer.date(now) : now.addSecs((steer.byte() - 64) * 60);
    const QString owner =
        steer.below(3) == 0 ? steer.text() : QString(steer.oneOf({"com.dozely", "pmset", "other"}));
    return {QDateTime::fromSecsSinceEpoch(time.toSecsSinceEpoch(), Qt::UTC), owner,
            QString(steer.flag() ? PowerEventScheduler::wake : PowerEventScheduler::powerOn)};
}

/// A file that is made by the input, and what is known of it without reading it.
struct MadeFile {
    QVariantMap root;
    QList<Event> events;
    QVariantList others;
};

MadeFile someFile(Steer &steer, const QDateTime &now)
{
    MadeFile made;
    QVariantList entries;
    for (int left = steer.below(10); left > 0; --left) {
        const Event event = someEvent(steer, now);
        QVariantMap entry{{"time", event.time}, {"scheduledby", event.owner}, {"eventtype", event.type}};
        if (steer.below(3) != 0) {
            made.events += event;
        } else {
            if (steer.flag())
                entry.insert("leeway", steer.value(now)); // a key that an event does not have
            else
                entry.insert("eventtype", "shutdown");
            made.others += entry;
        }
        entries += entry;
    }
    if (steer.flag())
        made.root = steer.dictionary(now);
    if (steer.flag())
        made.root.insert("Armed",
                         steer.flag() ? QVariant(now.toSecsSinceEpoch() + steer.byte()) : steer.value(now));
    made.root.insert("Format", 1);
    made.root.insert("Events", entries);
    return made;
}

/// The alarm stands at the earliest event, or at one of somebody else's that is earlier.
void checkAlarm(const FuzzedSystem &system, const QList<Event> &events)
{
    const qint64 alarm = system.read(wakeAlarm).trimmed().toLongLong();
    for (const Event &event : events)
        REQUIRE(alarm > 0 && alarm <= event.time.toSecsSinceEpoch());
}

/// Programs that change the events one after the other. What others scheduled stays.
void changeEvents(Steer &steer, const FuzzedSystem &system)
{
    RtcPowerEventScheduler scheduler(
        [&](const QString &, const QByteArray &text) { return writeAlarm(system, text); });
    QList<Event> expected = scheduler.scheduledEvents();
    const Content before = PowerEventStore::peek();
    for (int left = 1 + steer.below(6); left > 0; --left) {
        Event event = someEvent(steer, system.now());
        switch (steer.below(3)) {
        case 0: {
            const int failure = scheduler.schedule(event.time, event.owner, event.type);
            if (event.owner.isEmpty() || event.time <= system.now())
                REQUIRE(failure == EINVAL);
            if (failure == 0 && !expected.contains(event))
                expected += event;
            break;
        }
        case 1: {
            if (!expected.isEmpty() && steer.flag())
                event = expected.at(steer.below(static_cast<int>(expected.size())));
            const int failure = scheduler.cancel(event.time, event.owner, event.type);
            REQUIRE((failure == 0) == expected.contains(event) || failure == EFBIG);
            if (failure == 0)
                expected.removeOne(event);
            break;
        }
        default:
            (void)scheduler.arm(static_cast<PowerEventScheduler::Phase>(steer.below(3)));
        }
        REQUIRE(scheduler.scheduledEvents() == expected);
    }
    Content after = PowerEventStore::peek();
    Content foreign = before;
    foreign.rest.remove("Armed"); // ours, whatever stood there
    after.rest.remove("Armed");
    REQUIRE(after.foreign == foreign.foreign && after.rest == foreign.rest);
    if (scheduler.arm(PowerEventScheduler::Phase::Running) == 0)
        checkAlarm(system, expected);
}
} // namespace

/// The file of power events, which several programs share. With an even first byte what follows makes one,
/// event by event, with entries and keys of other programs, of which it is known what must come of them; with
/// an odd one what follows is the file. Then events are scheduled, cancelled and pruned.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static FuzzedSystem system;
    system.makeFolder(folder);
    system.makeFolder(clockFolder);
    system.emptyFolder(folder);
    system.problems.clear();
    system.write(QString(clockFolder) + "/since_epoch", QByteArray::number(system.now().toSecsSinceEpoch()));
    system.write(wakeAlarm, {});
    Steer steer(data, size);
    if (steer.flag()) {
        const QByteArray bytes = steer.rest();
        system.write(file, bytes);
        const auto [store, failure] = PowerEventStore::open();
        REQUIRE(store && failure == 0);
        if (!system.problems.isEmpty()) { // nothing is thrown away
            REQUIRE(store->content() == Content());
            REQUIRE(!system.exists(file) && system.read(QString(file) + ".damaged") == bytes);
            return 0;
        }
        const Content content = store->content();
        Content changed = content;
        changed.events += Event{system.now().addSecs(60), "com.dozely", "wake"};
        REQUIRE(store->save(changed) == 0);
        REQUIRE(PowerEventStore::peek() == changed);
        return 0;
    }
    const auto format = steer.flag() ? PropertyList::Format::Binary : PropertyList::Format::Xml;
    const MadeFile made = someFile(steer, system.now());
    const QByteArray bytes = PropertyList::toData(made.root, format);
    if (bytes.isNull())
        return 0; // a text that XML cannot carry
    system.write(file, bytes);
    const Content content = PowerEventStore::peek();
    REQUIRE(content.events == made.events && content.foreign.size() == made.others.size());
    changeEvents(steer, system);
    REQUIRE(system.problems.isEmpty());
    return 0;
}
