// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QDateTime>
#include <QString>
#include <QVariantMap>

#include <memory>
#include <optional>

struct ZDRPowerManagerFields;

/// Posted on NSNotificationCenter::defaultCenter(), without object and user info. The machine waits until the
/// observers have run.
/// @{
DOZELYKIT_EXPORT extern const QString ZDRPowerManagerSystemWillSleep;
DOZELYKIT_EXPORT extern const QString ZDRPowerManagerSystemDidWake;
/// The machine will power off or restart, or this process was asked to terminate (SIGTERM). An observer has
/// to end the process: nothing else does.
DOZELYKIT_EXPORT extern const QString ZDRPowerManagerSystemWillPowerOff;
/// @}

/// Hears what happens to the machine's power, puts it to sleep, and schedules when it wakes or switches
/// itself on.
///
/// Whatever is asked of the class first makes the shared instance. That subscribes to power messages and
/// takes over SIGTERM for the rest of the process: the signal wakes the event loop, which calls quit_message.
///
/// THREADING: the thread of the first use, whose event loop delivers messages and signals and runs the
/// observers. First use on any other thread must come later.
///
/// EXAMPLE
///     ZDRPowerManager::sharedInstance(); // in main, after the QCoreApplication
///     NSNotificationCenter::defaultCenter().addObserver(host, "powerOff",
///     ZDRPowerManagerSystemWillPowerOff);
class DOZELYKIT_EXPORT ZDRPowerManager
{
public:
    /// Makes the shared instance when there is none.
    static void initialize();
    static std::shared_ptr<ZDRPowerManager> sharedInstance();

    /// The shared instance; a second one is never made.
    static std::shared_ptr<ZDRPowerManager> init();

    ~ZDRPowerManager();
    ZDRPowerManager(const ZDRPowerManager &) = delete;
    ZDRPowerManager &operator=(const ZDRPowerManager &) = delete;

    /// Handles one power message: posts what it means, then consents to the change. Other messages are
    /// consented to alone.
    void _systemPowerHasChangedWithArgument(quint32 messageType, void *argument);

    /// Puts the machine to sleep now. Only a refusal is logged. Blocks for at most twelve seconds.
    static void forceSleep();

    /// Schedules an event: "AutoPower" and "AutoPowerPriv" switch the machine on, "AutoWake" and
    /// "AutoWakePriv" wake it. Always -1, whatever comes of it. Where the machine's scheduler fails,
    /// /usr/bin/pmset is asked, and waited for; one that hangs is killed after a minute.
    qint32 setAutoEventAtDate(const QString &key, const QDateTime &date);

    /// Cancels all events of this program whose type the key tells, in any case: one that contains
    /// "AutoPower", else one that contains "AutoWake".
    static void removeAutoEvents(const QString &key);

    /// Whether the machine can be woken: whether it has a power-management controller.
    static bool autoEventsSupported();

    /// A handle of the power-management controller, for _closePMUReference; 0 when there is none.
    static quint32 _pmuReference();
    static void _closePMUReference(quint32 handle);
    /// What the controller holds; absent without one.
    static std::optional<QVariantMap> pmuProperties();

    /// When the controller will wake the machine; null when it will not. Not what setWakeDate scheduled, but
    /// what has come of everything that was.
    static QDateTime wakeDate();
    static void setWakeDate(const QDateTime &date); ///< Schedules "AutoWake".
    static void removeWakeDate();                   ///< Cancels "AutoWake".

    /// When the controller says that it will switch the machine on, 2^32 seconds after the instant that it
    /// holds; null when it says nothing.
    static QDateTime startupDate();
    static void setStartupDate(const QDateTime &date); ///< Schedules "AutoPower".
    static void removeStartupDate();                   ///< Cancels "AutoPower".

private:
    ZDRPowerManager();
    std::unique_ptr<ZDRPowerManagerFields> d;
};

/// The callback of the power messages: hands type and argument to the shared instance.
DOZELYKIT_EXPORT void systemPowerHasChangedCallback(void *reference, quint32 service, quint32 messageType,
                                                    void *messageArgument);

/// What a signal leads to, in the event loop. Logs the signal; SIGTERM (15) is taken for a power-off message,
/// without a change to consent to. Does not end the process.
DOZELYKIT_EXPORT void quit_message(int signalNumber);
