// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/NetServices.h"
#include "DozelyKit/system/network/linux/AvahiDaemon_p.h"

namespace dozely
{

/// One service that the daemon announces for us: an entry group, made anew whenever the daemon starts anew.
class AvahiPublication : public NetServices::Publication, private AvahiDaemon::User
{
public:
    AvahiPublication(std::shared_ptr<AvahiDaemon> daemon, const NetServices::Service &service, quint16 port,
                     const QByteArray &txtRecord, bool mayRename, NetServices::PublicationHandler &handler);
    ~AvahiPublication() override;
    AvahiPublication(const AvahiPublication &) = delete;
    AvahiPublication &operator=(const AvahiPublication &) = delete;

    void setTxtRecord(const QByteArray &record) override;

private:
    void daemonIsReady() override;
    void daemonIsNotReady(bool isAway, const QString &text) override;

    void makeGroup();
    void addService();
    void commit();
    void groupChanged(const BusConnection::Signal &signal);
    void rename();
    void fail(NetServices::Problem problem, const QString &text);
    void fail(const Error &error);
    void forgetGroup();
    void call(const QByteArray &name, const QByteArray &signature, const QVariantList &arguments,
              const BusConnection::ReplyHandler &handler);

    std::shared_ptr<AvahiDaemon> m_daemon;
    NetServices::Service m_service; ///< Its name is the one being tried.
    quint16 m_port;
    QByteArray m_record;
    bool m_mayRename;
    NetServices::PublicationHandler &m_handler;
    /// Gone when the group is: what is on its way for that group then comes to nothing.
    std::shared_ptr<int> m_attempt;
    QByteArray m_group; ///< Its path; empty when there is none.
    std::unique_ptr<BusConnection::Subscription> m_changes;
    int m_renames = 0;
    bool m_isAdded = false; ///< Whether the group holds the service.
};

} // namespace dozely
