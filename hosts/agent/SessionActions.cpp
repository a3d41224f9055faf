// SPDX-License-Identifier: MIT
#include "hosts/agent/SessionActions.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/agent/PerformingFolder.h"
#include "hosts/common/orders/GuardedPosting.h"

#include <QUuid>

#include <algorithm>

using namespace dozely;

namespace
{
/// Some time less than the daemon waits for an answer, 5 s at least.
constexpr std::chrono::seconds certainlyInTime(3);

/// So many actions that are about to come are made ready: so long before their dates, and kept for so long
/// after them.
/// @{
constexpr qsizetype mostPrepared = 8;
constexpr std::chrono::milliseconds longestBefore = std::chrono::seconds(10);
constexpr std::chrono::milliseconds longestAfter = std::chrono::seconds(15);
/// @}

constexpr char program[] = "dozely-session-performer";

QString nameOf(const QString &bundlePath)
{
    return bundlePath.section('/', -1);
}

QString labelOf(const AgentOrder &order)
{
    return logLabel(nameOf(order.bundlePath));
}

/// Characters of a reason that are sent.
constexpr qsizetype longestFailure = 1000;

/// Bytes of parameters, as XML, with which the output is sent.
constexpr qsizetype mostBesideOutput = 128 << 10;

/// BLOCKING: as a request of WDCommunicationCenter.
void reportOutcome(const AgentOrder &order, QLatin1StringView outcome, const QVariantMap &more = {})
{
    QVariantMap report = more;
    report.insert(OrderKey::bundlePath, order.bundlePath);
    report.insert(OrderKey::date, order.date);
    report.insert(OrderKey::parameters, order.parameters);
    report.insert(OrderKey::outcome, QString(outcome));
    GuardedPosting::postToDaemon(
        NSNotification(OrderName::daemonMustNoteOutcome, QString(OrderSender::daemon), report));
}

/// Whether a report has room for the output beside the parameters: the daemon takes 256 KiB of a user.
bool hasRoomForOutput(const AgentOrder &order)
{
    const QByteArray parameters = PropertyList::toData(order.parameters, PropertyList::Format::Xml);
    return !parameters.isNull() && parameters.size() <= mostBesideOutput; // more than they take on the way
}

/// What the daemon cannot know from the answer to its order. BLOCKING: the same.
void reportEnd(const AgentOrder &order, const PerformanceOutcome &outcome)
{
    const bool sendsOutput = !outcome.output.isEmpty() && hasRoomForOutput(order);
    if (outcome.isSuccess() && !sendsOutput)
        return;
    QVariantMap more;
    if (!outcome.isSuccess())
        more.insert(OrderKey::failure, logLabel(outcome.reason(), longestFailure));
    if (outcome.isPerformed() && outcome.exitStatus)
        more.insert(OrderKey::exitStatus, *outcome.exitStatus);
    if (sendsOutput)
        more.insert(OrderKey::output,
                    outcome.output.last(std::min(outcome.output.size(), PerformanceOutcome::mostOutput)));
    reportOutcome(order,
                  outcome.isSuccess()     ? OrderOutcome::performed
                  : outcome.isPerformed() ? OrderOutcome::failed
                                          : OrderOutcome::notPerformed,
                  more);
}
} // namespace

SessionActions::SessionActions(const PlugInLoader &loader) : m_loader(loader)
{
    const auto folder = PerformingFolder::make();
    if (!folder) {
        m_whyNone = QString("there is no folder for it: %1").arg(logLabel(folder.error().text));
        return;
    }
    m_performances = std::make_unique<Performances>(
        PerformerStart::ofThisMachine(Performances::programNamed(program), ServiceManager::Whose::User),
        *folder, *Port<Clock>::current());
    takeUp();
}

SessionActions::~SessionActions()
{
    if (m_performances)
        m_performances->askAllToEnd();
}

void SessionActions::takeUp()
{
    QStringList names;
    const QDateTime now = Port<Clock>::current()->currentDate();
    const QHash<QString, PerformanceOrder> earlier = m_performances->ofEarlierHosts();
    for (auto it = earlier.cbegin(); it != earlier.cend(); ++it) {
        if (it->date > now)
            continue; // it was only made ready: an order is not sent before its date
        AgentOrder order{it->bundlePath, it->date, it->parameters, it->schedule, it->scheduleIdentifier};
        if (order.schedule == nameOf(order.bundlePath)) // it was told none
            order.schedule.clear();
        const auto awake = awakeFor(order.bundlePath);
        m_goingOn.insert(order.scheduleIdentifier, order.date);
        if (m_performances->adopt(it.key(), [this, order, awake](const PerformanceOutcome &outcome) {
                noteEnd(order, outcome);
            }))
            names += it.key();
        else
            m_goingOn.remove(order.scheduleIdentifier, order.date);
    }
    m_performances->sweep(names);
}

void SessionActions::perform(const AgentOrder &order)
{
    if (order.skipsOverlap && m_goingOn.contains(order.scheduleIdentifier)) {
        ZDRLog("%@ was skipped in the session: the action of the one before goes on", labelOf(order));
        reportOutcome(order, OrderOutcome::skipped);
        return;
    }
    m_goingOn.insert(order.scheduleIdentifier, order.date);
    if (const auto begun = begin(order); !begun)
        noteEnd(order, {false, begun.error().text});
}

/// Starts a performer, which waits.
Result<SessionActions::Prepared> SessionActions::start(const AgentOrder &order)
{
    if (!m_performances)
        return Error{m_whyNone};
    // The performer looks at it again; what is refused here costs no process.
    const auto bundle = m_loader.bundle(order.bundlePath);
    if (!bundle)
        return bundle.error();
    PerformanceOrder what{order.schedule.isEmpty() ? nameOf(order.bundlePath) : order.schedule,
                          order.bundlePath, order.parameters, order.date};
    what.role = PerformanceOrder::Role::Session;
    what.scheduleIdentifier = order.scheduleIdentifier;
    what.limits =
        ActionLimits::read(what.schedule, what.parameters, what.bundlePath, (*bundle)->infoDictionary());
    Prepared prepared{order, QUuid::createUuid().toString(QUuid::Id128), std::make_shared<Awake>()};
    const auto ended = [this, prepared](const PerformanceOutcome &outcome) {
        // One that ends before its action has come was made ready in vain.
        if (!takePrepared([&](const Prepared &other) { return other.name == prepared.name; }))
            noteEnd(prepared.order, outcome);
        prepared.awake->reset();
    };
    if (auto asked = m_performances->prepare(prepared.name, what, ended, [this, order] { noteBegun(order); });
        !asked)
        return asked.error();
    return prepared;
}

std::optional<SessionActions::Prepared>
SessionActions::takePrepared(const std::function<bool(const Prepared &)> &isIt)
{
    const auto found = std::find_if(m_prepared.begin(), m_prepared.end(), isIt);
    if (found == m_prepared.end())
        return {};
    const Prepared prepared = *found;
    m_prepared.erase(found);
    return prepared;
}

void SessionActions::prepare(const AgentOrder &order)
{
    const auto isIt = [order](const Prepared &prepared) { return prepared.order == order; };
    Clock &clock = *Port<Clock>::current();
    const std::chrono::milliseconds left(clock.currentDate().msecsTo(order.date));
    // Whose date has come may have been performed, or wait no longer for this.
    if (left <= std::chrono::milliseconds(0) || left > longestBefore || m_prepared.size() >= mostPrepared ||
        std::any_of(m_prepared.cbegin(), m_prepared.cend(), isIt))
        return;
    const auto prepared = start(order);
    if (!prepared)
        return; // that is told when the action comes
    m_prepared += *prepared;
    clock.callAfter(left + longestAfter, m_performances.get(), [this, name = prepared->name] {
        if (takePrepared([&](const Prepared &other) { return other.name == name; }))
            m_performances->callOff(name);
    });
}

Result<void> SessionActions::begin(const AgentOrder &order)
{
    auto ready = takePrepared([&](const Prepared &prepared) { return prepared.order == order; });
    if (ready) {
        *ready->awake = awakeFor(order.bundlePath);
        if (m_performances->go(ready->name))
            return {};
        m_performances->callOff(ready->name); // it has ended meanwhile
    }
    const auto started = start(order);
    if (!started)
        return started.error();
    *started->awake = awakeFor(order.bundlePath);
    m_performances->go(started->name); // one that has ended meanwhile says so itself
    return {};
}

void SessionActions::noteBegun(const AgentOrder &order) const
{
    ZDRLog("%@ acts in the session", labelOf(order));
    // The daemon takes for performed what was answered in time. An order is not sent before its date.
    if (Port<Clock>::current()->currentDate() >= order.date.addDuration(certainlyInTime))
        reportOutcome(order, OrderOutcome::performed);
}

void SessionActions::noteEnd(const AgentOrder &order, const PerformanceOutcome &outcome)
{
    m_goingOn.remove(order.scheduleIdentifier, order.date);
    const QString reason = outcome.reason();
    if (!outcome.isPerformed()) {
        ZDRLog("The action was not performed: %@", logLabel(reason, wholeText));
    } else if (outcome.hasRaised) { // nobody knows how far it came
        ZDRLog("%@ raised: %@", labelOf(order), reason);
    } else if (!reason.isEmpty() && order.schedule.isEmpty()) {
        ZDRLog("%@ failed in the session: %@", labelOf(order), logLabel(reason, wholeText));
    } else if (!reason.isEmpty()) {
        ZDRLog("%@ of schedule \"%@\" failed in the session: %@", labelOf(order), logLabel(order.schedule),
               logLabel(reason, wholeText));
    }
    reportEnd(order, outcome);
}

SessionActions::Awake SessionActions::awakeFor(const QString &bundlePath)
{
    const auto bundle = m_loader.bundle(bundlePath);
    return m_inhibitor.hold(bundle ? (*bundle)->infoDictionary() : QVariantMap());
}
