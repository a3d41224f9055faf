// SPDX-License-Identifier: MIT
#include "hosts/admin/Identity.h"

#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminText.h"

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

namespace
{
constexpr uid_t unknownNobody = 65534; // where the user database has no "nobody"

uid_t nobody()
{
    const passwd *entry = ::getpwnam("nobody");
    return entry && entry->pw_uid != 0 ? entry->pw_uid : unknownNobody;
}

[[noreturn]] void failToGiveUpRoot()
{
    throw AdminError(ExitStatus::Failed, AdminText::tr("Root cannot be given up."));
}
} // namespace

quint32 Identity::caller()
{
    if (::geteuid() != 0)
        return ::getuid();
    // Root alone can set this variable to a lie, and root needs none.
    bool isNumber = false;
    const uint sudoUser = qEnvironmentVariable("SUDO_UID").toUInt(&isNumber);
    return isNumber ? sudoUser : 0;
}

std::optional<quint32> Identity::userNamed(const QString &nameOrNumber)
{
    constexpr quint32 noUser = 0xffffffff; // the system calls take it for "no change"
    bool isNumber = false;
    const uint number = nameOrNumber.toUInt(&isNumber);
    if (isNumber)
        return number == noUser ? std::nullopt : std::optional<quint32>(number);
    const passwd *entry = ::getpwnam(nameOrNumber.toUtf8().constData());
    return entry ? std::optional<quint32>(entry->pw_uid) : std::nullopt;
}

QString Identity::nameOf(quint32 userId)
{
    const passwd *entry = ::getpwuid(userId);
    return entry ? QString::fromLocal8Bit(entry->pw_name) : QString::number(userId);
}

void Identity::giveUpRoot(quint32 userId)
{
    if (::geteuid() != 0)
        return;
    const uid_t user = userId != 0 ? userId : caller() != 0 ? caller() : nobody();
    const passwd *entry = ::getpwuid(user);
    const gid_t group = entry ? entry->pw_gid : user;
    if (::setgroups(1, &group) != 0 || ::setresgid(group, group, group) != 0 ||
        ::setresuid(user, user, user) != 0)
        failToGiveUpRoot();
    if (::geteuid() == 0 || ::seteuid(0) == 0)
        failToGiveUpRoot();
}

void Identity::touchChannelWithoutRoot()
{
    if (::geteuid() != 0)
        return;
    if (::seteuid(nobody()) != 0)
        failToGiveUpRoot();
    ZDRUnixSocketPort::initAsClientWithName({}); // no port is made; the class is in use from now on
    if (::seteuid(0) != 0)
        throw AdminError(ExitStatus::Failed, AdminText::tr("Root cannot be taken back."));
}
