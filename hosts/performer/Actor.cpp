// SPDX-License-Identifier: MIT
#include "hosts/performer/Actor.h"

#include "DozelyKit/core/foundation/LoopSignal.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/common/plugins/ActionState.h"
#include "hosts/performer/HandOver.h"
#include "hosts/performer/Report.h"

#include <QCoreApplication>

#include <cerrno>
#include <csignal>
#include <optional>
#include <utility>

using namespace dozely;

Actor::Actor(PerformanceOrder order, ActingRole &role, Descriptor go, Descriptor report)
    : m_order(std::move(order)),
      m_role(role),
      m_go(std::move(go)),
      m_report(std::move(report)),
      m_loader(role.moduleKey(), role.trustedSources())
{
}

bool Actor::mayGo() const
{
    char byte = 0;
    ssize_t size = 0;
    do {
        size = ::read(m_go.get(), &byte, 1);
    } while (size < 0 && errno == EINTR);
    return size == 1;
}

int Actor::perform()
{
    HandOver::holdConsole(m_order);
    const auto refuse = [this](const QString &why) {
        Report::send(m_report.get(), Report::Kind::Refused, why);
        return 0;
    };
    // All that needs no going happens before it, so that what is due begins at once.
    const auto bundle = m_loader.bundle(m_order.bundlePath);
    if (!bundle)
        return refuse(bundle.error().text);
    const auto made = m_loader.make(*bundle);
    if (!made)
        return refuse(made.error().text);
    m_plugIn = *made;
    if (!m_role.canAct(*m_plugIn))
        return refuse(QString("The module of %1 makes no plug-in for %2")
                          .arg(logLabel((*bundle)->bundlePath()), m_role.host()));
    const auto thrown = GuardedPosting::guardPlugIn([&] {
        // Where the name is not known the bundle's stands in its place.
        if (m_order.schedule != m_order.bundlePath.section('/', -1))
            m_plugIn->setProperty(PlugInProperty::scheduleName, m_order.schedule);
        m_plugIn->setParameters(m_order.parameters);
        m_plugIn->setCalendarDate(m_order.date);
    });
    if (thrown)
        return refuse(*thrown);
    if (!mayGo())
        return 0;
    std::optional<LoopSignal> termination; // earlier there is nobody to tell
    if (m_role.stopsActions())
        termination.emplace(QList<int>{SIGTERM}, [this] { stop(); });
    Report::send(m_report.get(), Report::Kind::Begun);
    if (m_order.deed != PerformanceOrder::Deed::Act)
        return handOver(dynamic_cast<WDDaemonPlugIn &>(*m_plugIn));
    if (const auto raised = GuardedPosting::guardPlugIn([&] { m_role.act(*m_plugIn); })) {
        Report::send(m_report.get(), Report::Kind::Raised, *raised);
        return 0;
    }
    // Queued: the object itself is still at work when it emits the signal.
    if (m_plugIn->metaObject()->indexOfSignal("actionDidFinish()") >= 0)
        connect(m_plugIn.get(), SIGNAL(actionDidFinish()), this, SLOT(endWhenDone()), Qt::QueuedConnection);
    connect(&m_role, &ActingRole::mayBeOver, this, &Actor::endWhenDone);
    QMetaObject::invokeMethod(this, &Actor::endWhenDone, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

int Actor::handOver(WDDaemonPlugIn &plugIn) const
{
    auto delivery = PerformanceOutcome::Delivery::None;
    const auto raised = GuardedPosting::guardPlugIn([&] { delivery = HandOver::run(plugIn, m_order.deed); });
    if (raised)
        delivery = HandOver::ofFailedPost();
    Report::send(m_report.get(), Report::Kind::Delivered, QString::number(static_cast<int>(delivery)));
    Report::send(m_report.get(), raised ? Report::Kind::Raised : Report::Kind::Done,
                 raised.value_or(QString()));
    return 0;
}

void Actor::endWhenDone()
{
    if (m_isStopped || ActionState::isActing(*m_plugIn) || m_role.goesOn())
        return;
    const auto status = ActionState::exitStatus(*m_plugIn);
    if (const QString failure = ActionState::failure(*m_plugIn); status.value_or(0) < 0 && !failure.isEmpty())
        Report::send(m_report.get(), Report::Kind::Refused, failure);
    Report::send(m_report.get(), Report::Kind::Done, status ? QString::number(*status) : QString());
    QCoreApplication::quit();
}

/// What it was asked to break off is not done.
void Actor::stop()
{
    if (std::exchange(m_isStopped, true))
        return;
    if (const auto thrown = GuardedPosting::guardPlugIn([&] { m_role.stop(*m_plugIn); }))
        ZDRLog("A plug-in was told to stop and raised: %@", *thrown);
    QCoreApplication::quit();
}
