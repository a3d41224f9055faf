// SPDX-License-Identifier: MIT
#include "hosts/performer/Asker.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/common/performing/OrderStream.h"
#include "hosts/performer/Overrides.h"

#include <csignal>
#include <sys/prctl.h>
#include <sys/socket.h>

using namespace dozely;

namespace
{
bool sendPacket(const Descriptor &host, const QByteArray &packet)
{
    return ::send(host.get(), packet.constData(), static_cast<size_t>(packet.size()), MSG_NOSIGNAL) ==
           packet.size();
}
} // namespace

Asker::Asker(Descriptor host)
    : m_host(std::move(host)), m_loader(InfoKey::daemonModule, PlugInLoader::sourcesOfTheSystem())
{
}

int Asker::run()
{
    // One that hangs has no other way to learn that nobody wants to know any more.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (!sendPacket(m_host, "A"))
        return 1;
    for (;;) {
        const auto question = OrderStream::read(m_host.get());
        if (!question)
            return 0;
        if (!sendPacket(m_host, PlugInAnswer::toPacket(answerTo(*question))))
            return 0;
    }
}

Result<PlugInAnswer> Asker::answerTo(const PerformanceOrder &question)
{
    const auto bundle = m_loader.bundle(question.bundlePath);
    if (!bundle)
        return bundle.error();
    const auto made = m_loader.make(*bundle);
    if (!made)
        return made.error();
    auto *const plugIn = dynamic_cast<WDDaemonPlugIn *>(made->get());
    if (!plugIn)
        return Error{
            QString("The module of %1 makes no plug-in for the daemon").arg(logLabel(question.bundlePath))};
    PlugInAnswer answer;
    const auto thrown = GuardedPosting::guardPlugIn([&] {
        plugIn->setParameters(question.parameters);
        plugIn->setCalendarDate(question.date);
        answer.needsWakeUp = plugIn->needsWakeUp();
        answer.needsStartup = plugIn->needsStartup();
        answer.timeOut = plugIn->timeOut();
        answer.timeBeforeSelfAnticipation = plugIn->timeBeforeSelfAnticipation();
        answer.pluginName = plugIn->pluginName();
    });
    if (thrown)
        return Error{*thrown};
    answer.handsOverItself = Overrides::actInUserAgentNow(*plugIn);
    answer.announcesItself = Overrides::anticipateInUserAgentNow(*plugIn);
    return answer;
}
