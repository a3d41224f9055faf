// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

namespace dozely
{

/// Port: services that hosts of the local network announce to one another (DNS-SD), and those that this one
/// announces.
///
/// What was asked for stays asked for: when the machine's daemon for it is away, or starts again, everything
/// is announced and resolved anew as soon as it is there.
///
/// THREADING: the main thread, with an event loop. Nothing waits; handlers are called from the event loop and
/// may do anything, ending what called them included.
class DOZELYKIT_EXPORT NetServices
{
public:
    /// Which service: its name as a person reads it, its type ("_http._tcp"), its domain (empty for "local").
    struct Service {
        QString name;
        QString type;
        QString domain;
    };

    /// Where a service listens.
    struct Address {
        enum class Family { IPv4, IPv6 };

        Family family = Family::IPv4;
        QByteArray bytes; ///< Four or sixteen, in network order.
        quint16 port = 0;
        quint32 scope =
            0; ///< The number of the interface that an IPv6 address of the link belongs to; 0 for others.

        bool operator==(const Address &) const = default;
    };

    /// What is known of a service.
    struct Findings {
        QString hostName;
        quint16 port = 0;
        QList<Address> addresses; ///< In the order in which the network told them; at least one.
        QByteArray txtRecord;     ///< As it travels: strings with a length byte before each.
    };

    enum class Problem {
        Collision,   ///< The name is taken.
        BadArgument, ///< The daemon refuses name, type, domain or record.
        Unavailable, ///< There is no daemon, or it does not answer. It is waited for.
        TimedOut,    ///< Nobody told where the service is.
    };

    struct Error {
        Problem problem;
        QString text;
    };

    /// Something under way. It ends, and its handler hears nothing more, when this is destroyed.
    class Activity
    {
    public:
        virtual ~Activity() = default;
    };

    class Publication : public Activity
    {
    public:
        /// Gives the service another TXT record, which those who watch it will see.
        virtual void setTxtRecord(const QByteArray &record) = 0;
    };

    class PublicationHandler
    {
    public:
        virtual ~PublicationHandler() = default;
        /// The network knows the service, by this name. Again after each change of name or restart of the
        /// daemon.
        virtual void published(const QString &name) = 0;
        virtual void notPublished(const Error &error) = 0;
    };

    class ResolutionHandler
    {
    public:
        virtual ~ResolutionHandler() = default;
        /// What is known now. Called again at each change.
        virtual void found(const Findings &findings) = 0;
        virtual void notFound(const Error &error) = 0;
    };

    virtual ~NetServices() = default;

    /// Whether services of this platform have TXT records.
    virtual bool supportsTxtRecords() const { return true; }

    /// Announces the service. When its name is taken, another is tried if `mayRename`. `handler` must outlive
    /// the returned object.
    virtual std::unique_ptr<Publication> publish(const Service &service, quint16 port,
                                                 const QByteArray &txtRecord, bool mayRename,
                                                 PublicationHandler &handler) = 0;

    /// Finds out where the service is and follows its changes. `handler` must outlive the returned object.
    virtual std::unique_ptr<Activity> resolve(const Service &service, ResolutionHandler &handler) = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<NetServices> &Port<NetServices>::current();

} // namespace dozely
