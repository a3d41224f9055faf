// SPDX-License-Identifier: MIT
#include "hosts/common/performing/UnitStart.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"

#include <QProcessEnvironment>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <algorithm>
#include <fcntl.h>
#include <utility>

using namespace dozely;

namespace
{
constexpr qsizetype longestWords = 60; // of a schedule's name
constexpr char logName[] = "dozely-action";

/// What the performer needs, beyond the time that its action has to end, to kill what is left and to write
/// down what became of it.
constexpr std::chrono::seconds timeToWriteDown(10);

QString newUnit(const QString &schedule)
{
    static const QRegularExpression others("[^a-z0-9]+");
    const QString words = schedule.toLower().replace(others, "-").left(longestWords);
    return QString("dozely-action-%1-%2.service")
        .arg(words, QString::number(QRandomGenerator::global()->generate(), 16));
}

/// What programs of a session look for, the display above all: the user's manager need not know of it. Not
/// what a manager gives each unit itself, nor what it does not take.
QStringList environmentOfTheSession()
{
    static const QRegularExpression taken(QRegularExpression::anchoredPattern(
        "[A-Za-z_][A-Za-z0-9_]*=[^\\x00-\\x08\\x0b-\\x1f\\x7f\\x{fffd}]*"));
    static const QRegularExpression ofUnits("^(INVOCATION_ID|JOURNAL_STREAM|MAINPID|MANAGERPID|NOTIFY_SOCKET|"
                                            "SYSTEMD_EXEC_PID|LISTEN_\\w+|WATCHDOG_\\w+)=");
    QStringList entries = QProcessEnvironment::systemEnvironment().toStringList().filter(taken);
    entries.removeIf([](const QString &entry) { return ofUnits.match(entry).hasMatch(); });
    return entries;
}

QString clauseFor(const QString &result)
{
    if (result == "oom-kill")
        return "it took more memory than it may";
    return QString("the service manager calls that \"%1\"").arg(logLabel(result));
}
} // namespace

/// One that came while nobody knew how to start it.
struct UnitStart::Early {
    Performer performer;
    Answered answered;
    Descriptor input;
};

std::unique_ptr<PerformerStart> PerformerStart::ofThisMachine(const QString &program,
                                                              ServiceManager::Whose whose)
{
    if (ServiceManager::hasStartedMachine())
        return std::make_unique<UnitStart>(program, whose);
    ZDRLog("Actions run in processes that belong to this one: no systemd has started this machine");
    return std::make_unique<ForkedStart>(program);
}

UnitStart::UnitStart(const QString &program, ServiceManager::Whose whose)
    : m_program(program), m_whose(whose), m_forked(program), m_manager(whose, Port<Clock>::current())
{
    m_manager.find([this](const Result<void> &manager) { found(manager); });
}

void UnitStart::found(const Result<void> &manager)
{
    m_way = manager ? Way::Units : Way::Forked;
    if (manager)
        ZDRLog("Actions run in units of the service manager, one each");
    else
        ZDRLog("Actions run in processes that belong to this one: the service manager cannot be reached: %@",
               manager.error().text);
    for (const auto &early : std::exchange(m_early, {}))
        start(early->performer, early->answered);
}

void UnitStart::start(const Performer &performer, Answered answered)
{
    switch (m_way) {
    case Way::NotKnown: {
        Descriptor input(::fcntl(performer.input, F_DUPFD_CLOEXEC, 3));
        auto early = std::make_shared<Early>(Early{performer, std::move(answered), std::move(input)});
        early->performer.input = early->input.get();
        m_early.insert(performer.name, early);
        break;
    }
    case Way::Units:
        startUnit(performer, answered);
        break;
    case Way::Forked:
        m_forked.start(performer, std::move(answered));
        break;
    }
}

void UnitStart::startUnit(const Performer &performer, const Answered &answered)
{
    TransientService service;
    service.name = m_units[performer.name] = newUnit(performer.schedule);
    service.description = QString("Dozely action of schedule \"%1\"").arg(logLabel(performer.schedule));
    service.program = m_program;
    service.arguments = QStringList{"--root", RootFolder::path(), "--in-unit"};
    if (m_whose == ServiceManager::Whose::User)
        service.environment = environmentOfTheSession();
    service.logName = logName;
    service.input = performer.input;
    service.limits = limitsFor(performer);
    service.timeToStop = performer.limits.timeToEnd + timeToWriteDown;
    m_manager.start(service, [answered](const Result<void> &taken) {
        answered(taken ? taken
                       : Error{QString("the service manager did not start its performer: %1")
                                   .arg(logLabel(taken.error().text))});
    });
}

/// A user's manager that may not do what it is asked to would not start the service at all.
ProgramLimits UnitStart::limitsFor(const Performer &performer) const
{
    ProgramLimits limits = performer.limits.program;
    if (m_whose == ServiceManager::Whose::User && limits.nice.value_or(0) < 0) {
        ZDRLog("Schedule \"%@\": a user's action cannot have the nice value %@", logLabel(performer.schedule),
               QString::number(*limits.nice));
        limits.nice.reset();
    }
    return limits;
}

void UnitStart::tellEnd(const QString &name, Told told)
{
    if (!m_units.contains(name))
        return m_forked.tellEnd(name, std::move(told));
    m_manager.tellResult(m_units[name], [told = std::move(told)](const QString &result) {
        told(result.isEmpty() ? result : clauseFor(result));
    });
}

void UnitStart::forget(const QString &name)
{
    m_early.remove(name);
    const QString unit = m_units.take(name);
    if (unit.isEmpty())
        return;
    m_manager.forget(unit);
    constexpr qsizetype mostFormer = 256; // who tells of an end does so a moment later
    m_former += {name, unit};
    if (m_former.size() > mostFormer)
        m_former.removeFirst();
}

QString UnitStart::unitOf(const QString &name) const
{
    if (m_units.contains(name))
        return m_units.value(name);
    const auto former = std::find_if(m_former.crbegin(), m_former.crend(),
                                     [&](const auto &each) { return each.first == name; });
    return former == m_former.crend() ? QString() : former->second;
}
