// SPDX-License-Identifier: MIT
#include "hosts/application/program/LoginPreferences.h"

#include "DozelyKit/core/files/AtomicFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"

#include <QDir>
#include <QFileInfo>

using namespace dozely;

namespace
{
constexpr int ownersAlone = 0600;
} // namespace

Result<void> LoginPreferences::makeIfMissing()
{
    const QString home = RealHomeDirectory();
    if (home.isEmpty())
        return Error{"the user has no home"};
    const QFileInfo file(RootFolder::join(home + "/Library/Preferences/loginwindow.plist"));
    if (file.exists() || file.isSymLink())
        return {};
    if (!QDir().mkpath(file.path()))
        return Error{"its folder cannot be made"};
    return replaceFileAtomically(file.filePath(),
                                 PropertyList::toData(QVariantMap(), PropertyList::Format::Xml), ownersAlone);
}
