// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Pipe.h"
#include "hosts/common/performing/OrderStream.h"
#include "hosts/common/performing/PlaceLock.h"
#include "hosts/common/program/HostApplication.h"
#include "hosts/common/program/HostOptions.h"
#include "hosts/performer/Actor.h"
#include "hosts/performer/ActorProcess.h"
#include "hosts/performer/Asker.h"
#include "hosts/performer/Channel.h"
#include "hosts/performer/OwnLimits.h"
#include "hosts/performer/Supervisor.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace dozely;

namespace
{
int fail(const QString &why)
{
    std::fprintf(stderr, "dozely-performer: %s\n", qPrintable(why));
    return 1;
}

void doNotBlock(const Descriptor &descriptor)
{
    ::fcntl(descriptor.get(), F_SETFL, ::fcntl(descriptor.get(), F_GETFL) | O_NONBLOCK);
}
} // namespace

int main(int argc, char **argv)
{
    ::umask(022);
    std::unique_ptr<QCoreApplication> application =
        std::make_unique<HostApplication>(argc, argv, "dozely-performer");
    HostOptions options(
        "Performs one action of a schedule, as a host of the system asks for it on standard input.");
    const QCommandLineOption ask("ask", "Ask plug-ins what the host wants to know, and perform nothing.");
    options.parser().addOption(ask);
    options.parser().addOption({"in-unit", "A service manager keeps the action's limits."});
    if (const auto status = options.parse(QCoreApplication::arguments()))
        return *status;

    const bool isInUnit = options.parser().isSet("in-unit");
    Descriptor host(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3));
    if (options.parser().isSet(ask)) {
        ActorProcess::readNothing();
        const Channel channel;
        return Asker(std::move(host)).run();
    }
    const auto order = OrderStream::read(host.get());
    if (!order)
        return fail(order.error().text);
    const auto role = ActingRole::ofThisProgram();
    if (order->role != role->role())
        return fail("the order is for the other kind of performer");
    const auto lock = PlaceLock::take(order->place, order->placeMark);
    if (!lock)
        return fail(lock.error().text);

    auto go = Pipe::make();
    auto report = Pipe::make();
    auto output = Pipe::make();
    for (const Result<Pipe> *pipe : {&go, &report, &output}) {
        if (!*pipe)
            return fail(pipe->error().text);
    }
    // Whatever loses its parent stays with this process, which ends all of it when it has to.
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    sigset_t heard;
    sigset_t former;
    ::sigemptyset(&heard);
    for (const int number : {SIGTERM, SIGINT, SIGCHLD})
        ::sigaddset(&heard, number);
    ::sigprocmask(SIG_BLOCK, &heard, &former);
    Descriptor signalDescriptor(::signalfd(-1, &heard, SFD_CLOEXEC | SFD_NONBLOCK));
    const pid_t actor = signalDescriptor.isValid() ? ::fork() : -1;
    if (actor < 0)
        return fail(qt_error_string(errno));
    if (actor == 0) {
        host.reset();
        go->writeEnd.reset();
        report->readEnd.reset();
        output->readEnd.reset();
        ActorProcess::endWithSupervisor(report->writeEnd);
        ActorProcess::become(output->writeEnd, former);
        if (!isInUnit)
            OwnLimits::take(order->limits.program);
        role->beginProcess(application, argc, argv);
        const Channel channel;
        return Actor(*order, *role, std::move(go->readEnd), std::move(report->writeEnd)).perform();
    }
    ::signal(SIGPIPE, SIG_IGN); // the action may be gone when it is let go, and so may who reads this output
    doNotBlock(report->readEnd);
    doNotBlock(output->readEnd);
    go->readEnd.reset();
    report->writeEnd.reset();
    output->writeEnd.reset();
    return Supervisor(*order,
                      {std::move(host), std::move(go->writeEnd), std::move(report->readEnd),
                       std::move(output->readEnd)},
                      std::move(signalDescriptor), actor, isInUnit)
        .run();
}
