// SPDX-License-Identifier: MIT
#include "hosts/daemon/UsersOwnBundle.h"

#include "unit/hosts/HostFixture.h"

#include <pwd.h>

namespace
{
constexpr quint32 nobody = 65534; // who has an account everywhere

class UsersOwnBundleTest : public HostFixture
{
protected:
    static QString home()
    {
        const passwd *const user = ::getpwuid(nobody);
        return user ? QFile::decodeName(user->pw_dir) : QString();
    }
    static bool isOwn(const QString &path, std::optional<quint32> owner = nobody)
    {
        Schedule schedule = HostFixture::schedule("a");
        schedule.owner = owner;
        schedule.bundlePath = path;
        return isUsersOwnBundle(schedule);
    }
};
} // namespace

TEST_F(UsersOwnBundleTest, LiesInTheFolderOfPlugInsBelowTheHomeOfItsOwner)
{
    const QString folder = home() + "/Library/Application Support/Dozely/PlugIns/";
    ASSERT_TRUE(folder.startsWith('/'));
    EXPECT_TRUE(isOwn(folder + "Mine.plugin"));
    EXPECT_FALSE(isOwn(folder + "Mine.plugin", std::nullopt));
    EXPECT_FALSE(isOwn(folder + "Mine.plugin", nobody - 1)) << "another's, or nobody's at all";
    EXPECT_FALSE(isOwn(folder + "Mine.plugin", 0)) << "root has none of its own";
    EXPECT_FALSE(isOwn(folder + "../Mine.plugin"));
    EXPECT_FALSE(isOwn(folder + "./Mine.plugin"));
    EXPECT_FALSE(isOwn("/elsewhere" + folder + "Mine.plugin"));
    EXPECT_FALSE(isOwn(home() + "/Mine.plugin"));
    EXPECT_FALSE(isOwn("/Library/Application Support/Dozely/PlugIns/Command.plugin"));
}
