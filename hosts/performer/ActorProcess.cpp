// SPDX-License-Identifier: MIT
#include "hosts/performer/ActorProcess.h"

#include "hosts/performer/Descendants.h"

#include <fcntl.h>
#include <poll.h>
#include <thread>
#include <unistd.h>

using namespace dozely;

void ActorProcess::readNothing()
{
    const Descriptor nothing(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    ::dup2(nothing.get(), STDIN_FILENO);
}

void ActorProcess::endWithSupervisor(const Descriptor &report)
{
    const int own = ::fcntl(report.get(), F_DUPFD_CLOEXEC, 3);
    sigset_t all;
    sigset_t former;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &former); // signals are for the plug-in's thread
    std::thread([own] {
        pollfd watched{own, 0, 0};
        while (::poll(&watched, 1, -1) <= 0) {
        }
        Descendants::signal(::getpid(), SIGKILL);
        ::kill(::getpid(), SIGKILL);
    }).detach();
    ::pthread_sigmask(SIG_SETMASK, &former, nullptr);
}

void ActorProcess::become(const Descriptor &output, const sigset_t &formerSignals)
{
    ::setsid();
    readNothing();
    ::dup2(output.get(), STDOUT_FILENO);
    ::dup2(output.get(), STDERR_FILENO);
    ::sigprocmask(SIG_SETMASK, &formerSignals, nullptr);
}
