// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/linux/LogindLock_p.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"

#include <QPointer>

#include <utility>

namespace dozely
{

namespace
{
constexpr std::chrono::seconds answerTime{10};
constexpr std::chrono::minutes retryTime{1}; // when nothing else tells that a refused lock may be had
constexpr char who[] = "com.dozely";

/// The manager is just going about what the lock would hold up, or has gone: it will be told when that is
/// over.
bool isPassing(const QByteArray &error)
{
    return error == "org.freedesktop.login1.OperationInProgress" ||
           error == "org.freedesktop.DBus.Error.Disconnected" ||
           error == "org.freedesktop.DBus.Error.NoReply" ||
           error == "org.freedesktop.DBus.Error.ServiceUnknown" ||
           error == "org.freedesktop.DBus.Error.NameHasNoOwner";
}
} // namespace

void LogindLock::setManager(BusConnection *bus)
{
    m_bus = bus;
    m_descriptor = {};
    m_isAsked = false;
    ++m_request; // the answer of the former manager is no longer waited for
    ask();
}

void LogindLock::take()
{
    m_isWanted = true;
    ask();
}

void LogindLock::release()
{
    m_isWanted = false;
    m_descriptor = {};
}

void LogindLock::retry()
{
    ask();
}

void LogindLock::ask()
{
    if (!m_isWanted || !m_bus || m_isAsked || isHeld())
        return;
    m_isAsked = true;
    const QPointer<QObject> alive(&m_context);
    m_bus->callLater(
        {"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "Inhibit"},
        "ssss", {m_terms.what, QString(who), m_terms.why, m_terms.mode}, answerTime,
        [this, alive, request = ++m_request](const BusConnection::Reply &reply) {
            if (alive)
                answered(request, reply);
        });
}

void LogindLock::answered(quint64 request, const BusConnection::Reply &reply)
{
    if (request != m_request)
        return; // with the answer goes the lock that it may hold
    m_isAsked = false;
    if (!reply) {
        refused(reply.error());
        return;
    }
    m_isReported = false;
    if (m_isWanted)
        m_descriptor = reply->value(0).value<BusDescriptor>();
}

void LogindLock::refused(const Error &error)
{
    if (!isPassing(error.name) && !std::exchange(m_isReported, true)) {
        reportProblem(QString("The login manager refuses a lock (%1, \"%2\"): %3")
                          .arg(m_terms.what, m_terms.mode, error.text));
    }
    Port<Clock>::current()->callAfter(retryTime, &m_context, [this] { ask(); });
}

} // namespace dozely
