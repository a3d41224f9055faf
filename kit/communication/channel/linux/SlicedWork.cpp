// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/linux/SlicedWork_p.h"

#include <QCoreApplication>
#include <QTimer>

#include <deque>
#include <mutex>

namespace dozely
{

namespace
{
using std::chrono::milliseconds;
constexpr milliseconds slice{1};
constexpr milliseconds pause{4};

struct Queue {
    std::mutex mutex;
    std::deque<SlicedWork::Task> tasks;
    bool isArmed = false;
};

Queue &queue()
{
    static auto *const work = new Queue; // may be added to while the process ends
    return *work;
}

void doSlice()
{
    SlicedWork::Task task;
    {
        const std::lock_guard guard(queue().mutex);
        task = std::move(queue().tasks.front());
        queue().tasks.pop_front();
    }
    const bool isLeft = task(std::chrono::steady_clock::now() + slice);
    const std::lock_guard guard(queue().mutex);
    if (isLeft)
        queue().tasks.push_back(std::move(task));
    queue().isArmed = !queue().tasks.empty();
    if (queue().isArmed)
        QTimer::singleShot(pause, Qt::PreciseTimer, QCoreApplication::instance(), doSlice);
}
} // namespace

void SlicedWork::add(Task task)
{
    auto *const application = QCoreApplication::instance();
    if (!application) {
        while (task(Moment::max())) {
        }
        return;
    }
    const std::lock_guard guard(queue().mutex);
    queue().tasks.push_back(std::move(task));
    if (!std::exchange(queue().isArmed, true))
        QMetaObject::invokeMethod(application, doSlice, Qt::QueuedConnection);
}

} // namespace dozely
