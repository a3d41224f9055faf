// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEWakeUp_p.h"
#include "DozelyKit/communication/remoting/linux/StreamLoop_p.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/NSException.h"

#include <poll.h>
#include <sys/eventfd.h>

namespace dozely
{

namespace
{
class EventWakeUp : public AEWakeUp, public StreamLoop::Source
{
public:
    EventWakeUp(Descriptor descriptor, std::function<void()> action)
        : m_descriptor(std::move(descriptor)),
          m_action(std::move(action)),
          m_loop(StreamLoop::ofThisThread()),
          m_source(m_loop.add(m_descriptor.get(), POLLIN, this))
    {
    }
    ~EventWakeUp() override { m_loop.remove(m_source); }

    void wake() override { ::eventfd_write(m_descriptor.get(), 1); }

    // A handler that runs an event loop is like a request that does so: too deep, neither begins, and what
    // others send waits at their end.
    bool ready() override
    {
        if (!m_loop.mayServe(m_source, false))
            return false;
        m_loop.setEvents(m_source, POLLIN); // whoever had to wait was not looked at
        eventfd_t count = 0;
        ::eventfd_read(m_descriptor.get(), &count);
        const auto action = m_action; // it may end this object
        const StreamLoop::Serving serving(m_loop);
        action();
        return false;
    }

    void deadlinePassed() override {}

private:
    Descriptor m_descriptor;
    std::function<void()> m_action;
    StreamLoop &m_loop;
    quint64 m_source;
};
} // namespace

std::unique_ptr<AEWakeUp> AEWakeUp::make(std::function<void()> action)
{
    Descriptor descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!descriptor.isValid())
        return nullptr;
    try {
        return std::make_unique<EventWakeUp>(std::move(descriptor), std::move(action));
    } catch (const NSException &) {
        return nullptr; // the loop has no descriptor to watch with
    }
}

} // namespace dozely
