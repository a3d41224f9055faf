// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QVariantMap>

/// Wishes that many people have, filled in: what a window offers where there is no schedule yet. Each is a
/// SCHEDULE of com.dozely.Scheduler1 that can be added as it is, by the machine's clocks, from its next time
/// on. THREADING: the main thread.
class ReadyWishes
{
    Q_DECLARE_TR_FUNCTIONS(ReadyWishes)
public:
    /// Every weekday at 22:00, with an alert five minutes before.
    static QVariantMap switchOffInTheEvening();

    /// Every weekday at 06:55, in the session; the machine is woken or switched on. A player that the machine
    /// has plays a sound that it has, in whose place the person puts his own.
    static QVariantMap wakeWithMusic();

    /// Every night at 03:00, as root; the machine is woken and goes back to sleep. An archive of all homes,
    /// the one of last night being replaced only when the new one is whole.
    static QVariantMap backupAtNight();

    /// All three, in that order.
    static QList<QVariantMap> all();

private:
    static QVariantMap schedule(const QString &name, const QString &bundle, const QString &rule, QTime time);
};
