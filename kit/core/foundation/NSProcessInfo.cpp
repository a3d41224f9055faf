// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSProcessInfo.h"

#include <QFile>

#include <atomic>
#include <cerrno>
#include <pthread.h>
#include <unistd.h>

namespace
{
QString &givenName()
{
    static QString name;
    return name;
}

// This process's number. A process keeps it for life, each line of the log needs it, and asking the kernel
// makes a line dearer by a thirtieth; a child of fork has one of its own.
std::atomic<qint32> &ownNumber()
{
    static std::atomic<qint32> number{[] {
        ::pthread_atfork(nullptr, nullptr, [] { ownNumber().store(::getpid(), std::memory_order_relaxed); });
        return ::getpid();
    }()};
    return number;
}
} // namespace

QString NSProcessInfo::processName()
{
    if (!givenName().isEmpty())
        return givenName();
    return QFile::decodeName(program_invocation_short_name);
}

void NSProcessInfo::setProcessName(const QString &name)
{
    givenName() = name;
}

qint32 NSProcessInfo::processIdentifier()
{
    return ownNumber().load(std::memory_order_relaxed);
}

qint32 NSProcessInfo::parentProcessIdentifier()
{
    return ::getppid();
}

quint32 NSProcessInfo::effectiveUserID()
{
    return ::geteuid();
}
