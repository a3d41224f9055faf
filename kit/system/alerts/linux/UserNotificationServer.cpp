// SPDX-License-Identifier: MIT
#include "DozelyKit/system/alerts/linux/UserNotificationServer_p.h"

#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/core/log/LogLabel.h"

#include <chrono>
#include <utility>

namespace dozely
{

namespace
{
constexpr std::chrono::seconds startLimit{25}; // as long as the bus itself allows a service for starting
constexpr std::chrono::seconds answerLimit{10};

constexpr char service[] = "org.freedesktop.Notifications";
constexpr char path[] = "/org/freedesktop/Notifications";
constexpr char cancelKey[] = "cancel";

// The bus says this for a server that ended, or did not answer in time.
constexpr char noReply[] = "org.freedesktop.DBus.Error.NoReply";

/// A server's words for the log: on one line, and not many of them.
QString quotable(const QString &text)
{
    return logLabel(text).simplified();
}

QString quotable(const Error &error)
{
    return quotable(error.text.isEmpty() ? QString::fromUtf8(error.name) : error.text);
}

QVariantMap hintsFor(const QString &soundName)
{
    QVariantMap hints{
        // Critical. Of lesser urgency, desktops hide an alert after some seconds whatever its time-out.
        {"urgency", QVariant::fromValue<uchar>(2)},
        {"category", "x-dozely.alert"},
        {"desktop-entry", "dozely-agent"},
    };
    if (!soundName.isEmpty())
        hints.insert("sound-name", soundName);
    return hints;
}
} // namespace

UserNotificationServer::UserNotificationServer(Handlers handlers)
    : m_handlers(std::move(handlers)),
      m_service(BusConnection::Bus::Session, service,
                {.isThere = [this](const QByteArray &) { isThere(); },
                 .isAway = [this](BusService::Absence why, const QString &text) { isAway(why, text); }})
{
}

UserNotificationServer::~UserNotificationServer() = default;

void UserNotificationServer::need()
{
    m_isNeeded = true;
    if (!m_service.bus())
        static_cast<void>(m_service.open()); // isAway says why not
    else if (!m_service.owner())
        return; // the bus has been asked
    else if (m_service.isThere())
        readCapabilities();
    else
        start();
}

void UserNotificationServer::isThere()
{
    forgetServer();
    if (std::exchange(m_hasServer, true))
        serverIsLost();
    else if (m_isNeeded)
        readCapabilities();
}

void UserNotificationServer::isAway(BusService::Absence why, const QString &text)
{
    forgetServer();
    m_hasServer = false;
    switch (why) {
    case BusService::Absence::NoBus:
        fail("no session bus: " + quotable(text));
        break;
    case BusService::Absence::BusLost:
        m_isStarting = false;
        if (m_isNeeded)
            fail("the session bus has gone away");
        break;
    case BusService::Absence::NotRunning:
        if (m_isNeeded)
            start();
        break;
    case BusService::Absence::Ended:
        serverIsLost();
        break;
    }
}

void UserNotificationServer::forgetServer()
{
    ++m_epoch;
    m_isReady = m_isAsked = m_hasToldMissingActions = false;
    m_signals.reset();
}

void UserNotificationServer::serverIsLost()
{
    // Not asked again by itself: a server that dies of each attempt would be started for ever.
    m_isNeeded = false;
    m_handlers.lost();
}

void UserNotificationServer::start()
{
    if (std::exchange(m_isStarting, true))
        return;
    m_service.bus()->callLater(
        {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "StartServiceByName"}, "su",
        {QString(service), 0U}, startLimit, [this](const BusConnection::Reply &reply) {
            m_isStarting = false;
            // A server that has come was told of before this answer.
            if (m_isNeeded && !m_service.isThere())
                fail("no notification server: " +
                     (reply ? QString("it was started and is not there") : quotable(reply.error())));
        });
}

void UserNotificationServer::readCapabilities()
{
    if (std::exchange(m_isAsked, true))
        return;
    m_signals = m_service.subscribe(path, service, {},
                                    [this](const BusConnection::Signal &signal) { signalHasCome(signal); });
    call("GetCapabilities", {}, {},
         [this](const BusConnection::Reply &reply) { capabilitiesHaveCome(reply); });
}

void UserNotificationServer::capabilitiesHaveCome(const BusConnection::Reply &reply)
{
    if (!reply && reply.error().name == noReply) {
        m_isAsked = false;
        fail(quotable(reply.error()));
        return;
    }
    // One that refuses to say may show an alert all the same. An action that it does not know harms nothing.
    if (!reply)
        reportProblem("The notification server does not say what it can do: " + quotable(reply.error()));
    m_capabilities = reply ? reply->value(0).toStringList() : QStringList("actions");
    m_isReady = true;
    m_handlers.ready();
}

void UserNotificationServer::fail(const QString &why)
{
    m_isNeeded = false;
    m_handlers.absent(why);
}

void UserNotificationServer::call(const QByteArray &method, const QByteArray &signature,
                                  const QVariantList &arguments, BusConnection::ReplyHandler handler)
{
    m_service.bus()->callLater(
        {*m_service.owner(), path, service, method}, signature, arguments, answerLimit,
        [this, epoch = m_epoch, handler = std::move(handler)](const BusConnection::Reply &reply) {
            if (epoch == m_epoch)
                handler(reply);
        });
}

void UserNotificationServer::notify(const Content &content, quint32 replaced, NotifyHandler handler)
{
    QVariantList actions;
    if (!content.actionLabel.isEmpty() && m_capabilities.contains("actions"))
        actions = {QString(cancelKey), content.actionLabel};
    else if (!content.actionLabel.isEmpty() && !std::exchange(m_hasToldMissingActions, true))
        reportProblem("The notification server offers no buttons: alerts cannot be cancelled from there");
    const QString text = m_capabilities.contains("body-markup") ? content.text.toHtmlEscaped() : content.text;
    constexpr qint32 untilWithdrawn = 0;
    call("Notify", "susssasa{sv}i",
         {"Dozely", replaced, "appointment-soon", content.title, text, actions, hintsFor(content.soundName),
          untilWithdrawn},
         [handler = std::move(handler)](const BusConnection::Reply &reply) {
             const QVariant id = BusConnection::firstOf(reply);
             if (!reply)
                 handler(Error{quotable(reply.error()), reply.error().name});
             else if (id.typeId() != QMetaType::UInt || id.toUInt() == 0)
                 handler(Error{"the notification server gave it no id"});
             else
                 handler(id.toUInt());
         });
}

void UserNotificationServer::close(quint32 id, Failures failures)
{
    call("CloseNotification", "u", {id}, [failures](const BusConnection::Reply &reply) {
        if (!reply && failures == Failures::Told)
            reportProblem("An alert was not withdrawn: " + quotable(reply.error()));
    });
}

void UserNotificationServer::signalHasCome(const BusConnection::Signal &signal)
{
    const QVariant id = signal.arguments.value(0);
    if (id.typeId() != QMetaType::UInt)
        return;
    // Dismissing an alert is a NotificationClosed and no action: it cancels nothing.
    if (signal.name == "NotificationClosed")
        m_handlers.closed(id.toUInt());
    else if (signal.name == "ActionInvoked" && signal.arguments.value(1) == QVariant(QString(cancelKey)))
        m_handlers.cancelled(id.toUInt());
}

} // namespace dozely
