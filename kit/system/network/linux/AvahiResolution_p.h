// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/NetServices.h"
#include "DozelyKit/system/network/linux/AvahiDaemon_p.h"
#include "DozelyKit/system/network/linux/AvahiFindings_p.h"

namespace dozely
{

/// One service that is being followed: a resolver for its host, port and TXT record, which tells every change
/// of them, and a browser each for the host's IPv4 and IPv6 addresses, since the resolver alone would tell a
/// single one.
class AvahiResolution : public NetServices::Activity, private AvahiDaemon::User
{
public:
    AvahiResolution(std::shared_ptr<AvahiDaemon> daemon, const NetServices::Service &service,
                    NetServices::ResolutionHandler &handler);
    ~AvahiResolution() override;
    AvahiResolution(const AvahiResolution &) = delete;
    AvahiResolution &operator=(const AvahiResolution &) = delete;

private:
    void daemonIsReady() override;
    void daemonIsNotReady(bool isAway, const QString &text) override;

    void startResolver();
    void resolverTold(const BusConnection::Signal &signal);
    void resolverFound(const QVariantList &arguments);
    void startBrowser(quint16 recordType);
    void browserTold(const BusConnection::Signal &signal);
    void report();
    void fail(NetServices::Problem problem, const QString &text);
    void forgetBrowsers();
    void forgetAll();
    void make(const QByteArray &operation, const QByteArray &signature, const QVariantList &arguments,
              const QByteArray &interface, const std::weak_ptr<int> &token,
              const std::function<void(const QByteArray &path)> &made);

    std::shared_ptr<AvahiDaemon> m_daemon;
    NetServices::Service m_service;
    NetServices::ResolutionHandler &m_handler;
    std::shared_ptr<int> m_attempt;  ///< Gone when the resolver is not wanted any more.
    std::shared_ptr<int> m_browsing; ///< Gone when the browsers are not.
    QByteArray m_resolver;           ///< Paths of the daemon's objects.
    QByteArrayList m_browsers;
    std::unique_ptr<BusConnection::Subscription> m_resolverSignals;
    std::unique_ptr<BusConnection::Subscription> m_browserSignals;
    AvahiFindings m_findings;
};

} // namespace dozely
