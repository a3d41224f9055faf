// SPDX-License-Identifier: MIT
#include "hosts/performer/Actor.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/common/plugins/ActionState.h"
#include "hosts/performer/HandOver.h"
#include "hosts/performer/Report.h"

#include <QCoreApplication>

#include <cerrno>

using namespace dozely;

Actor::Actor(PerformanceOrder order, Descriptor go, Descriptor report)
    : m_order(std::move(order)),
      m_go(std::move(go)),
      m_report(std::move(report)),
      m_loader(InfoKey::daemonModule, PlugInLoader::sourcesOfTheSystem())
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
    auto *const plugIn = dynamic_cast<WDDaemonPlugIn *>(m_plugIn.get());
    if (!plugIn)
        return refuse(QString("The module of %1 makes no plug-in for the daemon")
                          .arg(logLabel((*bundle)->bundlePath())));
    const auto thrown = GuardedPosting::guardPlugIn([&] {
        plugIn->setParameters(m_order.parameters);
        plugIn->setCalendarDate(m_order.date);
    });
    if (thrown)
        return refuse(*thrown);
    if (!mayGo())
        return 0;
    Report::send(m_report.get(), Report::Kind::Begun);
    if (m_order.deed != PerformanceOrder::Deed::Act)
        return handOver(*plugIn);
    if (const auto raised = GuardedPosting::guardPlugIn([&] { plugIn->actInDaemon(); })) {
        Report::send(m_report.get(), Report::Kind::Raised, *raised);
        return 0;
    }
    // Queued: the object itself is still at work when it emits the signal.
    if (plugIn->metaObject()->indexOfSignal("actionDidFinish()") >= 0)
        connect(plugIn, SIGNAL(actionDidFinish()), this, SLOT(endWhenDone()), Qt::QueuedConnection);
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
    if (ActionState::isActing(*m_plugIn))
        return;
    const auto status = ActionState::exitStatus(*m_plugIn);
    Report::send(m_report.get(), Report::Kind::Done, status ? QString::number(*status) : QString());
    QCoreApplication::quit();
}
