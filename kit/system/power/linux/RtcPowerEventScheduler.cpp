// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/linux/RtcPowerEventScheduler_p.h"

#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/system/power/PowerMessages.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <utility>

namespace dozely
{

namespace
{
// Alarms that do not reach their event are moved on, and one of somebody else's gives way when it has passed.
constexpr std::chrono::hours rearmTime{1};

using Event = PowerEventScheduler::Event;
using Phase = PowerEventScheduler::Phase;
using Content = PowerEventStore::Content;

QDateTime now()
{
    return Port<Clock>::current()->currentDate();
}

QDateTime wholeSeconds(const QDateTime &time)
{
    return QDateTime::fromSecsSinceEpoch(time.toSecsSinceEpoch(), Qt::UTC);
}

bool matters(const Event &event, Phase phase)
{
    switch (phase) {
    case Phase::Sleeping:
        return event.type == PowerEventScheduler::wake;
    case Phase::PoweringOff:
        return event.type == PowerEventScheduler::powerOn;
    case Phase::Running:
        break;
    }
    return true;
}

QList<Event> withoutPast(QList<Event> events)
{
    const QDateTime date = now();
    events.removeIf([&](const Event &event) { return event.time <= date; });
    return events;
}

/// The earliest date to come that matters; null for none.
QDateTime earliest(const QList<Event> &events, Phase phase)
{
    QDateTime date;
    for (const Event &event : withoutPast(events)) {
        if (matters(event, phase) && (date.isNull() || event.time < date))
            date = event.time;
    }
    return date;
}

/// Whether the alarm is the one that was set for an event of ours.
bool isOurs(const std::optional<qint64> &alarm, const Content &content)
{
    return alarm && content.armed && *alarm == *content.armed;
}
} // namespace

RtcPowerEventScheduler::RtcPowerEventScheduler(RtcAlarm::Writer writer) : m_writer(std::move(writer)) {}

RtcPowerEventScheduler::~RtcPowerEventScheduler() = default;

const std::shared_ptr<RtcPowerEventScheduler> &RtcPowerEventScheduler::ofThisProcess()
{
    static auto *const scheduler =
        new std::shared_ptr<RtcPowerEventScheduler>(std::make_shared<RtcPowerEventScheduler>());
    return *scheduler;
}

bool RtcPowerEventScheduler::isClockSure()
{
    if (!m_doubt) {
        m_clock = Port<Clock>::current();
        m_doubt.emplace(*m_clock);
    }
    m_doubt->look();
    return !m_doubt->isDoubted();
}

/// Sets the alarm for what `content` holds, and notes there what it was set to.
int RtcPowerEventScheduler::setAlarm(Content &content) const
{
    const QDateTime next = earliest(content.events, m_phase);
    const auto clock = RtcAlarm::find(m_writer);
    if (!clock)
        return next.isNull() ? 0 : ENODEV;
    const auto current = clock->armedFor();
    const bool ours = isOurs(current, content);
    if (next.isNull()) {
        content.armed.reset();
        return ours ? clock->clear() : 0;
    }
    const qint64 wanted = clock->fromDate(next);
    if (current && (ours ? *current == wanted : *current <= wanted)) {
        if (!ours)
            content.armed.reset();
        return 0;
    }
    qint64 reached = 0;
    const int failure = clock->setTowards(wanted, &reached);
    if (failure == 0)
        content.armed = reached;
    else if (!isOurs(clock->armedFor(), content)) // it may stand as it did
        content.armed.reset();
    return failure;
}

/// Changes the events and sets the alarm accordingly. A change that failed or was undone leaves everything as
/// it was before.
RtcPowerEventScheduler::Outcome RtcPowerEventScheduler::change(WithoutAlarm withoutAlarm,
                                                               const std::function<int(Content &)> &change)
{
    auto [store, failure] = PowerEventStore::open();
    if (!store)
        return {failure};
    Content content = store->content();
    if (isClockSure())
        content.events = withoutPast(content.events);
    Content former = content;
    const auto clock = RtcAlarm::find(m_writer);
    const auto formerAlarm = clock ? clock->armedFor() : std::nullopt;
    const bool wasOurs = isOurs(formerAlarm, former);
    if ((failure = change(content)) != 0)
        return {failure};
    const int alarmFailure = setAlarm(content);
    if (withoutAlarm == WithoutAlarm::Undone)
        failure = alarmFailure;
    if (failure == 0 && (failure = store->save(content)) == 0)
        return {0, alarmFailure};
    former.armed = content.armed;
    setAlarm(former);
    const auto left = clock ? clock->armedFor() : std::nullopt;
    if (formerAlarm && (!left || (!wasOurs && *left > *formerAlarm))) {
        qint64 reached = 0;
        clock->set(*formerAlarm, &reached); // somebody else's comes back
        former.armed = wasOurs ? formerAlarm : std::nullopt;
    }
    store->save(former);
    return {failure};
}

qint32 RtcPowerEventScheduler::schedule(const QDateTime &time, const QString &owner, const QString &type)
{
    const Event event{wholeSeconds(time), owner, type};
    if (!time.isValid() || event.time <= now() || owner.isEmpty() || (type != wake && type != powerOn))
        return EINVAL;
    if (!RtcAlarm::find(m_writer))
        return ENODEV;
    return change(WithoutAlarm::Undone,
                  [&](Content &content) {
                      if (!content.events.contains(event))
                          content.events += event;
                      return 0;
                  })
        .failure;
}

qint32 RtcPowerEventScheduler::cancel(const QDateTime &time, const QString &owner, const QString &type)
{
    if (!PowerEventStore::exists())
        return ENOENT;
    // What is not to happen is gone also where nothing can be armed any more.
    return change(WithoutAlarm::Stands,
                  [&](Content &content) {
                      return content.events.removeOne(Event{wholeSeconds(time), owner, type}) ? 0 : ENOENT;
                  })
        .failure;
}

QList<Event> RtcPowerEventScheduler::scheduledEvents()
{
    return withoutPast(PowerEventStore::peek().events);
}

qint32 RtcPowerEventScheduler::arm(Phase phase)
{
    m_phase = phase;
    if (!PowerEventStore::exists())
        return 0; // who has nothing to arm needs no right to
    const auto [failure, alarmFailure] = change(WithoutAlarm::Stands, [](Content &) { return 0; });
    return failure != 0 ? failure : alarmFailure;
}

void RtcPowerEventScheduler::keepArmed()
{
    if (m_timer)
        return;
    m_timer = Port<Clock>::current()->makeAbsoluteTimer();
    const auto again = [this] { rearm(m_phase); };
    QObject::connect(m_timer.get(), &AbsoluteTimer::due, m_timer.get(), again);
    QObject::connect(m_timer.get(), &AbsoluteTimer::clockChanged, m_timer.get(), again);
    rearm(Phase::Running);
}

void RtcPowerEventScheduler::rearm(Phase phase)
{
    const qint32 failure = arm(phase);
    if (failure == 0)
        m_isFailureReported = false;
    else if (!std::exchange(m_isFailureReported, true))
        reportProblem(
            QString("The machine cannot be woken for its schedules: %1.").arg(qt_error_string(failure)));
    const std::chrono::milliseconds wait = rearmTime;
    QDateTime again = now().addMSecs(wait.count());
    if (const auto set = alarm(); set && set->armedFor.isValid())
        again = std::min(again, set->armedFor.addSecs(1));
    m_timer->start(again);
}

void RtcPowerEventScheduler::powerChanges(quint32 messageType)
{
    if (!m_timer)
        return;
    switch (messageType) {
    case kIOMessageSystemWillSleep:
        rearm(Phase::Sleeping);
        break;
    case kIOMessageSystemWillPowerOff:
        rearm(Phase::PoweringOff);
        break;
    default:
        rearm(Phase::Running);
        break;
    }
}

std::optional<PowerEventScheduler::Alarm> RtcPowerEventScheduler::alarm()
{
    const auto clock = RtcAlarm::find(m_writer);
    if (!clock)
        return {};
    Alarm alarm{clock->device(), clock->clockName(), {}, false};
    if (const auto armed = clock->armedFor()) {
        alarm.armedFor = clock->toDate(*armed);
        alarm.isOurs = isOurs(armed, PowerEventStore::peek());
    }
    return alarm;
}

PowerEventScheduler::Controller RtcPowerEventScheduler::controller()
{
    return {RtcAlarm::find(m_writer).has_value()};
}

std::optional<QVariantMap> RtcPowerEventScheduler::controllerProperties()
{
    const auto clock = RtcAlarm::find(m_writer);
    if (!clock)
        return {};
    QVariantMap properties;
    if (const auto armed = clock->armedFor())
        properties.insert("AutoWake", quint64(*armed - clock->clockTime()));
    return properties;
}

QString RtcPowerEventScheduler::testAlarm(const QDateTime &time)
{
    const auto sentence = [](int failure) { return QString("%1.").arg(qt_error_string(failure)); };
    const auto clock = RtcAlarm::find(m_writer);
    if (!clock)
        return "The machine has no clock that could wake it.";
    auto [store, failure] = PowerEventStore::open();
    if (!store)
        return sentence(failure);
    const auto former = clock->armedFor();
    qint64 reached = 0;
    const int outcome = clock->set(clock->fromDate(time), &reached);
    // What was set before comes back, ours or not.
    if (former)
        failure = clock->set(*former, &reached);
    else if (outcome != EACCES && outcome != EPERM)
        failure = clock->clear();
    return outcome != 0 ? sentence(outcome) : failure != 0 ? sentence(failure) : QString();
}

qint32 RtcPowerEventScheduler::putBackAlarm(const QDateTime &time)
{
    if (!time.isValid() || time <= now())
        return 0;
    const auto clock = RtcAlarm::find(m_writer);
    if (!clock)
        return ENODEV;
    auto [store, failure] = PowerEventStore::open();
    if (!store)
        return failure;
    const qint64 wanted = clock->fromDate(time);
    if (const auto armed = clock->armedFor(); armed && *armed <= wanted)
        return 0;
    qint64 reached = 0;
    return clock->set(wanted, &reached);
}

template<>
std::shared_ptr<PowerEventScheduler> &Port<PowerEventScheduler>::current()
{
    static auto *const port =
        new std::shared_ptr<PowerEventScheduler>(RtcPowerEventScheduler::ofThisProcess());
    return *port;
}

} // namespace dozely
