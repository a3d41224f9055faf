// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/linux/DistributedSignals_p.h"

#include "DozelyKit/core/broadcast/linux/DistributedBus_p.h"
#include "DozelyKit/core/foundation/ProblemReport.h"

#include <algorithm>

namespace dozely
{

struct DistributedSignals::Private {
    Private()
        : systemBus(BusConnection::Bus::System, [this](const Posted &posted) { deliver(posted); }),
          sessionBus(BusConnection::Bus::Session, [this](const Posted &posted) { deliver(posted); })
    {
    }

    void update();
    void deliver(const Posted &posted);

    DistributedBus systemBus;
    DistributedBus sessionBus;
    DistributedQuota quota;
    std::vector<Listener *> listeners;
};

class DistributedSignals::Listener : public Listening
{
public:
    Listener(const std::shared_ptr<Private> &signals, std::function<void(const Posted &)> listenerHandler)
        : handler(std::move(listenerHandler)), m_signals(signals)
    {
        signals->listeners.push_back(this);
    }
    ~Listener() override
    {
        if (const auto signals = m_signals.lock()) {
            std::erase(signals->listeners, this);
            signals->update();
        }
    }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    void setNames(const QStringList &wanted, bool every) override
    {
        names = QSet<QString>(wanted.begin(), wanted.end());
        everyName = every;
        if (const auto signals = m_signals.lock())
            signals->update();
    }

    std::function<void(const Posted &)> handler;
    QSet<QString> names;
    bool everyName = false;

private:
    std::weak_ptr<Private> m_signals;
};

void DistributedSignals::Private::update()
{
    QSet<QString> names;
    bool everyName = false;
    for (const Listener *listener : listeners) {
        names += listener->names;
        everyName = everyName || listener->everyName;
    }
    systemBus.setNames(names, everyName);
    sessionBus.setNames(names, everyName);
}

void DistributedSignals::Private::deliver(const Posted &posted)
{
    if (!quota.take(posted.sender))
        return;
    const std::vector<Listener *> hearers = listeners; // a handler may end or begin to listen
    for (Listener *const listener : hearers) {
        if (std::find(listeners.begin(), listeners.end(), listener) == listeners.end() ||
            (!listener->everyName && !listener->names.contains(posted.notification.name())))
            continue;
        const auto handler = listener->handler;
        handler(posted);
    }
}

DistributedSignals::DistributedSignals() = default;

DistributedSignals::~DistributedSignals() = default;

std::shared_ptr<DistributedSignals::Private> DistributedSignals::state()
{
    if (!d)
        d = std::make_shared<Private>();
    return d;
}

bool DistributedSignals::post(const NSNotification &notification, Reach reach, bool deliverImmediately)
{
    DistributedBus &bus = reach == Reach::AllSessions ? state()->systemBus : state()->sessionBus;
    const auto message = DistributedMessage::from(notification, deliverImmediately);
    const auto posted = message ? bus.post(*message) : message.error();
    if (!posted)
        reportProblem(QString("The notification \"%1\" is not posted: %2.")
                          .arg(notification.name(), posted.error().text));
    return posted.ok();
}

std::unique_ptr<DistributedNotifications::Listening>
DistributedSignals::listen(std::function<void(const Posted &)> handler)
{
    return std::make_unique<Listener>(state(), std::move(handler));
}

template<>
std::shared_ptr<DistributedNotifications> &Port<DistributedNotifications>::current()
{
    static auto *const port =
        new std::shared_ptr<DistributedNotifications>(std::make_shared<DistributedSignals>());
    return *port;
}

} // namespace dozely
