// SPDX-License-Identifier: MIT
#include "hosts/agent/PerformingFolder.h"

#include "DozelyKit/core/files/TrustedPath.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"

#include <QDir>
#include <QFile>

using namespace dozely;

namespace
{
constexpr QFile::Permissions ofThisUserAlone = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

/// One that lies elsewhere belongs to another system than a relocated one.
QString runtimeFolder()
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const bool isBelowRoot = folder.startsWith(RootFolder::path() + '/') && QDir::cleanPath(folder) == folder;
    return isBelowRoot && QFile::exists(folder) ? folder : QString();
}
} // namespace

Result<QString> PerformingFolder::make()
{
    QString folder = runtimeFolder();
    const QString home = RealHomeDirectory();
    if (folder.isEmpty() && !home.isEmpty()) {
        folder = RootFolder::join(home + "/.cache");
        QDir().mkdir(folder, ofThisUserAlone);
    }
    for (const char *name : {"/dozely", "/performing"}) {
        folder += name;
        QDir().mkdir(folder, ofThisUserAlone);
    }
    const auto owner = RootFolder::owner();
    if (!owner)
        return Error{"the owner of the root folder is not known"};
    // Also what somebody else may have made there before.
    if (const auto trusted = isTrustedPath(folder, {*owner, NSProcessInfo::effectiveUserID()}); !trusted)
        return trusted.error();
    return folder;
}
