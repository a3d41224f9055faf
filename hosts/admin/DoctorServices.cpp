// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/machine/ConsoleUser.h"
#include "DozelyKit/system/machine/ServiceManager.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DoctorCheck.h"
#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/common/orders/Listeners.h"

#include <QFileInfo>

using namespace dozely;

namespace
{
constexpr std::chrono::seconds patience(5);
constexpr char unitName[] = "dozelyd.service";

/// What the bus and systemd say. A relocated system has those that it names, and no service manager.
class MachineServices : public DoctorServices
{
public:
    MachineServices()
    {
        if (isRelocated() && !qEnvironmentVariableIsSet("DBUS_SYSTEM_BUS_ADDRESS"))
            return;
        if (auto opened = BusConnection::open(BusConnection::Bus::System))
            m_bus = *std::move(opened);
    }

    bool hasBus() const override { return m_bus != nullptr; }

    std::optional<bool> isNameOwned(const QByteArray &name) const override
    {
        const auto answer =
            ask({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner"},
                QString::fromLatin1(name));
        return answer.isValid() ? std::optional(answer.toBool()) : std::nullopt;
    }

    std::optional<Unit> unit(const QString &name) const override
    {
        if (isRelocated() || !ServiceManager::hasStartedMachine())
            return {};
        const QByteArray manager = "org.freedesktop.systemd1";
        const QByteArray interface = manager + ".Manager";
        Unit unit;
        unit.fileState =
            ask({manager, "/org/freedesktop/systemd1", interface, "GetUnitFileState"}, name).toString();
        const QString path =
            ask({manager, "/org/freedesktop/systemd1", interface, "LoadUnit"}, name).toString();
        if (path.isEmpty())
            return {};
        const auto state = m_bus->property({manager, path.toLatin1(), manager + ".Unit", "ActiveState"},
                                           QDeadlineTimer(patience));
        unit.activeState = state ? state->toString() : QString();
        return unit;
    }

private:
    static bool isRelocated() { return RootFolder::join("/x") != "/x"; }

    QVariant ask(const BusConnection::Member &method, const QString &name) const
    {
        return m_bus ? BusConnection::firstOf(m_bus->call(method, "s", {name}, QDeadlineTimer(patience)))
                     : QVariant();
    }

    std::unique_ptr<BusConnection> m_bus;
};

/// Whether one of the files is there.
bool isAnyThere(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (QFileInfo::exists(RootFolder::join(path)))
            return true;
    }
    return false;
}

Finding busPolicy(const DoctorServices & /*services*/)
{
    const QStringList paths{"/usr/share/dbus-1/system.d/com.dozely.Scheduler1.conf",
                            "/etc/dbus-1/system.d/com.dozely.Scheduler1.conf"};
    if (!isAnyThere(paths))
        return Finding::wrong(
            AdminText::tr("The bus lets nobody be com.dozely: there is no %1.").arg(paths.constFirst()),
            AdminText::tr("apt install --reinstall dozely, or link the file of another prefix into "
                          "/etc/dbus-1/system.d; then systemctl reload dbus"));
    return Finding::fine(AdminText::tr("The bus knows who may be com.dozely."));
}

Finding polkitPolicy(const DoctorServices & /*services*/)
{
    const QString path = "/usr/share/polkit-1/actions/com.dozely.policy";
    if (!isAnyThere({path}))
        return Finding::wrong(AdminText::tr("Root alone may change schedules: there is no %1.").arg(path),
                              "apt install --reinstall dozely");
    return Finding::fine(AdminText::tr("polkit knows what users may be asked for."));
}

Finding polkit(const DoctorServices &services)
{
    // It is started when it is asked, so that its name need not be there.
    if (!isAnyThere({"/usr/share/dbus-1/system-services/org.freedesktop.PolicyKit1.service"}) &&
        !services.isNameOwned("org.freedesktop.PolicyKit1").value_or(false))
        return Finding::wrong(AdminText::tr("Root alone may change schedules: there is no polkit."),
                              "apt install polkitd");
    return Finding::fine(AdminText::tr("polkit is there."));
}

Finding service(const DoctorServices &services)
{
    const auto unit = services.unit(unitName);
    if (!unit)
        return Finding::unknown(
            AdminText::tr("No service manager says whether the daemon is started with the machine."));
    if (unit->fileState.isEmpty())
        return Finding::wrong(AdminText::tr("systemd does not know dozelyd.service."),
                              "apt install --reinstall dozely; systemctl daemon-reload");
    if (unit->fileState == "masked")
        return Finding::wrong(AdminText::tr("dozelyd.service is masked."), "systemctl unmask dozelyd");
    if (unit->fileState != "enabled" && unit->fileState != "static")
        return Finding::wrong(AdminText::tr("The daemon is not started with the machine."),
                              "systemctl enable --now dozelyd");
    if (unit->activeState == "failed")
        return Finding::wrong(AdminText::tr("dozelyd.service has failed."),
                              "journalctl -u dozelyd; systemctl restart dozelyd");
    return Finding::fine(AdminText::tr("The daemon is started with the machine."));
}

Finding listening(const DoctorServices & /*services*/)
{
    if (Listeners::isDaemonThere())
        return Finding::fine(AdminText::tr("The daemon listens."));
    const auto other = Listeners::userAt(Listeners::daemon);
    return other ? Finding::wrong(
                       AdminText::tr("A process of user %1 listens in the daemon's place.").arg(*other),
                       "systemctl restart dozelyd")
                 : Finding::wrong(
                       AdminText::tr("The daemon does not run, or does not listen."),
                       AdminText::tr("systemctl start dozelyd; journalctl -u dozelyd says why it ended"));
}

Finding busName(const DoctorServices &services)
{
    if (!services.hasBus())
        return Finding::wrong(AdminText::tr("There is no system bus, so users cannot reach the daemon."),
                              "apt install dbus; systemctl start dbus");
    const auto isOwned = services.isNameOwned(SchedulerNames::name);
    if (!isOwned)
        return Finding::unknown(AdminText::tr("The system bus does not say whether the daemon is there."));
    if (!*isOwned)
        return Finding::wrong(
            AdminText::tr("The daemon is not com.dozely on the system bus."),
            AdminText::tr("systemctl restart dozelyd; the log says why it has not got the name"));
    return Finding::fine(AdminText::tr("The daemon is com.dozely on the system bus."));
}

Finding agent(const DoctorServices & /*services*/)
{
    const auto user = Port<ConsoleUser>::current()->current();
    if (!user)
        return Finding::fine(AdminText::tr("Nobody is at the console, so no agent is needed."));
    if (Listeners::isAgentThere(user->userId))
        return Finding::fine(
            AdminText::tr("The agent of %1, who is at the console, listens.").arg(user->name));
    return Finding::wrong(
        AdminText::tr("%1 is at the console, and no agent of his listens: nothing acts in his session.")
            .arg(user->name),
        AdminText::tr("systemctl --user --machine=%1@ start dozely-agent, or have him log in again")
            .arg(user->name));
}

Finding agentStart(const DoctorServices & /*services*/)
{
    if (!isAnyThere({"/etc/xdg/autostart/dozely-agent.desktop", "/usr/lib/systemd/user/dozely-agent.service",
                     "/usr/local/lib/systemd/user/dozely-agent.service",
                     "/lib/systemd/user/dozely-agent.service"}))
        return Finding::wrong(AdminText::tr("No agent is started when a user logs in."),
                              "apt install --reinstall dozely");
    return Finding::fine(AdminText::tr("An agent is started when a user logs in."));
}
} // namespace

const DoctorServices &DoctorServices::ofTheMachine()
{
    static const MachineServices services;
    return services;
}

void DoctorChecks::addServices(List &checks)
{
    const std::pair<const char *, SimpleCheck::Look> looks[] = {
        {"service", service},        {"daemon", listening},   {"bus-policy", busPolicy},
        {"bus-name", busName},       {"polkit", polkit},      {"polkit-policy", polkitPolicy},
        {"agent-start", agentStart}, {"console-agent", agent}};
    for (const auto &[name, look] : looks)
        checks.push_back(std::make_unique<SimpleCheck>(name, look));
}
