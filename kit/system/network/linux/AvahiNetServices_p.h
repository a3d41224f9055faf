// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/NetServices.h"

namespace dozely
{

class AvahiDaemon;

/// Network services through the machine's Avahi daemon, which is spoken to over the system bus.
class DOZELYKIT_AUTOTEST_EXPORT AvahiNetServices : public NetServices
{
public:
    AvahiNetServices();
    ~AvahiNetServices() override;

    std::unique_ptr<Publication> publish(const Service &service, quint16 port, const QByteArray &txtRecord,
                                         bool mayRename, PublicationHandler &handler) override;
    std::unique_ptr<Activity> resolve(const Service &service, ResolutionHandler &handler) override;

private:
    std::shared_ptr<AvahiDaemon> daemon();

    std::shared_ptr<AvahiDaemon> m_daemon; ///< Made at the first use, which is on the main thread.
};

} // namespace dozely
