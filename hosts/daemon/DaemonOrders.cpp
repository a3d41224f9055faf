// SPDX-License-Identifier: MIT
// How the daemon obeys orders about schedules, and the wishes that come by the bus.
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/AbuseLog.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/OrderReceiver.h"
#include "hosts/daemon/DaemonController.h"
#include "hosts/daemon/PinnedConsoleUser.h"

#include <algorithm>

using namespace dozely;

namespace
{
/// Characters.
constexpr qsizetype longestFailure = 1000;

/// Why an action failed or was not performed, by what its agent says: one line.
QString failureIn(const ReceivedOrder &order)
{
    return logLabel(order.userInfo.value(OrderKey::failure).toString(), longestFailure).trimmed();
}

/// Absent for what no program ends with.
std::optional<qint64> exitStatusIn(const ReceivedOrder &order)
{
    bool isNumber = false;
    const qint64 status = order.userInfo.value(OrderKey::exitStatus).toLongLong(&isNumber);
    return isNumber && status >= 0 && status <= 255 ? std::optional(status) : std::nullopt;
}

/// No more of it than any action may leave; nothing for what is no output.
QByteArray outputIn(const ReceivedOrder &order)
{
    const QVariant value = order.userInfo.value(OrderKey::output);
    if (value.typeId() != QMetaType::QByteArray)
        return {};
    const QByteArray output = value.toByteArray();
    return output.last(std::min(output.size(), PerformanceOutcome::mostOutput));
}

QString senderLabel(const ReceivedOrder &order)
{
    return order.peer ? QString("user %1").arg(*order.peer) : QString("an unknown user");
}
} // namespace

std::optional<Occurrence> DaemonController::heldOccurrence(const ReceivedOrder &order) const
{
    const QVariant date = order.userInfo.value(OrderKey::date);
    if (!order.peer || date.typeId() != QMetaType::QDateTime)
        return {};
    return m_handOvers.heldByAgent(*order.peer, order.userInfo.value(OrderKey::bundlePath).toString(),
                                   date.toDateTime(), order.userInfo.value(OrderKey::parameters).toMap());
}

void DaemonController::daemonMustAct(const ReceivedOrder &order)
{
    if (const auto occurrence = heldOccurrence(order))
        m_performer.performHandedBack(*occurrence);
    else
        ZDRLog("%@ from %@ refused: that user's agent has no such occurrence", order.name,
               senderLabel(order));
}

/// What tells nothing new is no fault: an agent reports whenever its answer may have come too late.
void DaemonController::daemonMustNoteOutcome(const ReceivedOrder &order)
{
    const QVariant date = order.userInfo.value(OrderKey::date);
    const QString outcome = order.userInfo.value(OrderKey::outcome).toString();
    const bool isPerformed = outcome == OrderOutcome::performed;
    const bool hasFailed = outcome == OrderOutcome::failed;
    const bool isSkipped = outcome == OrderOutcome::skipped;
    if (!order.peer || date.typeId() != QMetaType::QDateTime ||
        (!isPerformed && !hasFailed && !isSkipped && outcome != OrderOutcome::notPerformed))
        return;
    const auto handedOver = [&](OccurrenceState state) {
        return m_handOvers.handedOver(*order.peer, order.userInfo.value(OrderKey::bundlePath).toString(),
                                      date.toDateTime(), order.userInfo.value(OrderKey::parameters).toMap(),
                                      state);
    };
    PerformanceOutcome told{hasFailed || isPerformed};
    told.output = outputIn(order);
    auto occurrence = handedOver(OccurrenceState::Unknown);
    if (!occurrence && (!isPerformed || !told.output.isEmpty()))
        occurrence = handedOver(OccurrenceState::Done);
    if (!occurrence)
        return;
    if (isSkipped)
        return m_performer.sessionOutcomes().noteOverlap(*occurrence);
    if (!isPerformed)
        told.failure = failureIn(order);
    if (const auto status = exitStatusIn(order); hasFailed || (isPerformed && status == 0))
        told.exitStatus = status;
    if (hasFailed && told.failure.isEmpty())
        told.failure = "its agent does not say why";
    m_performer.sessionOutcomes().note(*occurrence, *order.peer, told);
}

OrderPermissions::UserId DaemonController::consoleUser() const
{
    const auto user = m_console->current();
    return user ? OrderPermissions::UserId(user->userId) : std::nullopt;
}

QList<Occurrence> DaemonController::removableOccurrences(const ReceivedOrder &order) const
{
    const QVariant date = order.userInfo.value(OrderKey::date);
    if (date.typeId() != QMetaType::QDateTime)
        return {};
    QList<Occurrence> occurrences = m_anticipation.removable(
        order.peer, RootFolder::owner(), order.userInfo.value(OrderKey::bundlePath).toString(),
        date.toDateTime().toUTC(), [this] { return consoleUser(); });
    if (occurrences.isEmpty()) {
        if (const auto held = heldOccurrence(order))
            occurrences += *held;
    }
    return occurrences;
}

/// Whether it is about what is announced for the time after an action, which is no occurrence.
bool DaemonController::meansRest(const ReceivedOrder &order) const
{
    return m_rest.isMeant(order.peer, order.userInfo.value(OrderKey::bundlePath).toString(),
                          order.userInfo.value(OrderKey::date).toDateTime());
}

void DaemonController::daemonMustRemove(const ReceivedOrder &order)
{
    if (meansRest(order)) {
        m_rest.cancel(senderLabel(order));
        return;
    }
    const QList<Occurrence> occurrences = removableOccurrences(order);
    if (occurrences.isEmpty()) {
        ZDRLog("%@ from %@ refused: there is no such occurrence for that user to remove", order.name,
               senderLabel(order));
        return;
    }
    for (const Occurrence &occurrence : occurrences)
        m_keeper.note(occurrence, OccurrenceState::Removed);
    m_keeper.flush(); // what the log calls removed does not happen after a crash either
    for (const Occurrence &occurrence : occurrences) {
        ZDRLog("Schedule \"%@\": the occurrence was removed by %@", logLabel(occurrence.schedule.name),
               senderLabel(order));
    }
    waitForNext();
}

void DaemonController::daemonMustAnticipateAgain(const ReceivedOrder &order)
{
    // Every agent asks when it starts; there is something to announce at the console alone.
    Q_EMIT agentCame();
    const auto user = m_console->current();
    if (!order.peer || !user || *order.peer != user->userId)
        return;
    m_anticipation.announceAgain();
    waitForNext();
}

void DaemonController::refuse(const ReceivedOrder &order, OrderRefusal::Kind kind, const QString &why) const
{
    ZDRLog("%@ from %@ refused: %@", order.name, senderLabel(order), why);
    throw OrderRefusal(kind, why);
}

/// Refuses an order of nobody, and one too many.
void DaemonController::takeRate(const ReceivedOrder &order)
{
    using enum OrderRefusal::Kind;
    if (!order.peer)
        refuse(order, NotPermitted, "nobody knows who sent it");
    if (const auto taken = takeRateOf(*order.peer); !taken)
        throw OrderRefusal(Impossible, taken.error().text);
}

Result<void> DaemonController::takeRateOf(quint32 user)
{
    if (OrderPermissions::isSystem(user, RootFolder::owner()) || m_rate.take(user, m_clock.steadyTime()))
        return {};
    AbuseLog::note(user, "order to run something now refused: too many a minute");
    return Error{QString("a user may give %1 orders a minute").arg(OrderRate::mostAMinute)};
}

void DaemonController::obeyWish(const ReceivedOrder &order,
                                void (OccurrenceWishes::*wish)(const ReceivedOrder &))
{
    takeRate(order);
    if (meansRest(order)) {
        const qint64 delay = order.userInfo.value(OrderKey::delay).toLongLong();
        if (order.name == OrderName::daemonMustPostpone && delay > 0)
            m_rest.postpone(std::chrono::seconds(delay), senderLabel(order));
        else
            m_rest.cancel(senderLabel(order));
        return;
    }
    const QString identifier = order.userInfo.value(OrderKey::scheduleIdentifier).toString();
    if (!identifier.isEmpty() && !m_keeper.scheduler().placeOf(identifier))
        rereadStore(); // one that was added a moment ago
    try {
        (m_wishes.*wish)(order);
    } catch (const OrderRefusal &refusal) {
        ZDRLog("%@ from %@ refused: %@", order.name, senderLabel(order), refusal.reason());
        throw;
    }
    waitForNext();
}

/// What the sender is told is true: when this returns, the disk has it that the action is to be performed.
void DaemonController::daemonMustRunNow(const ReceivedOrder &order)
{
    using enum OrderRefusal::Kind;
    takeRate(order);
    const QString identifier = order.userInfo.value(OrderKey::scheduleIdentifier).toString();
    auto schedule = m_keeper.scheduler().schedule(identifier);
    if (!schedule) {
        rereadStore(); // one that was added a moment ago
        schedule = m_keeper.scheduler().schedule(identifier);
    }
    if (!schedule)
        refuse(order, Impossible, QString("there is no schedule %1").arg(logLabel(identifier)));
    if (!OrderPermissions::mayRunNow(order.peer, RootFolder::owner(), schedule->owner)) {
        refuse(order, NotPermitted, QString("schedule %1 belongs to another user").arg(logLabel(identifier)));
    }
    const auto noted = m_keeper.noteAsked(m_keeper.scheduler().makeOccurrenceNow(*schedule), *order.peer);
    if (!noted)
        refuse(order, Impossible, noted.error().text);
    waitForNext(); // performed from the event loop, the sender has its answer by then
}

Result<void> DaemonController::runNow(const QString &identifier, quint32 user)
{
    const auto schedule = m_keeper.scheduler().schedule(identifier);
    if (!schedule)
        return Error{QString("there is no schedule %1").arg(logLabel(identifier))};
    if (const auto taken = takeRateOf(user); !taken)
        return taken;
    auto noted = m_keeper.noteAsked(m_keeper.scheduler().makeOccurrenceNow(*schedule), user);
    if (noted)
        waitForNext();
    return noted;
}

Result<QDateTime> DaemonController::skip(const QString &identifier, const std::optional<QDateTime> &date,
                                         quint32 user)
{
    if (const auto taken = takeRateOf(user); !taken)
        return taken.error();
    auto skipped = m_wishes.skipOf(identifier, date, QString("user %1").arg(user));
    if (skipped)
        waitForNext();
    return skipped;
}

Result<QDateTime> DaemonController::postpone(const QString &identifier, const std::optional<QDateTime> &date,
                                             std::chrono::seconds delay, quint32 user)
{
    if (const auto taken = takeRateOf(user); !taken)
        return taken.error();
    auto postponed = m_wishes.postponeOf(identifier, date, delay, QString("user %1").arg(user));
    if (postponed)
        waitForNext();
    return postponed;
}

void DaemonController::testWaking(std::chrono::seconds duration, quint32 user, const WakeTrial::Done &done)
{
    if (const auto taken = takeRateOf(user); !taken)
        return done(taken.error());
    if (duration.count() == 0)
        return done(m_wakeTrial.tryAlarm());
    m_wakeTrial.sleep(duration, done);
}
