// SPDX-License-Identifier: MIT
//
// An attacker that knows no protocol but the bytes that it is given, and is quick: opens streams to a socket,
// sends each a greeting and then, for as long as it lives, the payload again and again. A stream that is
// closed is opened anew.
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/epoll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace
{
constexpr const char *usage =
    "Usage: flood SOCKET STREAMS GREETING PAYLOAD [--read] [--drip] [--again] [--seconds N]\n"
    "GREETING and PAYLOAD are files; an empty payload leaves the streams open and silent.\n"
    "  --read       read what comes back and throw it away; otherwise nothing is read\n"
    "  --drip       a byte of the payload each 100 ms instead of as many as go\n"
    "  --again      close a stream as soon as its greeting is sent, and open it anew\n"
    "  --seconds N  end after N seconds, 120 unless told\n"
    "Tells what it did in one JSON object when it is ended by SIGTERM.\n";

constexpr int retryMilliseconds = 10; // after a refused connection
constexpr int dripMilliseconds = 100;
volatile std::sig_atomic_t isToEnd = 0;

struct Orders {
    sockaddr_un address{};
    size_t streams = 0;
    std::string greeting;
    std::string payload;
    bool read = false;
    bool drip = false;
    bool again = false;
};

struct Counts {
    unsigned long long opened = 0;
    unsigned long long refused = 0;
    unsigned long long closed = 0; // by the other side
    unsigned long long sent = 0;
    unsigned long long received = 0;
};

std::string contentOf(const char *path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Flood
{
public:
    explicit Flood(const Orders &orders)
        : m_orders(orders), m_streams(orders.streams), m_epoll(::epoll_create1(EPOLL_CLOEXEC))
    {
    }

    void run()
    {
        std::vector<epoll_event> events(256);
        while (!isToEnd) {
            const bool isWaiting = openMissing();
            const int limit = isWaiting ? retryMilliseconds : dripMilliseconds;
            const int count = ::epoll_wait(m_epoll, events.data(), static_cast<int>(events.size()), limit);
            for (int i = 0; i < count; ++i)
                serve(events[static_cast<size_t>(i)]);
            if (m_orders.drip && count <= 0)
                drip();
        }
    }

    const Counts &counts() const { return m_counts; }

private:
    struct Stream {
        int descriptor = -1;
        size_t sent = 0; // of greeting and payload
    };

    /// True when the other side takes no more connections just now.
    bool openMissing()
    {
        for (size_t i = 0; i < m_streams.size(); ++i) {
            if (m_streams[i].descriptor >= 0)
                continue;
            if (!open(i))
                return true;
        }
        return false;
    }

    bool open(size_t index)
    {
        Stream &stream = m_streams[index];
        const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        if (descriptor < 0)
            return false;
        if (::connect(descriptor, reinterpret_cast<const sockaddr *>(&m_orders.address),
                      sizeof m_orders.address) != 0) {
            ++m_counts.refused;
            ::close(descriptor);
            return false;
        }
        ++m_counts.opened;
        stream = {descriptor, 0};
        epoll_event event{};
        event.events = EPOLLRDHUP | (m_orders.read ? EPOLLIN : 0u) | (wantsToSend(stream) ? EPOLLOUT : 0u);
        event.data.u64 = index;
        ::epoll_ctl(m_epoll, EPOLL_CTL_ADD, descriptor, &event);
        return true;
    }

    bool wantsToSend(const Stream &stream) const
    {
        return stream.sent < m_orders.greeting.size() || (!m_orders.payload.empty() && !m_orders.drip);
    }

    void serve(const epoll_event &event)
    {
        const size_t index = event.data.u64;
        if (m_streams[index].descriptor < 0)
            return;
        if ((event.events & (EPOLLERR | EPOLLHUP | EPOLLRDHUP)) ||
            ((event.events & EPOLLIN) && !readAll(m_streams[index])) ||
            ((event.events & EPOLLOUT) && !send(m_streams[index]))) {
            ++m_counts.closed;
            close(index);
            return;
        }
        if (wantsToSend(m_streams[index]))
            return;
        if (m_orders.again) {
            close(index);
        } else if (event.events & EPOLLOUT) { // the greeting has left
            epoll_event silent{};
            silent.events = EPOLLRDHUP | (m_orders.read ? EPOLLIN : 0u);
            silent.data.u64 = index;
            ::epoll_ctl(m_epoll, EPOLL_CTL_MOD, m_streams[index].descriptor, &silent);
        }
    }

    void close(size_t index)
    {
        ::close(m_streams[index].descriptor);
        m_streams[index].descriptor = -1;
    }

    bool readAll(const Stream &stream)
    {
        static char buffer[65536];
        const ssize_t size = ::recv(stream.descriptor, buffer, sizeof buffer, 0);
        if (size > 0)
            m_counts.received += static_cast<unsigned long long>(size);
        return size > 0 || (size < 0 && errno == EAGAIN);
    }

    bool send(Stream &stream)
    {
        if (stream.sent < m_orders.greeting.size())
            return sendFrom(stream, m_orders.greeting, stream.sent, m_orders.greeting.size());
        const size_t offset = (stream.sent - m_orders.greeting.size()) % m_orders.payload.size();
        return sendFrom(stream, m_orders.payload, offset, m_orders.payload.size());
    }

    bool sendFrom(Stream &stream, const std::string &bytes, size_t offset, size_t end)
    {
        const ssize_t size = ::send(stream.descriptor, bytes.data() + offset, end - offset, MSG_NOSIGNAL);
        if (size > 0) {
            stream.sent += static_cast<size_t>(size);
            m_counts.sent += static_cast<unsigned long long>(size);
        }
        return size > 0 || (size < 0 && errno == EAGAIN);
    }

    void drip()
    {
        for (Stream &stream : m_streams) {
            const size_t greeting = m_orders.greeting.size();
            if (stream.descriptor < 0 || stream.sent < greeting || m_orders.payload.empty())
                continue;
            const size_t offset = (stream.sent - greeting) % m_orders.payload.size();
            sendFrom(stream, m_orders.payload, offset, offset + 1);
        }
    }

    const Orders &m_orders;
    std::vector<Stream> m_streams;
    int m_epoll;
    Counts m_counts;
};

/// False when the command line is wrong.
bool parse(int argc, char **argv, Orders &orders)
{
    if (argc < 5 || std::strlen(argv[1]) >= sizeof orders.address.sun_path)
        return false;
    orders.address.sun_family = AF_UNIX;
    std::memcpy(orders.address.sun_path, argv[1], std::strlen(argv[1]));
    orders.streams = std::strtoul(argv[2], nullptr, 10);
    orders.greeting = contentOf(argv[3]);
    orders.payload = contentOf(argv[4]);
    unsigned seconds = 120;
    for (int i = 5; i < argc; ++i) {
        const std::string option = argv[i];
        if (option == "--read")
            orders.read = true;
        else if (option == "--drip")
            orders.drip = true;
        else if (option == "--again")
            orders.again = true;
        else if (option == "--seconds" && i + 1 < argc)
            seconds = static_cast<unsigned>(std::strtoul(argv[++i], nullptr, 10));
        else
            return false;
    }
    ::alarm(seconds);
    return orders.streams > 0 && seconds > 0;
}
} // namespace

int main(int argc, char **argv)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    Orders orders;
    if (!parse(argc, argv, orders)) {
        std::fputs(usage, stderr);
        return 2;
    }
    for (const int signal : {SIGTERM, SIGALRM})
        ::signal(signal, [](int) { isToEnd = 1; });
    rlimit descriptors{};
    ::getrlimit(RLIMIT_NOFILE, &descriptors);
    descriptors.rlim_cur = descriptors.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &descriptors);

    Flood flood(orders);
    flood.run();
    const Counts &counts = flood.counts();
    std::printf(R"({"opened": %llu, "refused": %llu, "closed": %llu, "sent": %llu, "received": %llu})"
                "\n",
                counts.opened, counts.refused, counts.closed, counts.sent, counts.received);
    return 0;
}
