// SPDX-License-Identifier: MIT
#include "hosts/agent/SessionBusAddress.h"

#include <QByteArray>

#include <unistd.h>

namespace
{
constexpr char address[] = "DBUS_SESSION_BUS_ADDRESS";
}

void SessionBusAddress::nameTheUsualOne()
{
    if (!qEnvironmentVariableIsEmpty(address))
        return;
    QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    if (folder.isEmpty())
        folder = "/run/user/" + QByteArray::number(::getuid());
    // What is not one of these stands for itself as %xx ("Server Addresses" of the D-Bus protocol).
    qputenv(address, "unix:path=" + (folder + "/bus").toPercentEncoding("/", "~"));
}
