// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace dozely
{

namespace
{
// A socket address holds 104 bytes of path, the last of them the terminating zero.
constexpr qsizetype longestSocketPath = 103;

QString &current()
{
    static QString folder;
    return folder;
}

// Without a trailing slash; "" for "/".
QString normalized(const QString &folder)
{
    const QString clean = QDir::cleanPath(folder);
    return clean == u"/" ? QString() : clean;
}
} // namespace

void RootFolder::set(const QString &folder)
{
    current() = normalized(folder);
}

QString RootFolder::path()
{
    return current();
}

QString RootFolder::join(const QString &fixedPath)
{
    return current() + fixedPath;
}

std::optional<quint32> RootFolder::owner()
{
    if (current().isEmpty())
        return 0;
    const QFileInfo folder(current());
    if (!folder.isDir())
        return std::nullopt;
    // QFileInfo answers -2 when it could not read the owner: that must not pass for a user.
    constexpr uint unknown = static_cast<uint>(-2);
    const uint userId = folder.ownerId();
    return userId == unknown ? std::nullopt : std::optional<quint32>(userId);
}

QString RootFolder::refusal(const QString &folder, int longestSocketName)
{
    const QString root = normalized(folder);
    if (root.isEmpty())
        return {};
    if (QDir::isRelativePath(root))
        return QStringLiteral("The root folder must be an absolute path: %1").arg(folder);
    if (!QFileInfo(root).isDir())
        return QStringLiteral("The root folder does not exist: %1").arg(folder);
    const QString socketFolder = root + QStringLiteral("/private/var/tmp/com.dozely/");
    const qsizetype excess = QFile::encodeName(socketFolder).size() + longestSocketName - longestSocketPath;
    if (excess > 0)
        return QStringLiteral("The root folder's path is %1 bytes too long for socket paths: %2")
            .arg(excess)
            .arg(folder);
    return {};
}

} // namespace dozely
