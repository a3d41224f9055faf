// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/AvahiNetServices_p.h"

#include "DozelyKit/system/network/linux/AvahiDaemon_p.h"
#include "DozelyKit/system/network/linux/AvahiPublication_p.h"
#include "DozelyKit/system/network/linux/AvahiResolution_p.h"

namespace dozely
{

AvahiNetServices::AvahiNetServices() = default;

AvahiNetServices::~AvahiNetServices() = default;

std::shared_ptr<AvahiDaemon> AvahiNetServices::daemon()
{
    if (!m_daemon)
        m_daemon = std::make_shared<AvahiDaemon>();
    return m_daemon;
}

std::unique_ptr<NetServices::Publication> AvahiNetServices::publish(const Service &service, quint16 port,
                                                                    const QByteArray &txtRecord,
                                                                    bool mayRename,
                                                                    PublicationHandler &handler)
{
    return std::make_unique<AvahiPublication>(daemon(), service, port, txtRecord, mayRename, handler);
}

std::unique_ptr<NetServices::Activity> AvahiNetServices::resolve(const Service &service,
                                                                 ResolutionHandler &handler)
{
    return std::make_unique<AvahiResolution>(daemon(), service, handler);
}

template<>
std::shared_ptr<NetServices> &Port<NetServices>::current()
{
    static auto *const port = new std::shared_ptr<NetServices>(std::make_shared<AvahiNetServices>());
    return *port;
}

} // namespace dozely
