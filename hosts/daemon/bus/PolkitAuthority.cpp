// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/PolkitAuthority.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "hosts/common/bus/SchedulerNames.h"

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
constexpr char service[] = "org.freedesktop.PolicyKit1";
constexpr char path[] = "/org/freedesktop/PolicyKit1/Authority";
constexpr char interface[] = "org.freedesktop.PolicyKit1.Authority";
constexpr quint32 allowUserInteraction = 1;

constexpr std::chrono::minutes longestThought(10); // of a person
constexpr std::chrono::seconds longestLook(3);
constexpr std::chrono::seconds standingHolds(2);
constexpr qsizetype mostKnown = 512;

Error refusal(const QString &text)
{
    return {text, SchedulerNames::notAllowed};
}

bool isAuthorised(const BusConnection::Reply &reply)
{
    return BusConnection::firstOf(reply).toList().value(0).toBool();
}

Result<void> verdictOf(const BusConnection::Reply &reply)
{
    if (isAuthorised(reply))
        return {};
    if (reply)
        return refusal("You are not allowed to do this.");
    return refusal(QString("Nobody but root may do this here: polkit, which decides about others, cannot be "
                           "asked (%1).")
                       .arg(logLabel(reply.error().text)));
}
} // namespace

PolkitAuthority::PolkitAuthority(Clock &clock) : m_clock(clock) {}

PolkitAuthority::~PolkitAuthority() = default;

void PolkitAuthority::setBus(BusConnection *bus)
{
    m_bus = bus;
    m_questions.clear();
    m_known.clear();
}

void PolkitAuthority::check(const BusCaller &caller, const QByteArray &action, bool mayAskPerson,
                            const QString &id, std::chrono::milliseconds timeout,
                            const BusConnection::ReplyHandler &handler)
{
    const QVariantList subject{QString("system-bus-name"),
                               QVariantMap{{"name", QString::fromLatin1(caller.name)}}};
    m_bus->callLater({service, path, interface, "CheckAuthorization"}, "(sa{sv})sa{ss}us",
                     {QVariant(subject), QString::fromLatin1(action), QVariantMap(),
                      mayAskPerson ? allowUserInteraction : 0U, id},
                     timeout, handler);
}

void PolkitAuthority::ask(const BusCaller &caller, const QByteArray &action, const Verdict &verdict)
{
    if (caller.isSystem())
        return verdict({});
    const auto ofUser = std::count_if(m_questions.cbegin(), m_questions.cend(), [&](const auto &question) {
        return question->caller.user == caller.user;
    });
    if (!m_bus || ofUser >= mostOfAUser || m_questions.size() >= mostOfAll)
        return verdict(Error{"Too many questions are open that somebody has to answer first.",
                             SchedulerNames::limitReached});
    const QString id = QString("dozely-%1").arg(++m_count);
    const auto question = std::make_shared<Question>(Question{caller, verdict, {}});
    m_questions.insert(id, question);
    question->presence = m_bus->watchOwner(caller.name, [this, id](const QByteArray &owner) {
        if (owner.isEmpty())
            withdraw(id);
    });
    check(caller, action, true, id, longestThought, [this, id](const BusConnection::Reply &reply) {
        if (!reply && reply.error().name == "org.freedesktop.DBus.Error.NoReply")
            withdraw(id); // nobody has answered
        else if (const auto answered = m_questions.take(id))
            answered->verdict(verdictOf(reply));
    });
}

/// Whoever asked hears nothing more: he is gone, or nobody has answered for him.
void PolkitAuthority::withdraw(const QString &id)
{
    const auto question = m_questions.take(id);
    if (!question || !m_bus)
        return;
    m_bus->callLater({service, path, interface, "CancelCheckAuthorization"}, "s", {id}, longestLook,
                     [](const BusConnection::Reply &) {});
    question->verdict(refusal("Nobody has answered whether you may do this."));
}

std::optional<PolkitAuthority::Standing> PolkitAuthority::standing(const BusCaller &caller) const
{
    if (caller.isSystem())
        return Standing{true, true};
    const auto known = m_known.constFind(caller.name);
    if (known == m_known.cend() || known->open > 0 || m_clock.steadyTime() >= known->until)
        return {};
    return known->standing;
}

void PolkitAuthority::look(const BusCaller &caller, const std::function<void()> &told)
{
    if (!m_bus)
        return;
    if (m_known.size() >= mostKnown)
        m_known.removeIf([](const auto &known) { return known->open == 0; });
    Known &known = m_known[caller.name];
    known.waiting.push_back(told);
    if (known.open > 0)
        return;
    known.open = 2;
    known.standing = {};
    for (const auto &[action, place] : {std::pair{SchedulerNames::manageOwn, &Standing::ofOwn},
                                        std::pair{SchedulerNames::manageAll, &Standing::ofAll}}) {
        check(caller, action, false, {}, longestLook,
              [this, name = caller.name, place = place](const BusConnection::Reply &reply) {
                  m_known[name].standing.*place = isAuthorised(reply);
                  settle(name);
              });
    }
}

void PolkitAuthority::settle(const QByteArray &name)
{
    Known &known = m_known[name];
    if (--known.open > 0)
        return;
    known.until = m_clock.steadyTime() + standingHolds;
    for (const auto &told : std::exchange(known.waiting, {}))
        told();
}
