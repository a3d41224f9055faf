// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusService.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "DozelyKit/system/power/linux/LogindLock_p.h"

#include <QDateTime>

#include <functional>
#include <list>

namespace dozely
{

/// The machine's power as the login manager tells it over the system bus.
///
/// While somebody listens, it holds one delay lock ("sleep:shutdown"). What the manager announces becomes a
/// message; consent gives the lock back, and the manager goes on; when the machine has woken, the lock is
/// taken again. The manager and the bus may come late, go and come again: what they announced last is then
/// asked for. A signal that comes twice within half a minute is one; when the end of a sleep has not been
/// announced half a minute after it began, the manager is asked whether it is over.
class DOZELYKIT_AUTOTEST_EXPORT LogindPower : public SystemPower
{
public:
    /// Is told the message type where the machine itself has something to prepare: before sleep and power-off
    /// with consent, after all observers; after waking before them.
    using Preparation = std::function<void(quint32 messageType)>;

    explicit LogindPower(Preparation preparation = {});
    ~LogindPower() override;

    std::unique_ptr<Listening> listen(Listener listener) override;
    void allow(void *change) override;
    bool canSleep() override;
    bool sleep() override;
    bool powerOff() override;
    bool restart() override;
    QStringList blockers(Change change) override;
    bool isKeptAwakeElsewhere() override;
    bool isGoingOff() override;
    std::unique_ptr<Inhibition> inhibitSleep(const QString &reason) override;

    /// Whether the machine waits for us, should it be put to sleep now.
    bool holdsDelayLock() const { return m_delayLock.isHeld(); }

private:
    class ActionInhibition;
    class OnlyListening;
    /// One of the two kinds of announcements: that something begins, and that it is over.
    struct Announcement {
        bool hasBegun = false;
        QDateTime told; // when the last signal came; null before the first one
    };

    void stopListening();
    void connectToBus();
    void hearAnnouncements();
    void managerIs(BusConnection *manager);
    void setReachable(bool reachable);
    void prepareForSleep(bool begins);
    void prepareForShutdown(bool begins);
    void begin(quint32 messageType);
    void woke();
    void shutdownCancelled();
    void watchForEnd();
    void askWhetherOver();
    void ask(const QByteArray &property, const std::function<void()> &over);
    void deliver(quint32 messageType);
    void prepare(quint32 messageType) const;
    void forEachLock(const std::function<void(LogindLock &)> &action);

    Preparation m_preparation;
    BusService m_manager;
    std::list<std::unique_ptr<BusConnection::Subscription>> m_subscriptions;
    bool m_isReachable = false;
    bool m_isAbsenceReported = false;

    Listener m_listener;

    LogindLock m_delayLock;
    std::list<LogindLock *> m_actionLocks;
    Announcement m_sleep;
    Announcement m_shutdown;
    quintptr m_lastArgument = 0;
    quintptr m_pendingArgument = 0; // of the change that waits for consent
    quint32 m_pendingMessage = 0;
    std::unique_ptr<QObject> m_absence; // what is put off until it has lasted
    std::unique_ptr<QObject> m_watch;   // asking whether what was announced is over
    QObject m_context;                  // everything else that is put off
};

} // namespace dozely
