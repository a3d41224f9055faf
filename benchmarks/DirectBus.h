// SPDX-License-Identifier: MIT
#pragma once

#include "BareSocket.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <list>
#include <memory>
#include <systemd/sd-bus.h>
#include <utility>

/// One end of a stream, written directly on sd-bus, peer to peer, in Qt's event loop: what the kit's
/// connection layer cannot do without. What fails ends the benchmark.
class DirectBus : public QObject
{
public:
    struct ReleaseMessage {
        void operator()(sd_bus_message *message) const { sd_bus_message_unref(message); }
    };
    using Message = std::unique_ptr<sd_bus_message, ReleaseMessage>;
    /// Answers a method call.
    using Answer = std::function<void(sd_bus_message *call)>;

    /// Takes over a connected socket; a server has an answer.
    explicit DirectBus(int descriptor, Answer answer = {})
        : m_answer(std::move(answer)),
          m_reading(descriptor, QSocketNotifier::Read),
          m_writing(descriptor, QSocketNotifier::Write)
    {
        m_timer.setSingleShot(true);
        m_writing.setEnabled(false);
        for (QSocketNotifier *const notifier : {&m_reading, &m_writing})
            connect(notifier, &QSocketNotifier::activated, this, [this] { drive(); });
        connect(&m_timer, &QTimer::timeout, this, [this] { drive(); });
        if (sd_bus_new(&m_bus) < 0 || sd_bus_set_fd(m_bus, descriptor, descriptor) < 0 ||
            sd_bus_negotiate_fds(m_bus, 0) < 0)
            fail("sd_bus_new");
        if (m_answer) {
            sd_id128_t id;
            sd_id128_randomize(&id);
            sd_bus_set_server(m_bus, 1, id);
        }
        if (sd_bus_start(m_bus) < 0)
            fail("sd_bus_start");
        settle();
    }

    ~DirectBus() override { close(); }

    bool isOpen() const { return m_bus; }

    Message newCall(const char *path, const char *member) const
    {
        sd_bus_message *message = nullptr;
        if (sd_bus_message_new_method_call(m_bus, &message, nullptr, path, "com.dozely.Bench", member) < 0)
            fail(member);
        return Message(message);
    }

    /// Sends the call and runs the event loop until its reply is there.
    Message call(const Message &message)
    {
        Message reply;
        const auto keep = [](sd_bus_message *answer, void *place, sd_bus_error *) {
            static_cast<Message *>(place)->reset(sd_bus_message_ref(answer));
            return 1;
        };
        if (sd_bus_call_async(m_bus, nullptr, message.get(), keep, &reply, UINT64_MAX) < 0)
            fail("sd_bus_call_async");
        settle();
        while (!reply)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (sd_bus_message_is_method_error(reply.get(), nullptr))
            fail("an error came back");
        return reply;
    }

private:
    void drive()
    {
        int result = 0;
        sd_bus_message *raw = nullptr;
        while ((result = sd_bus_process(m_bus, &raw)) > 0) {
            const Message message(std::exchange(raw, nullptr));
            if (message && m_answer && sd_bus_message_is_method_call(message.get(), nullptr, nullptr) > 0)
                m_answer(message.get());
        }
        if (result >= 0)
            settle();
        else if (m_answer)
            close();
        else
            fail("the connection died");
    }

    void close()
    {
        m_reading.setEnabled(false);
        m_writing.setEnabled(false);
        m_timer.stop();
        if (m_bus)
            sd_bus_close_unref(std::exchange(m_bus, nullptr));
    }

    /// After every use of the bus: what it waits for may have changed.
    void settle()
    {
        const int events = sd_bus_get_events(m_bus);
        m_reading.setEnabled(events & POLLIN);
        m_writing.setEnabled(events & POLLOUT);
        uint64_t until = UINT64_MAX; // of the steady clock, in microseconds
        sd_bus_get_timeout(m_bus, &until);
        if (until == m_until)
            return;
        m_until = until;
        if (until == UINT64_MAX) {
            m_timer.stop();
            return;
        }
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(std::chrono::microseconds(until) - now);
        m_timer.start(std::max(left, std::chrono::milliseconds(0)));
    }

    Answer m_answer;
    QSocketNotifier m_reading;
    QSocketNotifier m_writing;
    QTimer m_timer;
    uint64_t m_until = UINT64_MAX;
    sd_bus *m_bus = nullptr;
};

/// Serves every connection to the listening socket with that answer, in Qt's event loop, for ever.
inline void serveDirect(int argc, char **argv, int listening, const DirectBus::Answer &answer)
{
    qputenv("QT_NO_GLIB", "1");
    QCoreApplication application(argc, argv);
    std::list<DirectBus> streams;
    QSocketNotifier waiting(listening, QSocketNotifier::Read);
    QObject::connect(&waiting, &QSocketNotifier::activated, &application, [&] {
        streams.remove_if([](const DirectBus &stream) { return !stream.isOpen(); });
        const int descriptor = ::accept4(listening, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (descriptor >= 0)
            streams.emplace_back(descriptor, answer);
    });
    QCoreApplication::exec();
}

/// A client's end.
inline std::unique_ptr<DirectBus> connectDirect(const sockaddr_un &address)
{
    const int descriptor = connectBare(address);
    ::fcntl(descriptor, F_SETFL, O_NONBLOCK);
    return std::make_unique<DirectBus>(descriptor);
}
