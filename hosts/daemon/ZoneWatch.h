// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/StoreWatcher.h"

#include <QByteArray>
#include <QObject>

namespace dozely
{
class Clock;
} // namespace dozely

/// Tells when wall times mean other instants: the machine has another time zone, its clock keeps local time
/// or does so no more, or the system's zone data were replaced.
///
/// THREADING: the main thread.
class ZoneWatch : public QObject
{
    Q_OBJECT
public:
    /// `clock` and `parent` must outlive the object.
    explicit ZoneWatch(dozely::Clock &clock, QObject *parent = nullptr);

Q_SIGNALS:
    /// A moment after the change.
    void changed();

private:
    void look();

    StoreWatcher m_zone;
    StoreWatcher m_data;
    QByteArray m_known;
};
