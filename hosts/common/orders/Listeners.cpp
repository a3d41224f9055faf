// SPDX-License-Identifier: MIT
#include "hosts/common/orders/Listeners.h"

#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>

using namespace dozely;

std::optional<quint32> Listeners::userAt(const QString &name)
{
    const QByteArray path = QFile::encodeName(ZDRUnixSocketPort::socketFolder() + '/' + name);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<size_t>(path.size()) >= sizeof address.sun_path)
        return {};
    std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
    const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    ucred peer{};
    socklen_t size = sizeof peer;
    if (socket.get() < 0 ||
        ::connect(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 ||
        ::getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0)
        return {};
    return peer.uid;
}

bool Listeners::isDaemonThere()
{
    const auto user = userAt(daemon);
    return user && (*user == 0 || user == RootFolder::owner());
}

bool Listeners::isAgentThere(quint32 user)
{
    return userAt(QString("%1.%2").arg(agent).arg(static_cast<qint32>(user))) == user;
}

QList<quint32> Listeners::agents()
{
    constexpr qsizetype most = 1000; // anybody can fill the folder
    QStringList names = QDir(ZDRUnixSocketPort::socketFolder())
                            .entryList({QString(agent) + ".*"}, QDir::System | QDir::Files);
    QList<quint32> users;
    for (const QString &name : names.mid(0, most)) {
        bool isNumber = false;
        const auto user = static_cast<quint32>(name.mid(name.lastIndexOf('.') + 1).toInt(&isNumber));
        if (isNumber && isAgentThere(user))
            users += user;
    }
    std::sort(users.begin(), users.end());
    return users;
}
