// SPDX-License-Identifier: MIT
#pragma once

#include "support/BecomeUser.h"

#include <QByteArray>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

/// A user id that owns nothing and has no entry in the user database.
constexpr unsigned ordinaryUserId = 54321;

/// Runs `work` in a child process, and `meanwhile` in this one, and returns what the child wrote to the
/// console (the standard error stream), with "died" appended when it did not end by itself.
inline QByteArray consoleOfChild(
    const std::function<void()> &work, const std::function<void()> &meanwhile = [] {})
{
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0)
        return "no pipe";
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(pipe[1], STDERR_FILENO);
        work();
        ::_exit(0);
    }
    ::close(pipe[1]);
    meanwhile();
    QByteArray console;
    std::array<char, 4096> part{};
    for (ssize_t size = 0; (size = ::read(pipe[0], part.data(), part.size())) > 0;)
        console.append(part.data(), size);
    ::close(pipe[0]);
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? console : console + "died";
}

/// The same as an ordinary user: the child gives up root when the tests run as root, else it is one already.
inline QByteArray consoleOfOrdinaryUser(const std::function<void()> &work)
{
    return consoleOfChild([&work] {
        if (::geteuid() == 0 && !Identity::becomeUser(ordinaryUserId))
            ::_exit(1);
        work();
    });
}

/// The same as a user whom the user database does not know, whoever runs the tests: for an ordinary user in a
/// user namespace that gives him another number.
inline QByteArray consoleOfUnknownUser(const std::function<void()> &work)
{
    return consoleOfChild([&work] {
        const uid_t user = ::geteuid();
        const bool done = user == 0 ? Identity::becomeUser(ordinaryUserId)
                                    : ::unshare(CLONE_NEWUSER) == 0 &&
                                          Identity::writeOwnFile("/proc/self/uid_map",
                                                                 QByteArray::number(ordinaryUserId) + ' ' +
                                                                     QByteArray::number(user) + " 1") &&
                                          ::getuid() == ordinaryUserId;
        if (!done)
            ::_exit(1);
        work();
    });
}
