// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/NSNetService.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/system/machine/MachineIdentity.h"
#include "DozelyKit/system/network/NetServices.h"
#include "DozelyKit/system/network/TxtRecord_p.h"

#include <QObject>

using namespace dozely;

namespace
{
constexpr qsizetype longestName = 63; // bytes: a label of the name system

QString withoutFinalPoint(QString name)
{
    if (name.endsWith('.'))
        name.chop(1);
    return name;
}

/// The computer's name, as much of it as a label holds.
QString nameOfComputer()
{
    QString name = Port<MachineIdentity>::current()->computerName();
    while (name.toUtf8().size() > longestName)
        name.chop(name.back().isLowSurrogate() ? 2 : 1);
    return name;
}
} // namespace

void NSNetServiceDelegate::netServiceDidPublish(NSNetService &) {}
void NSNetServiceDelegate::netServiceDidNotPublish(NSNetService &, const NetServices::Error &) {}
void NSNetServiceDelegate::netServiceDidResolveAddress(NSNetService &) {}
void NSNetServiceDelegate::netServiceDidNotResolve(NSNetService &, const NetServices::Error &) {}
void NSNetServiceDelegate::netServiceDidUpdateTXTRecordData(NSNetService &, const QByteArray &) {}
void NSNetServiceDelegate::netServiceDidStop(NSNetService &) {}

// A delegate may destroy the service: nothing is touched after it was called.
struct NSNetService::Private : NetServices::PublicationHandler, NetServices::ResolutionHandler {
    explicit Private(NSNetService &service) : q(service), services(Port<NetServices>::current()) {}

    void published(const QString &actualName) override
    {
        name = actualName;
        if (delegate)
            delegate->netServiceDidPublish(q);
    }

    void notPublished(const NetServices::Error &error) override
    {
        if (error.problem != NetServices::Problem::Unavailable)
            publication.reset();
        if (delegate)
            delegate->netServiceDidNotPublish(q, error);
    }

    void found(const NetServices::Findings &findings) override
    {
        const bool isFirst = findingsSoFar.addresses.isEmpty();
        const bool moved = findings.addresses != findingsSoFar.addresses ||
                           findings.port != findingsSoFar.port || findings.hostName != findingsSoFar.hostName;
        const bool changed = !isFirst && findings.txtRecord != findingsSoFar.txtRecord;
        patience.reset();
        findingsSoFar = findings;
        port = findings.port;
        record = findings.txtRecord;
        const std::weak_ptr<int> alive = token;
        if (moved && delegate)
            delegate->netServiceDidResolveAddress(q);
        if (!alive.expired() && changed && resolution && delegate)
            delegate->netServiceDidUpdateTXTRecordData(q, findings.txtRecord);
    }

    void notFound(const NetServices::Error &error) override
    {
        if (error.problem != NetServices::Problem::Unavailable) {
            resolution.reset();
            patience.reset();
        }
        if (delegate)
            delegate->netServiceDidNotResolve(q, error);
    }

    NSNetService &q;
    std::shared_ptr<NetServices> services;
    NSNetServiceDelegate *delegate = nullptr;
    QString domain;
    QString type;
    QString name;
    qint64 port = -1;
    QByteArray record;
    NetServices::Findings findingsSoFar;
    std::shared_ptr<int> token = std::make_shared<int>(0); ///< Gone when the service is.
    std::unique_ptr<QObject> patience; ///< The context of the time-out; gone when it is not to come.
    std::unique_ptr<NetServices::Publication> publication;
    std::unique_ptr<NetServices::Activity> resolution;
};

NSNetService::NSNetService(const QString &domain, const QString &type, const QString &name, quint16 port)
    : NSNetService(domain, type, name)
{
    d->port = port;
}

NSNetService::NSNetService(const QString &domain, const QString &type, const QString &name)
    : d(std::make_unique<Private>(*this))
{
    d->domain = withoutFinalPoint(domain);
    d->type = withoutFinalPoint(type);
    d->name = name;
}

NSNetService::~NSNetService() = default;

void NSNetService::setDelegate(NSNetServiceDelegate *delegate)
{
    d->delegate = delegate;
}

NSNetServiceDelegate *NSNetService::delegate() const
{
    return d->delegate;
}

QString NSNetService::domain() const
{
    return d->domain;
}

QString NSNetService::type() const
{
    return d->type;
}

QString NSNetService::name() const
{
    return d->name;
}

void NSNetService::publish(quint32 options)
{
    if (d->publication || d->resolution)
        return;
    if (d->name.isEmpty())
        d->name = nameOfComputer();
    d->publication =
        d->services->publish({d->name, d->type, d->domain}, static_cast<quint16>(qMax<qint64>(0, d->port)),
                             d->record, (options & NoAutoRename) == 0, *d);
}

void NSNetService::resolveWithTimeout(std::chrono::milliseconds timeout)
{
    if (d->publication || d->resolution)
        return;
    d->findingsSoFar = {};
    d->resolution = d->services->resolve({d->name, d->type, d->domain}, *d);
    if (timeout <= std::chrono::milliseconds::zero())
        return;
    d->patience = std::make_unique<QObject>();
    Port<Clock>::current()->callAfter(timeout, d->patience.get(), [state = d.get()] {
        // The context is in the middle of its own event: it goes later.
        state->patience.release()->deleteLater();
        state->notFound({NetServices::Problem::TimedOut, "Nobody told in time where the service is."});
    });
}

void NSNetService::stop()
{
    if (!d->publication && !d->resolution)
        return;
    d->patience.reset();
    d->publication.reset();
    d->resolution.reset();
    if (d->delegate)
        d->delegate->netServiceDidStop(*this);
}

QString NSNetService::hostName() const
{
    return d->findingsSoFar.hostName;
}

qint64 NSNetService::port() const
{
    return d->port;
}

QList<NetServices::Address> NSNetService::addresses() const
{
    return d->findingsSoFar.addresses;
}

bool NSNetService::supportsTXTRecords() const
{
    return d->services->supportsTxtRecords();
}

QByteArray NSNetService::TXTRecordData() const
{
    return d->record;
}

bool NSNetService::setTXTRecordData(const QByteArray &record)
{
    if (!supportsTXTRecords() || record.size() > TxtRecord::largestPublished ||
        !TxtRecord::isWellFormed(record))
        return false;
    d->record = record;
    if (d->publication)
        d->publication->setTxtRecord(record);
    return true;
}

std::optional<QByteArray> NSNetService::dataFromTXTRecordDictionary(const QVariantMap &entries)
{
    return TxtRecord::encode(entries);
}

QVariantMap NSNetService::dictionaryFromTXTRecordData(const QByteArray &record)
{
    return TxtRecord::decode(record);
}
