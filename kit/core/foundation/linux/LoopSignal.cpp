// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/LoopSignal.h"

#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/DescriptorWatch.h"
#include "DozelyKit/core/foundation/StringFormat.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <exception>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <vector>

namespace dozely
{

namespace
{
/// Where each signal is told; 0 for nowhere, which is why it is one more than the descriptor's number.
std::array<std::atomic<int>, NSIG> wakeDescriptors;
static_assert(std::atomic<int>::is_always_lock_free, "the signal handler reads it");

extern "C" void wakeLoopForSignal(int number)
{
    const int savedErrno = errno;
    const quint64 one = 1;
    // It fails only when the counter is full, and a full counter wakes the loop just as well.
    [[maybe_unused]] const ssize_t written =
        ::write(wakeDescriptors[static_cast<size_t>(number)].load() - 1, &one, sizeof one);
    errno = savedErrno;
}

void guarded(const std::function<void()> &handler)
{
    try {
        handler();
    } catch (const std::exception &exception) {
        NSLog("What a signal led to failed: %@", QString::fromUtf8(exception.what()));
    } catch (...) {
        NSLog("What a signal led to failed.");
    }
}
} // namespace

struct LoopSignal::Private {
    struct Former {
        int number;
        int wakeDescriptor;
        struct sigaction action;
    };

    Private(Descriptor counter, std::function<void()> handler)
        : descriptor(std::move(counter)), watch([number = descriptor.get(), handler = std::move(handler)] {
              quint64 count = 0;
              // Emptied first: a signal that comes while the handler runs brings another call.
              if (::read(number, &count, sizeof count) == sizeof count)
                  guarded(handler);
          })
    {
        watch.watch(descriptor.get(), POLLIN);
    }

    Descriptor descriptor; ///< Counts the signals that nobody was told of yet.
    DescriptorWatch watch;
    std::vector<Former> formers;
};

LoopSignal::LoopSignal(const QList<int> &signalNumbers, std::function<void()> handler)
{
    Descriptor counter(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!counter.isValid())
        return; // the signals keep what they did
    d = std::make_unique<Private>(std::move(counter), std::move(handler));
    struct sigaction action = {};
    action.sa_handler = wakeLoopForSignal;
    action.sa_flags = SA_RESTART;
    for (const int number : signalNumbers) {
        auto &wakeDescriptor = wakeDescriptors[static_cast<size_t>(number)];
        Private::Former former{number, wakeDescriptor.exchange(d->descriptor.get() + 1), {}};
        ::sigaction(number, &action, &former.action);
        d->formers.push_back(former);
    }
}

LoopSignal::~LoopSignal()
{
    if (!d)
        return;
    for (const Private::Former &former : d->formers) {
        ::sigaction(former.number, &former.action, nullptr);
        wakeDescriptors[static_cast<size_t>(former.number)] = former.wakeDescriptor;
    }
}

} // namespace dozely
