// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ServiceManager.h"

#include "DozelyKit/core/dbus/BusService.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/machine/linux/TransientUnit_p.h"

#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <list>
#include <utility>

namespace dozely
{

namespace
{
constexpr char managerName[] = "org.freedesktop.systemd1";
constexpr char managerPath[] = "/org/freedesktop/systemd1";
constexpr char managerInterface[] = "org.freedesktop.systemd1.Manager";

constexpr std::chrono::seconds answerLimit(25);
constexpr std::chrono::seconds absenceLimit(10); // it is away for much less when it begins anew

BusConnection::Member operation(const QByteArray &name)
{
    return {managerName, managerPath, managerInterface, name};
}
} // namespace

struct ServiceManager::Private {
    /// A service for which there was no manager.
    struct Waiting {
        QVariantList properties;
        QString name;
        Answered answered;
    };

    Private(Whose whose, std::shared_ptr<Clock> clock)
        : clock(std::move(clock)),
          service(whose == Whose::Machine ? BusConnection::Bus::System : BusConnection::Bus::Session,
                  managerName,
                  {.isThere = [this](const QByteArray &) { isThere(); },
                   .isAway = [this](BusService::Absence, const QString &text) { isAway(text); }})
    {
    }

    void isThere()
    {
        if (const auto tell = std::exchange(found, nullptr))
            tell({});
        for (const Waiting &each : std::exchange(waiting, {}))
            send(each.name, each.properties, each.answered);
    }

    void isAway(const QString &text)
    {
        if (!found)
            return;
        service.stopKeeping();
        // Queued: this may be called from within find.
        QMetaObject::invokeMethod(
            &context,
            [tell = std::exchange(found, nullptr),
             error = Error{text.isEmpty() ? "nobody has its name on the bus" : text}] { tell(error); },
            Qt::QueuedConnection);
    }

    void send(const QString &name, const QVariantList &properties, const Answered &answered)
    {
        service.bus()->callLater(operation("StartTransientUnit"), "ssa(sv)a(sa(sv))",
                                 {name, QString("fail"), properties, QVariantList()}, answerLimit,
                                 [answered](const BusConnection::Reply &reply) {
                                     answered(reply ? Result<void>() : reply.error());
                                 });
    }

    void wait(const QString &name, const QVariantList &properties, const Answered &answered)
    {
        waiting.push_back({properties, name, answered});
        clock->callAfter(absenceLimit, &context, [this, name] {
            const auto late = std::find_if(waiting.begin(), waiting.end(),
                                           [&](const Waiting &each) { return each.name == name; });
            if (late == waiting.end())
                return;
            const Answered answered = late->answered;
            waiting.erase(late);
            answered(Error{"the service manager is not there"});
        });
    }

    std::shared_ptr<Clock> clock;
    Answered found; // set while nobody has answered
    std::list<Waiting> waiting;
    QObject context; // of what is told later
    BusService service;
};

ServiceManager::ServiceManager(Whose whose, std::shared_ptr<Clock> clock)
    : d(std::make_unique<Private>(whose, std::move(clock)))
{
}

ServiceManager::~ServiceManager() = default;

bool ServiceManager::hasStartedMachine()
{
    return QFileInfo(RootFolder::join("/run/systemd/system")).isDir();
}

void ServiceManager::find(Answered answered)
{
    d->found = std::move(answered);
    d->service.keepOpen(d->clock);
}

void ServiceManager::start(const TransientService &service, Answered answered)
{
    const QVariantList properties = TransientUnit::properties(service);
    if (d->service.isThere())
        d->send(service.name, properties, answered);
    else
        d->wait(service.name, properties, answered);
}

void ServiceManager::tellResult(const QString &name, Told told)
{
    if (!d->service.isThere()) {
        QMetaObject::invokeMethod(
            &d->context, [told = std::move(told)] { told({}); }, Qt::QueuedConnection);
        return;
    }
    const auto askUnit = [this, told](const BusConnection::Reply &unit) {
        const QByteArray path = BusConnection::firstOf(unit).toString().toUtf8();
        if (path.isEmpty() || !d->service.bus())
            return told({});
        d->service.bus()->callLater(
            {managerName, path, "org.freedesktop.DBus.Properties", "Get"}, "ss",
            {QString("org.freedesktop.systemd1.Service"), QString("Result")}, answerLimit,
            [told](const BusConnection::Reply &reply) { told(BusConnection::firstOf(reply).toString()); });
    };
    d->service.bus()->callLater(operation("GetUnit"), "s", {name}, answerLimit, askUnit);
}

void ServiceManager::forget(const QString &name)
{
    d->waiting.remove_if([&](const Private::Waiting &each) { return each.name == name; });
    if (d->service.isThere())
        d->service.bus()->callLater(operation("UnrefUnit"), "s", {name}, answerLimit,
                                    [](const BusConnection::Reply &) {});
}

} // namespace dozely
