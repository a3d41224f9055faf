// SPDX-License-Identifier: MIT
#include "hosts/agent/SessionBusAddress.h"

#include <QByteArray>

#include <gtest/gtest.h>
#include <unistd.h>

namespace
{
QByteArray named(const char *before, const char *folder)
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", before);
    qputenv("XDG_RUNTIME_DIR", folder);
    SessionBusAddress::nameTheUsualOne();
    return qgetenv("DBUS_SESSION_BUS_ADDRESS");
}
} // namespace

TEST(SessionBusAddress, StaysWhatTheSessionNames)
{
    EXPECT_EQ(named("unix:path=/tmp/a", "/run/user/1000"), "unix:path=/tmp/a");
}

TEST(SessionBusAddress, IsThatOfTheUsersBusWhereTheSessionNamesNone)
{
    EXPECT_EQ(named("", "/run/user/1000"), "unix:path=/run/user/1000/bus");
    EXPECT_EQ(named("", "/tmp/a b"), "unix:path=/tmp/a%20b/bus");
    EXPECT_EQ(named("", ""), "unix:path=/run/user/" + QByteArray::number(::getuid()) + "/bus");
}
