// SPDX-License-Identifier: MIT
#include "plugins/common/session/OwnSession.h"

#include <QStringList>

#include <unistd.h>

using namespace dozely;

namespace
{
constexpr char service[] = "org.freedesktop.login1";
constexpr char path[] = "/org/freedesktop/login1";
constexpr char manager[] = "org.freedesktop.login1.Manager";
constexpr std::chrono::seconds answerTime{10};
} // namespace

void OwnSession::call(const QByteArray &operation, Answered answered)
{
    m_operation = operation;
    m_answered = std::move(answered);
    auto opened = BusConnection::open(BusConnection::Bus::System);
    if (!opened)
        return answer(opened.error());
    m_bus = *std::move(opened);
    const QString id = qEnvironmentVariable("XDG_SESSION_ID");
    if (id.isEmpty())
        return findByUser();
    m_bus->callLater({service, path, manager, "GetSession"}, "s", {id}, answerTime,
                     [this](const BusConnection::Reply &reply) {
                         const QString found = BusConnection::firstOf(reply).toString();
                         if (found.isEmpty())
                             findByUser();
                         else
                             callAt(found.toLatin1());
                     });
}

void OwnSession::findByUser()
{
    const auto found = [this](const BusConnection::Reply &reply) {
        // The session's name and its path, "/" where there is none.
        const QString session = BusConnection::firstOf(reply).toList().value(1).toString();
        if (!reply)
            answer(reply.error());
        else if (session.size() < 2)
            answer(Error{"the login manager knows no session of this user with a desktop"});
        else
            callAt(session.toLatin1());
    };
    m_bus->callLater({service, path, manager, "GetUser"}, "u", {quint32(::getuid())}, answerTime,
                     [this, found](const BusConnection::Reply &reply) {
                         if (!reply)
                             return answer(reply.error());
                         const QByteArray user = BusConnection::firstOf(reply).toString().toLatin1();
                         m_bus->callLater({service, user, "org.freedesktop.DBus.Properties", "Get"}, "ss",
                                          {QString("org.freedesktop.login1.User"), QString("Display")},
                                          answerTime, found);
                     });
}

void OwnSession::callAt(const QByteArray &session)
{
    m_bus->callLater({service, session, "org.freedesktop.login1.Session", m_operation}, "", {}, answerTime,
                     [this](const BusConnection::Reply &reply) {
                         answer(reply ? Result<void>() : Result<void>(reply.error()));
                     });
}

void OwnSession::answer(const Result<void> &result)
{
    const Answered answered = std::exchange(m_answered, {});
    answered(result);
}
