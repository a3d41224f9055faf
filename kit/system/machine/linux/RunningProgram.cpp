// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/RunningProgram.h"

#include "DozelyKit/core/foundation/DescriptorWatch.h"
#include "DozelyKit/system/machine/linux/ChildStart_p.h"

#include <QFile>

#include <chrono>
#include <csignal>
#include <optional>
#include <poll.h>
#include <sys/wait.h>
#include <utility>

extern "C" {
#include <sys/pidfd.h> // says nothing about C++ in glibc 2.36
}

namespace dozely
{

namespace
{
/// Between looks at a child that has no descriptor to wait on.
constexpr std::chrono::milliseconds pause(100);

bool hasEnded(pid_t child)
{
    siginfo_t information{};
    return ::waitid(P_PID, static_cast<id_t>(child), &information, WEXITED | WNOHANG | WNOWAIT) != 0 ||
           information.si_pid != 0;
}
} // namespace

struct RunningProgram::Private {
    explicit Private(const ChildProgram &program, ChildProgram::Ended ended)
        : start(program), ended(std::move(ended))
    {
    }

    /// Has the event loop come back for the end.
    void awaitEnd()
    {
        if (process.isValid())
            watch.watch(process.get(), POLLIN);
        else if (failure)
            watch.setDeadline(DescriptorWatch::Moment{}); // told from the event loop, as any end
        else
            watch.setDeadline(std::chrono::steady_clock::now() + pause);
    }

    void look()
    {
        if (!failure && !process.isValid() && !hasEnded(child))
            awaitEnd();
        else
            finish();
    }

    /// How the child ended, or why there is none; tells it. The object may be gone afterwards.
    void finish()
    {
        watch.watch(-1, 0);
        watch.setDeadline(std::nullopt);
        const Result<ChildProgram::Ending> ending = collect();
        std::exchange(ended, nullptr)(ending);
    }

    Result<ChildProgram::Ending> collect()
    {
        if (failure)
            return *failure;
        const ChildProgram::Ending ending = ChildStart::waitFor(std::exchange(child, 0));
        if (const auto outcome = start.outcome(); !outcome)
            return outcome.error();
        return ending;
    }

    ChildStart start;
    ChildProgram::Ended ended;
    pid_t child = 0;              // 0 when there is none that has to be waited for
    std::optional<Error> failure; // why there is none
    Descriptor process;           // none when the machine had no descriptor left for it: it runs all the same
    DescriptorWatch watch{[this] { look(); }};
};

RunningProgram::RunningProgram(const ChildProgram &program, ChildProgram::Ended ended)
    : d(std::make_unique<Private>(program, std::move(ended)))
{
    if (const auto child = d->start.fork(-1)) {
        d->child = *child;
        d->process.reset(::pidfd_open(*child, 0));
    } else {
        d->failure = child.error();
    }
    d->awaitEnd();
}

RunningProgram::~RunningProgram()
{
    if (d->child == 0)
        return;
    sendSignal(SIGKILL);
    ChildStart::waitFor(d->child);
}

void RunningProgram::letGo()
{
    d->watch.watch(-1, 0);
    d->watch.setDeadline(std::nullopt);
    d->child = 0; // waited for by whoever waits for what this process leaves
}

void RunningProgram::sendSignal(int number) const
{
    if (d->child == 0)
        return;
    // A child that has not come as far as its own group yet is reached by its own id.
    if (::kill(-d->child, number) != 0)
        ::kill(d->child, number);
}

std::chrono::milliseconds RunningProgram::timeWithoutProcessor() const
{
    QFile file(QString("/proc/%1/schedstat").arg(d->child));
    if (d->child == 0 || !file.open(QIODevice::ReadOnly))
        return std::chrono::milliseconds(0);
    // Nanoseconds on a processor, nanoseconds of waiting for one, number of turns.
    const qint64 waited = file.readAll().split(' ').value(1).toLongLong();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::nanoseconds(waited));
}

} // namespace dozely
