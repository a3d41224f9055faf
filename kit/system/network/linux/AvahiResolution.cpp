// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/AvahiResolution_p.h"

#include "DozelyKit/system/network/linux/AvahiArguments_p.h"

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
    m_findings.forgetAddresses();
    for (const QByteArray &path : std::exchange(m_browsers, {}))
        m_daemon->free(path, browserInterface);
}

void AvahiResolution::forgetAll()
{
    forgetBrowsers();
    m_attempt.reset();
    m_resolverSignals.reset();
    m_findings.forgetHost();
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
    switch (m_findings.resolved(arguments)) {
    case AvahiFindings::Change::Record:
        return report();
    case AvahiFindings::Change::Host:
        break;
    default:
        return;
    }
    forgetBrowsers();
    m_browsing = std::make_shared<int>(0);
    m_browserSignals =
        m_daemon->subscribe(browserInterface, [this](const auto &signal) { browserTold(signal); });
    startBrowser(addressRecord);
    startBrowser(longAddressRecord);
}

void AvahiResolution::startBrowser(quint16 recordType)
{
    make("RecordBrowserNew", "iisqqu",
         {m_findings.interface(), AvahiArguments::any, m_findings.hostName(), internetClass, recordType,
          AvahiArguments::noFlags},
         browserInterface, m_browsing, [this](const QByteArray &path) { m_browsers += path; });
}

void AvahiResolution::browserTold(const BusConnection::Signal &signal)
{
    if (m_browsers.contains(signal.path) &&
        m_findings.browsed(signal.name, signal.arguments) == AvahiFindings::Change::Addresses)
        report();
}

void AvahiResolution::report()
{
    const NetServices::Findings findings = m_findings.findings();
    if (!findings.addresses.isEmpty())
        m_handler.found(findings);
}

} // namespace dozely
