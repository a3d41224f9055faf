// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/UserDefaultsExtensions.h"

#include "support/PrintTo.h"
#include "support/PrivateBus.h"

#include <QSysInfo>

#include <gtest/gtest.h>

using zandorSoftwaresExtensions::rendezvousName;

namespace
{
constexpr char service[] = "org.freedesktop.hostname1";
constexpr char object[] = "/org/freedesktop/hostname1";

class ComputerNameTest : public testing::Test
{
protected:
    void startService()
    {
        ASSERT_TRUE(bus.isRunning());
        ASSERT_TRUE(bus.startMock(HOSTNAMED_MOCK, service));
    }
    void setPrettyName(const QString &value)
    {
        ASSERT_TRUE(bus.call(service, object, "org.freedesktop.DBus.Properties.Set",
                             {service, "PrettyHostname", value}));
    }
    PrivateBus bus;
};
} // namespace

TEST_F(ComputerNameTest, IsTheNameThatAPersonGave)
{
    startService();
    setPrettyName("<'Ève’s Computer'>");
    EXPECT_EQ(rendezvousName(), "Ève’s Computer");
    setPrettyName("<'Another'>");
    EXPECT_EQ(rendezvousName(), "Another"); // asked afresh
}

TEST_F(ComputerNameTest, IsTheHostNameWhenNobodyGaveOne)
{
    startService();
    EXPECT_EQ(rendezvousName(), QSysInfo::machineHostName());
    EXPECT_FALSE(rendezvousName().isEmpty());
}

TEST_F(ComputerNameTest, IsTheHostNameWhenTheServiceAnswersSomethingElse)
{
    startService();
    setPrettyName("<['a', 'list']>");
    EXPECT_EQ(rendezvousName(), QSysInfo::machineHostName());
}

TEST_F(ComputerNameTest, IsTheHostNameWithoutTheServiceAndWithoutABus)
{
    ASSERT_TRUE(bus.isRunning());
    EXPECT_EQ(rendezvousName(), QSysInfo::machineHostName());
    bus.stop();
    EXPECT_EQ(rendezvousName(), QSysInfo::machineHostName());
}
