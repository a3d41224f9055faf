// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/LoopSignal_p.h"

#include "DozelyKit/core/foundation/StringFormat.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <exception>
#include <sys/eventfd.h>
#include <unistd.h>

namespace
{
std::atomic<int> wakeDescriptor{-1};
static_assert(std::atomic<int>::is_always_lock_free, "the signal handler reads it");

extern "C" void wakeLoopForSignal(int)
{
    const int savedErrno = errno;
    const quint64 one = 1;
    // It fails only when the counter is full, and a full counter wakes the loop just as well.
    [[maybe_unused]] const ssize_t written = ::write(wakeDescriptor.load(), &one, sizeof one);
    errno = savedErrno;
}

void takeSignals(int descriptor, int signalNumber, void (*handler)(int))
{
    quint64 count = 0;
    // Emptied first: a signal that comes while the handler runs brings another call.
    if (::read(descriptor, &count, sizeof count) != sizeof count)
        return;
    try {
        handler(signalNumber);
    } catch (const std::exception &exception) {
        NSLog("What a signal led to failed: %@", QString::fromUtf8(exception.what()));
    } catch (...) {
        NSLog("What a signal led to failed.");
    }
}
} // namespace

void handleSignalInLoop(int signalNumber, void (*handler)(int))
{
    const int descriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    int none = -1;
    if (descriptor < 0 || !wakeDescriptor.compare_exchange_strong(none, descriptor)) {
        if (descriptor >= 0)
            ::close(descriptor);
        return;
    }
    // Neither is ever given back: a signal may come as long as the process lives.
    static auto *const notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                     [=] { takeSignals(descriptor, signalNumber, handler); });
    struct sigaction action = {};
    action.sa_handler = wakeLoopForSignal;
    action.sa_flags = SA_RESTART;
    ::sigaction(signalNumber, &action, nullptr);
}
