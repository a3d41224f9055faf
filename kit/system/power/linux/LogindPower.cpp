// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/linux/LogindPower_p.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/system/power/PowerMessages.h"
#include "DozelyKit/system/power/linux/RtcPowerEventScheduler_p.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <exception>
#include <utility>

namespace dozely
{

using std::chrono::seconds;

namespace
{
constexpr char service[] = "org.freedesktop.login1";
constexpr char managerPath[] = "/org/freedesktop/login1";
constexpr char managerInterface[] = "org.freedesktop.login1.Manager";

constexpr char ourselves[] = "com.dozely"; // in LogindLock

constexpr seconds findingTime{2};
constexpr seconds orderTime{10};
constexpr seconds answerTime{10};
constexpr seconds absenceTime{10}; // a restart takes less, and is nobody's business
constexpr seconds repetitionTime{30};
constexpr seconds overTime{30};

/// Has the manager do something to the machine, over a connection of its own.
bool order(const char *operation)
{
    constexpr bool mayAskThePerson = false;
    const auto bus = BusConnection::open(BusConnection::Bus::System);
    return bus && (*bus)->call({service, managerPath, managerInterface, operation}, "b", {mayAskThePerson},
                               QDeadlineTimer(orderTime));
}

/// Who holds a "block" lock.
struct Blocker {
    QString who;
    QString why;
    qint64 process;
};

QList<Blocker> blockersOf(const QString &wanted)
{
    const auto bus = BusConnection::open(BusConnection::Bus::System);
    if (!bus)
        return {};
    const auto reply = (*bus)->call({service, managerPath, managerInterface, "ListInhibitors"}, "", {},
                                    QDeadlineTimer(findingTime));
    QList<Blocker> blockers;
    for (const QVariant &inhibitor : BusConnection::firstOf(reply).toList()) {
        const QVariantList parts = inhibitor.toList(); // what, who, why, mode, user, process
        if (parts.value(3).toString() == "block" && parts.value(0).toString().split(':').contains(wanted))
            blockers += {parts.value(1).toString(), parts.value(2).toString(), parts.value(5).toLongLong()};
    }
    return blockers;
}

bool isRepetition(const QDateTime &told)
{
    if (told.isNull())
        return false;
    const qint64 passed = told.msecsTo(Port<Clock>::current()->currentDate());
    return passed >= 0 && std::chrono::milliseconds(passed) <= repetitionTime;
}
} // namespace

/// Blocks sleep that nobody forces. "idle" too: a desktop counts the time until it asks for sleep by that;
/// and the lid's switch, for which the manager by default cares about no other lock.
class LogindPower::ActionInhibition : public Inhibition
{
public:
    ActionInhibition(LogindPower &power, const QString &reason)
        : m_power(&power),
          m_alive(&power.m_context),
          m_lock({"sleep:idle:handle-lid-switch", reason, "block"})
    {
        m_power->m_actionLocks.push_back(&m_lock);
        m_power->connectToBus();
        if (m_power->m_isReachable)
            m_lock.setManager(m_power->m_manager.bus());
        m_lock.take();
    }

    ~ActionInhibition() override
    {
        if (m_alive)
            m_power->m_actionLocks.remove(&m_lock);
    }

private:
    LogindPower *m_power;
    QPointer<QObject> m_alive; // gone with the port
    LogindLock m_lock;
};

class LogindPower::OnlyListening : public Listening
{
public:
    explicit OnlyListening(LogindPower &power) : m_power(&power), m_alive(&power.m_context) {}

    ~OnlyListening() override
    {
        if (m_alive)
            m_power->stopListening();
    }

private:
    LogindPower *m_power;
    QPointer<QObject> m_alive; // gone with the port
};

LogindPower::LogindPower(Preparation preparation)
    : m_preparation(std::move(preparation)),
      m_manager(BusConnection::Bus::System, service,
                {.opened = [this] { hearAnnouncements(); },
                 .isThere = [this](const QByteArray &) { managerIs(m_manager.bus()); },
                 .isAway = [this](auto, const QString &) { managerIs(nullptr); }}),
      m_delayLock({"sleep:shutdown", "Schedules are made ready before the machine stops", "delay"})
{
}

LogindPower::~LogindPower()
{
    forEachLock([](LogindLock &lock) { lock.setManager(nullptr); });
}

void LogindPower::forEachLock(const std::function<void(LogindLock &)> &action)
{
    action(m_delayLock);
    for (LogindLock *lock : m_actionLocks)
        action(*lock);
}

std::unique_ptr<SystemPower::Listening> LogindPower::listen(Listener listener)
{
    if (m_listener || !listener)
        return nullptr;
    m_listener = std::move(listener);
    m_delayLock.take();
    connectToBus();
    return std::make_unique<OnlyListening>(*this);
}

void LogindPower::stopListening()
{
    m_listener = nullptr;
    m_pendingArgument = 0;
    m_delayLock.release();
}

void LogindPower::connectToBus()
{
    if (m_manager.bus())
        return;
    if (!m_isReachable)
        setReachable(false);
    m_manager.keepOpen(Port<Clock>::current());
}

void LogindPower::hearAnnouncements()
{
    const auto hear = [this](const char *name, void (LogindPower::*handler)(bool)) {
        return m_manager.subscribe(managerPath, managerInterface, name,
                                   [this, handler](const BusConnection::Signal &signal) {
                                       const QVariant begins = signal.arguments.value(0);
                                       if (begins.typeId() == QMetaType::Bool)
                                           (this->*handler)(begins.toBool());
                                   });
    };
    m_subscriptions.clear();
    m_subscriptions.push_back(hear("PrepareForSleep", &LogindPower::prepareForSleep));
    m_subscriptions.push_back(hear("PrepareForShutdown", &LogindPower::prepareForShutdown));
}

void LogindPower::managerIs(BusConnection *manager)
{
    forEachLock([manager](LogindLock &lock) { lock.setManager(manager); });
    setReachable(manager != nullptr);
    // What the manager that was there before has begun may be over without having been told to us.
    if (manager)
        askWhetherOver();
}

void LogindPower::setReachable(bool reachable)
{
    const bool wasReachable = m_isReachable;
    m_isReachable = reachable;
    if (reachable) {
        if (m_isAbsenceReported)
            reportProblem("The login manager is there again.");
        m_isAbsenceReported = false;
    } else if (wasReachable || !m_absence) {
        m_absence = std::make_unique<QObject>();
        Port<Clock>::current()->callAfter(absenceTime, m_absence.get(), [this] {
            if (!m_isReachable && !std::exchange(m_isAbsenceReported, true)) {
                reportProblem("The login manager cannot be reached: sleep and power-off of the machine are "
                              "not noticed until it is there.");
            }
        });
    }
}

void LogindPower::prepareForSleep(bool begins)
{
    if (begins == m_sleep.hasBegun && isRepetition(m_sleep.told)) {
        m_delayLock.retry();
        return;
    }
    m_sleep.told = Port<Clock>::current()->currentDate();
    m_sleep.hasBegun = begins;
    if (begins)
        begin(kIOMessageSystemWillSleep);
    else
        woke();
}

void LogindPower::prepareForShutdown(bool begins)
{
    if (begins == m_shutdown.hasBegun && isRepetition(m_shutdown.told)) {
        m_delayLock.retry();
        return;
    }
    m_shutdown.told = Port<Clock>::current()->currentDate();
    m_shutdown.hasBegun = begins;
    if (begins)
        begin(kIOMessageSystemWillPowerOff);
    else
        shutdownCancelled();
}

void LogindPower::begin(quint32 messageType)
{
    m_pendingMessage = messageType;
    m_pendingArgument = m_lastArgument + 1; // of the message that follows
    watchForEnd();
    deliver(messageType);
}

void LogindPower::woke()
{
    m_pendingArgument = 0;
    if (m_listener)
        m_delayLock.take();
    forEachLock([](LogindLock &lock) { lock.retry(); });
    prepare(kIOMessageSystemHasPoweredOn);
    deliver(kIOMessageSystemHasPoweredOn);
}

void LogindPower::shutdownCancelled()
{
    m_pendingArgument = 0;
    if (m_listener)
        m_delayLock.take();
    forEachLock([](LogindLock &lock) { lock.retry(); });
    prepare(kIOMessageSystemWillNotPowerOff);
    deliver(kIOMessageSystemWillNotPowerOff);
}

void LogindPower::watchForEnd()
{
    m_watch = std::make_unique<QObject>();
    Port<Clock>::current()->callAfter(overTime, m_watch.get(), [this] { askWhetherOver(); });
}

void LogindPower::askWhetherOver()
{
    if (!m_sleep.hasBegun && !m_shutdown.hasBegun)
        return;
    watchForEnd();
    if (m_sleep.hasBegun)
        ask("PreparingForSleep", [this] {
            if (m_sleep.hasBegun)
                prepareForSleep(false);
        });
    if (m_shutdown.hasBegun)
        ask("PreparingForShutdown", [this] {
            if (m_shutdown.hasBegun)
                prepareForShutdown(false);
        });
}

void LogindPower::ask(const QByteArray &property, const std::function<void()> &over)
{
    if (!m_isReachable)
        return;
    m_manager.bus()->callLater({service, managerPath, "org.freedesktop.DBus.Properties", "Get"}, "ss",
                               {QString(managerInterface), QString::fromLatin1(property)}, answerTime,
                               [over](const BusConnection::Reply &reply) {
                                   const QVariant value = BusConnection::firstOf(reply);
                                   if (value.typeId() == QMetaType::Bool && !value.toBool())
                                       over();
                               });
}

void LogindPower::deliver(quint32 messageType)
{
    if (!m_listener)
        return;
    auto *const argument = reinterpret_cast<void *>(++m_lastArgument);
    const Listener listener = m_listener; // it may stop listening meanwhile
    try {
        listener(messageType, argument);
        return;
    } catch (const std::exception &exception) {
        reportProblem(
            QString("Handling a power message failed: %1").arg(QString::fromUtf8(exception.what())));
    } catch (...) {
        reportProblem("Handling a power message failed.");
    }
    allow(argument);
}

void LogindPower::prepare(quint32 messageType) const
{
    if (m_preparation)
        m_preparation(messageType);
}

void LogindPower::allow(void *change)
{
    const auto argument = reinterpret_cast<quintptr>(change);
    if (argument == 0 || argument != m_pendingArgument)
        return;
    m_pendingArgument = 0;
    prepare(m_pendingMessage);
    m_delayLock.release();
}

bool LogindPower::canSleep()
{
    // Over a connection of its own: this may be a program whose event loop does not run.
    const auto bus = BusConnection::open(BusConnection::Bus::System);
    if (!bus)
        return false;
    const auto reply = (*bus)->call(
        {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner"}, "s",
        {QString(service)}, QDeadlineTimer(findingTime));
    return BusConnection::firstOf(reply).toBool();
}

bool LogindPower::sleep()
{
    return order("Suspend");
}

bool LogindPower::powerOff()
{
    return order("PowerOff");
}

bool LogindPower::restart()
{
    return order("Reboot");
}

QStringList LogindPower::blockers(Change change)
{
    const QString wanted = change == Change::Sleep ? "sleep" : "shutdown";
    QStringList blockers;
    for (const Blocker &blocker : blockersOf(wanted)) {
        if (blocker.who != ourselves)
            blockers += QString("%1: %2").arg(blocker.who, blocker.why);
    }
    return blockers;
}

bool LogindPower::isKeptAwakeElsewhere()
{
    const QList<Blocker> blockers = blockersOf("sleep");
    return std::any_of(blockers.cbegin(), blockers.cend(), [](const Blocker &blocker) {
        return blocker.who == ourselves && blocker.process != QCoreApplication::applicationPid();
    });
}

bool LogindPower::isGoingOff()
{
    const QDeadlineTimer deadline(findingTime);
    const auto bus = BusConnection::open(BusConnection::Bus::System);
    if (!bus)
        return false;
    const auto isPreparing =
        (*bus)->property({service, managerPath, managerInterface, "PreparingForShutdown"}, deadline);
    if (isPreparing && isPreparing->toBool())
        return true;
    // Who forces the end asks the service manager itself.
    const auto state = (*bus)->property({"org.freedesktop.systemd1", "/org/freedesktop/systemd1",
                                         "org.freedesktop.systemd1.Manager", "SystemState"},
                                        deadline);
    return state && state->toString() == "stopping";
}

std::unique_ptr<SystemPower::Inhibition> LogindPower::inhibitSleep(const QString &reason)
{
    return std::make_unique<ActionInhibition>(*this, reason);
}

template<>
std::shared_ptr<SystemPower> &Port<SystemPower>::current()
{
    static auto *const port = new std::shared_ptr<SystemPower>(std::make_shared<LogindPower>(
        [](quint32 messageType) { RtcPowerEventScheduler::ofThisProcess()->powerChanges(messageType); }));
    return *port;
}

} // namespace dozely
