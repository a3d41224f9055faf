// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/AvahiPublication_p.h"

#include "DozelyKit/system/network/TxtRecord_p.h"
#include "DozelyKit/system/network/linux/AvahiArguments_p.h"

#include <utility>

namespace dozely
{

namespace
{
constexpr char groupInterface[] = "org.freedesktop.Avahi.EntryGroup";
constexpr char collisionName[] = "org.freedesktop.Avahi.CollisionError";

// The states of an entry group (avahi-common/defs.h).
constexpr int isEstablished = 2;
constexpr int collided = 3;
constexpr int hasFailed = 4;

// A neighbour that claims every name would keep us and the network busy for ever.
constexpr int mostRenames = 15;
} // namespace

AvahiPublication::AvahiPublication(std::shared_ptr<AvahiDaemon> daemon, const NetServices::Service &service,
                                   quint16 port, const QByteArray &txtRecord, bool mayRename,
                                   NetServices::PublicationHandler &handler)
    : m_daemon(std::move(daemon)),
      m_service(service),
      m_port(port),
      m_record(txtRecord),
      m_mayRename(mayRename),
      m_handler(handler)
{
    m_daemon->add(*this);
}

AvahiPublication::~AvahiPublication()
{
    m_daemon->remove(*this);
    forgetGroup();
}

void AvahiPublication::forgetGroup()
{
    m_attempt.reset();
    m_changes.reset();
    m_isAdded = false;
    m_daemon->free(std::exchange(m_group, {}), groupInterface);
}

void AvahiPublication::daemonIsReady()
{
    forgetGroup();
    m_renames = 0;
    makeGroup();
}

void AvahiPublication::daemonIsNotReady(bool isAway, const QString &text)
{
    forgetGroup();
    if (isAway)
        m_handler.notPublished({NetServices::Problem::Unavailable, text});
}

void AvahiPublication::call(const QByteArray &name, const QByteArray &signature,
                            const QVariantList &arguments, const BusConnection::ReplyHandler &handler)
{
    m_daemon->call(m_group, groupInterface, name, signature, arguments,
                   [attempt = std::weak_ptr(m_attempt), handler](const auto &reply) {
                       if (!attempt.expired())
                           handler(reply);
                   });
}

void AvahiPublication::makeGroup()
{
    m_attempt = std::make_shared<int>(0);
    // Heard from before the group is made, so that none of its changes is missed.
    m_changes = m_daemon->subscribe(groupInterface, [this](const auto &signal) { groupChanged(signal); });
    m_daemon->call("/", AvahiArguments::serverInterface, "EntryGroupNew", {}, {},
                   [this, attempt = std::weak_ptr(m_attempt),
                    daemon = std::weak_ptr(m_daemon)](const BusConnection::Reply &reply) {
                       const auto path = AvahiArguments::textIn(reply);
                       const auto alive = daemon.lock();
                       if (attempt.expired()) {
                           if (path && alive)
                               alive->free(path->toLatin1(), groupInterface); // nobody wants it any more
                       } else if (path) {
                           m_group = path->toLatin1();
                           addService();
                       } else {
                           fail(path.error());
                       }
                   });
}

void AvahiPublication::addService()
{
    const QVariantList arguments{AvahiArguments::any,
                                 AvahiArguments::any,
                                 AvahiArguments::noFlags,
                                 m_service.name,
                                 m_service.type,
                                 m_service.domain,
                                 QString(""),
                                 m_port,
                                 AvahiArguments::txtStrings(m_record)};
    call("AddService", "iiussssqaay", arguments, [this](const BusConnection::Reply &reply) {
        if (reply)
            commit();
        else if (reply.error().name == collisionName)
            rename(); // with another service of this machine
        else
            fail(reply.error());
    });
}

void AvahiPublication::commit()
{
    m_isAdded = true;
    call("Commit", {}, {}, [this](const BusConnection::Reply &reply) {
        if (!reply)
            fail(reply.error());
    });
}

void AvahiPublication::groupChanged(const BusConnection::Signal &signal)
{
    if (m_group.isEmpty() || signal.path != m_group || signal.name != "StateChanged")
        return;
    const int state = signal.arguments.value(0).toInt();
    if (state == isEstablished)
        m_handler.published(m_service.name);
    else if (state == collided)
        rename(); // with a service of another host
    else if (state == hasFailed)
        fail(NetServices::Problem::BadArgument, signal.arguments.value(1).toString());
}

void AvahiPublication::rename()
{
    m_isAdded = false;
    if (!m_mayRename || ++m_renames > mostRenames)
        return fail(NetServices::Problem::Collision,
                    QString("The name \"%1\" is taken.").arg(m_service.name));
    call("Reset", {}, {}, [](const auto &) {});
    m_daemon->call("/", AvahiArguments::serverInterface, "GetAlternativeServiceName", "s", {m_service.name},
                   [this, attempt = std::weak_ptr(m_attempt)](const BusConnection::Reply &reply) {
                       if (attempt.expired())
                           return;
                       const auto name = AvahiArguments::textIn(reply);
                       if (!name)
                           return fail(name.error());
                       m_service.name = *name;
                       addService();
                   });
}

void AvahiPublication::fail(const Error &error)
{
    fail(AvahiArguments::problemOf(error), error.text);
}

void AvahiPublication::fail(NetServices::Problem problem, const QString &text)
{
    forgetGroup();
    m_handler.notPublished({problem, text});
}

void AvahiPublication::setTxtRecord(const QByteArray &record)
{
    m_record = record;
    if (!m_isAdded)
        return; // it will be added with this record
    const QVariantList arguments{AvahiArguments::any,
                                 AvahiArguments::any,
                                 AvahiArguments::noFlags,
                                 m_service.name,
                                 m_service.type,
                                 m_service.domain,
                                 AvahiArguments::txtStrings(m_record)};
    call("UpdateServiceTxt", "iiusssaay", arguments, [this](const BusConnection::Reply &reply) {
        if (!reply)
            fail(reply.error());
    });
}

} // namespace dozely
