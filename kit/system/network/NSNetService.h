// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/NetServices.h"

#include <QVariantMap>

#include <chrono>
#include <memory>
#include <optional>

class NSNetService;

/// Who is told what becomes of a network service. All operations are optional; they are called from the event
/// loop and may do anything, destroying the service included.
class DOZELYKIT_EXPORT NSNetServiceDelegate
{
public:
    virtual ~NSNetServiceDelegate() = default;

    /// The network knows the service now; its name may have changed because the wanted one was taken. Called
    /// again when it had to be published anew.
    virtual void netServiceDidPublish(NSNetService &service);
    /// The service is not published. When the problem is Unavailable it will be as soon as that is over,
    /// unless it is stopped.
    virtual void netServiceDidNotPublish(NSNetService &service, const dozely::NetServices::Error &error);
    /// There are addresses, or they have changed.
    virtual void netServiceDidResolveAddress(NSNetService &service);
    /// The service was not found. When the problem is Unavailable it is still looked for, unless it is
    /// stopped.
    virtual void netServiceDidNotResolve(NSNetService &service, const dozely::NetServices::Error &error);
    /// The service that is being resolved has another TXT record.
    virtual void netServiceDidUpdateTXTRecordData(NSNetService &service, const QByteArray &record);
    /// `stop` was called.
    virtual void netServiceDidStop(NSNetService &service);
};

/// A service of the local network: one that this process announces, or one whose address and TXT record it
/// wants.
///
/// THREADING: the main thread, with an event loop. Nothing waits. What others announce is anybody's word:
/// nothing on the local network proves who a service is.
class DOZELYKIT_EXPORT NSNetService
{
public:
    /// Bits of `publish`.
    enum Option : quint32 {
        NoAutoRename = 1, ///< When the name is taken, fail instead of trying another.
    };

    /// A service to be published, which listens on `port`. An empty `name` stands for the computer's. The
    /// domain is empty for the usual one, the type something like "_http._tcp"; a point at the end of either
    /// means nothing.
    NSNetService(const QString &domain, const QString &type, const QString &name, quint16 port);

    /// A service to be resolved.
    NSNetService(const QString &domain, const QString &type, const QString &name);

    ~NSNetService();
    NSNetService(const NSNetService &) = delete;
    NSNetService &operator=(const NSNetService &) = delete;

    /// Not owned; null for none. It must be taken away before it is destroyed.
    void setDelegate(NSNetServiceDelegate *delegate);
    NSNetServiceDelegate *delegate() const;

    QString domain() const;
    QString type() const;
    /// The name, after publication the one that the network knows.
    QString name() const;

    /// Announces the service until it is stopped or destroyed. Does nothing when it is already being
    /// published or resolved.
    void publish(quint32 options = 0);

    /// Looks for the service, and follows its addresses and its TXT record until it is stopped or destroyed.
    /// When no address is known after `timeout` it is given up; 0 waits without end. Does nothing when it is
    /// already being published or resolved.
    void resolveWithTimeout(std::chrono::milliseconds timeout);

    /// Withdraws the service, or stops following it. What is known stays known.
    void stop();

    /// The name of the service's host; null until it is resolved.
    QString hostName() const;
    /// The port; -1 until it is resolved or given.
    qint64 port() const;
    /// Where the resolved service listens, in the order in which the network told it.
    QList<dozely::NetServices::Address> addresses() const;

    /// Whether this platform's services have TXT records.
    bool supportsTXTRecords() const;
    /// The TXT record as it travels; null as long as there is none.
    QByteArray TXTRecordData() const;
    /// Gives the service a TXT record; when it is published, the network hears of it. False, and nothing
    /// changes, for a record that is damaged or larger than 1300 bytes. A null record takes the record away.
    bool setTXTRecordData(const QByteArray &record);

    /// The TXT record with these entries: texts or byte arrays, or invalid for a key without a value. Absent
    /// for what no record can hold: a key that is empty, holds "=" or anything but printable ASCII, or
    /// differs from another by case alone; an entry of more than 255 bytes; more than 1300 bytes in all.
    static std::optional<QByteArray> dataFromTXTRecordDictionary(const QVariantMap &entries);
    /// The entries of a TXT record: byte arrays, invalid for a key without a value. Keys keep their case; of
    /// two that differ by case alone the first counts. What is damaged is left out.
    static QVariantMap dictionaryFromTXTRecordData(const QByteArray &record);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
