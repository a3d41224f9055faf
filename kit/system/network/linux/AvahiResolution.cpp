// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/AvahiResolution_p.h"

#include "DozelyKit/system/network/linux/AvahiArguments_p.h"

#include <algorithm>
#include <utility>

namespace dozely
{

namespace
{
constexpr char resolverInterface[] = "org.freedesktop.Avahi.ServiceResolver";
constexpr char browserInterface[] = "org.freedesktop.Avahi.RecordBrowser";
constexpr char timeoutName[] = "org.freedesktop.Avahi.TimeoutError";
constexpr quint32 withoutAddress = 8; // the lookup flag: addresses are asked for apart
constexpr quint16 internetClass = 1;
constexpr quint16 addressRecord = 1;      // A
constexpr quint16 longAddressRecord = 28; // AAAA
constexpr qsizetype sizeOfIPv4 = 4;
constexpr qsizetype sizeOfIPv6 = 16;

// A host that announces addresses without end is to cost no more memory than this.
constexpr qsizetype mostAddresses = 64;

bool isOfLink(const QByteArray &bytes)
{
    return bytes.size() == sizeOfIPv6 && static_cast<quint8>(bytes.at(0)) == 0xFE &&
           (static_cast<quint8>(bytes.at(1)) & 0xC0) == 0x80; // fe80::/10
}
} // namespace

AvahiResolution::AvahiResolution(std::shared_ptr<AvahiDaemon> daemon, const NetServices::Service &service,
                                 NetServices::ResolutionHandler &handler)
    : m_daemon(std::move(daemon)), m_service(service), m_handler(handler)
{
    m_daemon->add(*this);
}

AvahiResolution::~AvahiResolution()
{
    m_daemon->remove(*this);
    forgetAll();
}

void AvahiResolution::forgetBrowsers()
{
    m_browsing.reset();
    m_browserSignals.reset();
    m_told.clear();
    for (const QByteArray &path : std::exchange(m_browsers, {}))
        m_daemon->free(path, browserInterface);
}

void AvahiResolution::forgetAll()
{
    forgetBrowsers();
    m_attempt.reset();
    m_resolverSignals.reset();
    m_hostName.clear();
    m_daemon->free(std::exchange(m_resolver, {}), resolverInterface);
}

void AvahiResolution::daemonIsReady()
{
    forgetAll();
    startResolver();
}

void AvahiResolution::daemonIsNotReady(bool isAway, const QString &text)
{
    forgetAll();
    if (isAway)
        m_handler.notFound({NetServices::Problem::Unavailable, text});
}

void AvahiResolution::fail(NetServices::Problem problem, const QString &text)
{
    forgetAll();
    m_handler.notFound({problem, text});
}

void AvahiResolution::make(const QByteArray &operation, const QByteArray &signature,
                           const QVariantList &arguments, const QByteArray &interface,
                           const std::weak_ptr<int> &token,
                           const std::function<void(const QByteArray &path)> &made)
{
    m_daemon->call("/", AvahiArguments::serverInterface, operation, signature, arguments,
                   [this, interface, token, made, daemon = std::weak_ptr(m_daemon)](const auto &reply) {
                       const auto path = AvahiArguments::textIn(reply);
                       const auto alive = daemon.lock();
                       if (token.expired()) {
                           if (path && alive)
                               alive->free(path->toLatin1(), interface); // nobody wants it any more
                       } else if (path) {
                           made(path->toLatin1());
                       } else {
                           fail(AvahiArguments::problemOf(path.error()), path.error().text);
                       }
                   });
}

void AvahiResolution::startResolver()
{
    m_attempt = std::make_shared<int>(0);
    // Heard from before the resolver is made, so that its first word is not missed.
    m_resolverSignals =
        m_daemon->subscribe(resolverInterface, [this](const auto &signal) { resolverTold(signal); });
    make("ServiceResolverNew", "iisssiu",
         {AvahiArguments::any, AvahiArguments::any, m_service.name, m_service.type,
          m_service.domain.isEmpty() ? QString("local") : m_service.domain, AvahiArguments::any,
          withoutAddress},
         resolverInterface, m_attempt, [this](const QByteArray &path) { m_resolver = path; });
}

void AvahiResolution::resolverTold(const BusConnection::Signal &signal)
{
    if (m_resolver.isEmpty() || signal.path != m_resolver)
        return;
    if (signal.name == "Found")
        return resolverFound(signal.arguments);
    if (signal.name != "Failure")
        return;
    const QString error = signal.arguments.value(0).toString();
    if (error != timeoutName)
        return fail(NetServices::Problem::BadArgument, error);
    // Nobody has answered for some seconds: ask again.
    m_daemon->free(std::exchange(m_resolver, {}), resolverInterface);
    startResolver();
}

void AvahiResolution::resolverFound(const QVariantList &arguments)
{
    // interface, protocol, name, type, domain, host, address protocol, address, port, TXT, flags
    constexpr qsizetype count = 11;
    if (arguments.size() != count)
        return;
    const int interface = arguments.at(0).toInt();
    const QString host = arguments.at(5).toString();
    m_port = static_cast<quint16>(arguments.at(8).toUInt());
    m_record = AvahiArguments::recordFrom(arguments.at(9).toList());
    if (host == m_hostName && interface == m_interface)
        return report();
    forgetBrowsers();
    m_hostName = host;
    m_interface = interface;
    m_browsing = std::make_shared<int>(0);
    m_browserSignals =
        m_daemon->subscribe(browserInterface, [this](const auto &signal) { browserTold(signal); });
    startBrowser(addressRecord);
    startBrowser(longAddressRecord);
}

void AvahiResolution::startBrowser(quint16 recordType)
{
    make("RecordBrowserNew", "iisqqu",
         {m_interface, AvahiArguments::any, m_hostName, internetClass, recordType, AvahiArguments::noFlags},
         browserInterface, m_browsing, [this](const QByteArray &path) { m_browsers += path; });
}

void AvahiResolution::browserTold(const BusConnection::Signal &signal)
{
    // interface, protocol, name, class, type, data, flags
    constexpr qsizetype count = 7;
    if (!m_browsers.contains(signal.path) || signal.arguments.size() != count)
        return;
    const int interface = signal.arguments.at(0).toInt();
    const QByteArray bytes = signal.arguments.at(5).toByteArray();
    if (bytes.size() != sizeOfIPv4 && bytes.size() != sizeOfIPv6)
        return;
    Told told{interface, signal.arguments.at(1).toInt(), {}};
    told.address.family =
        bytes.size() == sizeOfIPv4 ? NetServices::Address::Family::IPv4 : NetServices::Address::Family::IPv6;
    told.address.bytes = bytes;
    told.address.scope = isOfLink(bytes) ? static_cast<quint32>(std::max(0, interface)) : 0;
    const bool isKnown = m_told.contains(told);
    if (signal.name == "ItemNew" && !isKnown && m_told.size() < mostAddresses)
        m_told += told;
    else if (signal.name == "ItemRemove" && isKnown)
        m_told.removeOne(told);
    else
        return;
    report();
}

void AvahiResolution::report()
{
    NetServices::Findings findings{m_hostName, m_port, {}, m_record};
    for (const Told &told : m_told) {
        NetServices::Address address = told.address;
        address.port = m_port;
        if (!findings.addresses.contains(address))
            findings.addresses += address;
    }
    if (!findings.addresses.isEmpty())
        m_handler.found(findings);
}

} // namespace dozely
