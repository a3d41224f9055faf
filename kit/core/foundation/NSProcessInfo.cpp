// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSProcessInfo.h"

#include <QFile>

#include <cerrno>
#include <unistd.h>

namespace
{
QString &givenName()
{
    static QString name;
    return name;
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
    return ::getpid();
}

qint32 NSProcessInfo::parentProcessIdentifier()
{
    return ::getppid();
}

quint32 NSProcessInfo::effectiveUserID()
{
    return ::geteuid();
}
