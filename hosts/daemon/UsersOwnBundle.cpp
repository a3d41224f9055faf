// SPDX-License-Identifier: MIT
#include "hosts/daemon/UsersOwnBundle.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/OrderPermissions.h"
#include "hosts/common/schedules/Schedule.h"

#include <QDir>
#include <QFile>

#include <pwd.h>

using namespace dozely;

bool isUsersOwnBundle(const Schedule &schedule)
{
    const QString path = schedule.fullBundlePath();
    const QString folder = QString(FixedPath::plugIns) + '/';
    // The cheap tests first: this is asked of every schedule, and nearly none is such a one.
    if (!schedule.owner || !path.contains(folder) || path.startsWith(RootFolder::join(folder)) ||
        QDir::cleanPath(path) != path || OrderPermissions::isSystem(schedule.owner, RootFolder::owner()))
        return false;
    const passwd *const user = ::getpwuid(*schedule.owner);
    const QString home = user ? QFile::decodeName(user->pw_dir) : QString();
    return home.startsWith('/') && path.startsWith(RootFolder::join(home + folder));
}
