// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/linux/BackgroundWork_p.h"

#include <QCoreApplication>

#include <csignal>
#include <deque>
#include <mutex>
#include <sys/resource.h>
#include <system_error>
#include <thread>

namespace dozely
{

namespace
{
using std::chrono::milliseconds;
constexpr milliseconds slice{1};
constexpr milliseconds pause{4};
constexpr int lastInLine = 19; // nice value

struct Queue {
    std::mutex mutex;
    std::deque<BackgroundWork::Task> tasks;
    bool hasThread = false;
};

Queue &queue()
{
    static auto *const work = new Queue; // may be added to while the process ends
    return *work;
}

/// The first of those that wait; none, and no thread any more, when none does.
BackgroundWork::Task next()
{
    const std::lock_guard guard(queue().mutex);
    if (queue().tasks.empty()) {
        queue().hasThread = false;
        return {};
    }
    BackgroundWork::Task task = std::move(queue().tasks.front());
    queue().tasks.pop_front();
    return task;
}

void work()
{
    ::setpriority(PRIO_PROCESS, 0, lastInLine); // of this thread alone (setpriority(2), "Linux")
    while (BackgroundWork::Task task = next()) {
        if (task(std::chrono::steady_clock::now() + slice)) {
            const std::lock_guard guard(queue().mutex);
            queue().tasks.push_back(std::move(task));
        }
        std::this_thread::sleep_for(pause);
    }
}

/// Signals are for the thread that expects them.
bool startThread()
{
    sigset_t all;
    sigset_t former;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &former);
    bool isStarted = true;
    try {
        std::thread(work).detach();
    } catch (const std::system_error &) {
        isStarted = false;
    }
    ::pthread_sigmask(SIG_SETMASK, &former, nullptr);
    return isStarted;
}
} // namespace

void BackgroundWork::add(Task task)
{
    const std::lock_guard guard(queue().mutex);
    if (!queue().hasThread)
        queue().hasThread = QCoreApplication::instance() && startThread();
    if (queue().hasThread) {
        queue().tasks.push_back(std::move(task));
        return;
    }
    while (task(Moment::max())) {
    }
}

} // namespace dozely
