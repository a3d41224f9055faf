// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/RunningProgram.h"

#include "DozelyKit/core/foundation/linux/DescriptorWatch_p.h"
#include "DozelyKit/system/machine/linux/ChildStart_p.h"

#include <csignal>
#include <optional>
#include <poll.h>
#include <utility>

extern "C" {
#include <sys/pidfd.h> // says nothing about C++ in glibc 2.36
}

namespace dozely
{

struct RunningProgram::Private {
    explicit Private(const ChildProgram &program, ChildProgram::Ended ended)
        : start(program), ended(std::move(ended))
    {
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
    std::optional<Error> failure; // why it cannot be watched
    Descriptor process;
    DescriptorWatch watch{[this] { finish(); }};
};

RunningProgram::RunningProgram(const ChildProgram &program, ChildProgram::Ended ended)
    : d(std::make_unique<Private>(program, std::move(ended)))
{
    if (const auto child = d->start.fork(-1)) {
        d->child = *child;
        d->process.reset(::pidfd_open(*child, 0));
        if (!d->process.isValid())
            d->failure = ChildStart::failure("pidfd_open");
    } else {
        d->failure = child.error();
    }
    if (d->failure)
        d->watch.setDeadline(DescriptorWatch::Moment{}); // told from the event loop, as any end
    else
        d->watch.watch(d->process.get(), POLLIN);
}

RunningProgram::~RunningProgram()
{
    if (d->child == 0)
        return;
    sendSignal(SIGKILL);
    ChildStart::waitFor(d->child);
}

void RunningProgram::sendSignal(int number) const
{
    if (d->child == 0)
        return;
    // A child that has not come as far as its own group yet is reached by its own id.
    if (::kill(-d->child, number) != 0)
        ::kill(d->child, number);
}

} // namespace dozely
