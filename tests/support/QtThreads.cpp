// SPDX-License-Identifier: MIT
//
// Stands between the tests, the kit and the distribution's Qt, which is not built for the thread sanitizer:
// what Qt orders between threads (work that one has another do, the end of a thread) the sanitizer would not
// see. Part of the test programs of the preset "threads" alone; a program's own functions come before a
// library's.
#include <QDeadlineTimer>
#include <QObject>
#include <QThread>

#include <future>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace
{
/// All that Qt orders is one order: less is told than may be wrong, but nothing that is right.
char order;

void before()
{
    __tsan_release(&order);
}

void after()
{
    __tsan_acquire(&order);
}

template<class Function>
Function *real(const char *symbol)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, symbol));
}

/// Work that one thread has another do.
class OrderedWork : public QtPrivate::QSlotObjectBase
{
public:
    explicit OrderedWork(QtPrivate::QSlotObjectBase *work) : QSlotObjectBase(&act), m_work(work) {}

private:
    static void act(int what, QSlotObjectBase *self, QObject *receiver, void **arguments, bool *)
    {
        after();
        auto *const work = static_cast<OrderedWork *>(self);
        if (what == Call)
            work->m_work->call(receiver, arguments);
        if (what == Destroy) {
            work->m_work->destroyIfLastRef();
            delete work;
        }
        before();
    }

    QtPrivate::QSlotObjectBase *m_work;
};
} // namespace

bool QMetaObject::invokeMethodImpl(QObject *object, QtPrivate::QSlotObjectBase *slot, Qt::ConnectionType type,
                                   void *result)
{
    using Invoke = bool(QObject *, QtPrivate::QSlotObjectBase *, Qt::ConnectionType, void *);
    static auto *const invoke = real<Invoke>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv");
    auto *const work = new OrderedWork(slot);
    before();
    const bool isDone = invoke(object, work, type, result);
    after();
    return isDone;
}

QThread *QThread::createThreadImpl(std::future<void> &&work)
{
    using Create = QThread *(std::future<void> &&);
    static auto *const create = real<Create>("_ZN7QThread16createThreadImplEOSt6futureIvE");
    return create(std::async(std::launch::deferred, [work = std::move(work)]() mutable {
        work.get();
        before();
    }));
}

bool QThread::wait(QDeadlineTimer deadline)
{
    using Wait = bool(QThread *, QDeadlineTimer);
    static auto *const wait = real<Wait>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool hasEnded = wait(this, deadline);
    after();
    return hasEnded;
}
