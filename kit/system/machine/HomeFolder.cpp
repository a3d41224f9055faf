// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/HomeFolder_p.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"

namespace dozely
{

QString pathInHomeFolder(const QString &path)
{
    const QString home = RealHomeDirectory();
    return home.startsWith('/') ? RootFolder::join(home + path) : QString();
}

} // namespace dozely
