// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <fcntl.h>
#include <grp.h>
#include <sched.h>
#include <unistd.h>

/// Other user ids for a test, whoever runs it. For fresh processes only: what is given up stays given up, and
/// a new user namespace needs a process without other threads.
namespace Identity
{
constexpr uid_t ordinaryUser = 4711;

/// The user id that becomeOrdinaryUser leads to.
inline uid_t ordinaryUserHere()
{
    return ::geteuid() == 0 ? ordinaryUser : ::geteuid();
}

inline bool writeOwnFile(const char *path, const QByteArray &text)
{
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    const bool done =
        file >= 0 && ::write(file, text.constData(), static_cast<size_t>(text.size())) == text.size();
    if (file >= 0)
        ::close(file);
    return done;
}

/// Root, or the root of a user namespace in which nobody else exists.
inline bool becomeRoot()
{
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    if (user == 0)
        return true;
    return ::unshare(CLONE_NEWUSER) == 0 && writeOwnFile("/proc/self/setgroups", "deny") &&
           writeOwnFile("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1") &&
           writeOwnFile("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1") && ::geteuid() == 0;
}

/// That user and no other: only root can change.
inline bool becomeUser(uid_t user)
{
    if (::geteuid() == user)
        return true;
    return ::setgroups(0, nullptr) == 0 && ::setresgid(user, user, user) == 0 &&
           ::setresuid(user, user, user) == 0;
}

/// Root stays root by its real user id and acts as the user without rights. Whoever is not root has one
/// identity, and keeps it.
inline bool becomeOrdinaryUserEffectively()
{
    return ::geteuid() != 0 || ::seteuid(ordinaryUser) == 0;
}

/// The reverse: acts as root for the user without rights. Without root it is the root of a user namespace.
inline bool becomeRootEffectively()
{
    return ::geteuid() == 0 ? ::setresuid(ordinaryUser, 0, 0) == 0 : becomeRoot();
}

/// Whoever runs the test, or, for root, a user without rights.
inline bool becomeOrdinaryUser()
{
    return becomeUser(ordinaryUserHere());
}
} // namespace Identity
