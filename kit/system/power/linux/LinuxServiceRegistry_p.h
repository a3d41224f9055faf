// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/ServiceRegistry.h"

#include <QHash>
#include <QList>

/// The services of this machine that have a name in the registry: its input system, and the controller of its
/// power, which is the real-time clock that can wake it.
class DOZELYKIT_AUTOTEST_EXPORT LinuxServiceRegistry : public ServiceRegistry
{
public:
    LinuxServiceRegistry();

    qint32 masterPort(quint32 *port) override;
    quint32 matchingService(quint32 masterPort, const QByteArray &className) override;
    qint32 matchingServices(quint32 masterPort, const QByteArray &className, quint32 *iterator) override;
    quint32 next(quint32 iterator) override;
    qint32 release(quint32 handle) override;
    qint32 properties(quint32 service, QVariantMap *properties) override;

private:
    /// A service, or, with what is still to come, an iterator.
    struct Entry {
        QByteArray className;
        QList<QByteArray> rest;
    };
    quint32 keep(const Entry &entry);

    QHash<quint32, Entry> m_entries; // by handle
    quint32 m_lastHandle;
};
