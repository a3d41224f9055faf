// SPDX-License-Identifier: MIT
#include "system/HomeFolder_p.h"

#include "core/StringExtensions.h"
#include "platform/RootFolder.h"

QString pathInHomeFolder(const QString &path)
{
    const QString home = RealHomeDirectory();
    return home.startsWith('/') ? RootFolder::join(home + path) : QString();
}
