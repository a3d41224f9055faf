// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// The raw baseline of what goes between processes: exchanges of 300 bytes over a Unix-domain stream, about
/// what one of the kit's messages holds. Each server is a process of its own. What fails ends the benchmark.
constexpr size_t exchangeSize = 300;

[[noreturn]] inline void fail(const char *what)
{
    std::perror(what);
    std::exit(1);
}

/// Starts a server process, which ends with this one.
template<class Serve>
pid_t startServer(Serve serve)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        serve();
        ::_exit(0);
    }
    return child;
}

inline void endServers(const std::vector<pid_t> &servers)
{
    for (const pid_t server : servers)
        ::kill(server, SIGKILL);
    while (::wait(nullptr) > 0) {
    }
}

inline sockaddr_un addressOf(const QByteArray &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
    return address;
}

inline int listenAt(const sockaddr_un &address)
{
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 ||
        ::listen(descriptor, 128) != 0)
        fail("listen");
    return descriptor;
}

inline void transfer(int descriptor, bool sending)
{
    static char buffer[exchangeSize];
    for (size_t done = 0; done < exchangeSize;) {
        const ssize_t n = sending ? ::send(descriptor, buffer + done, exchangeSize - done, MSG_NOSIGNAL)
                                  : ::recv(descriptor, buffer + done, exchangeSize - done, 0);
        if (n <= 0)
            return;
        done += static_cast<size_t>(n);
    }
}

/// Serves every connection to the listening socket, for ever.
inline void serveBare(int listening)
{
    std::vector<pollfd> watched{{listening, POLLIN, 0}};
    for (;;) {
        ::poll(watched.data(), watched.size(), -1);
        for (size_t i = watched.size(); i-- > 1;) {
            if (!watched[i].revents)
                continue;
            char byte = 0;
            if (::recv(watched[i].fd, &byte, 1, MSG_PEEK) <= 0) {
                ::close(watched[i].fd);
                watched.erase(watched.begin() + static_cast<std::ptrdiff_t>(i));
                continue;
            }
            transfer(watched[i].fd, false);
            transfer(watched[i].fd, true);
        }
        if (watched[0].revents)
            watched.push_back({::accept4(listening, nullptr, nullptr, SOCK_CLOEXEC), POLLIN, 0});
    }
}

inline int connectBare(const sockaddr_un &address)
{
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        fail("connect");
    return descriptor;
}

inline void exchangeBare(int descriptor)
{
    transfer(descriptor, true);
    transfer(descriptor, false);
}
