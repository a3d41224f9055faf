// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QThread>

namespace dozely
{

/// The one object of that class of the calling thread. The main thread's is never destroyed: at the end of
/// the process the application object is gone before thread-local objects, and others may still use it.
template<class Object>
Object &perThread()
{
    const QCoreApplication *const application = QCoreApplication::instance();
    if (application && QThread::currentThread() == application->thread()) {
        static auto *const ofMainThread = new Object;
        return *ofMainThread;
    }
    static thread_local Object object;
    return object;
}

} // namespace dozely
