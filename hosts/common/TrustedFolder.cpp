// SPDX-License-Identifier: MIT
#include "hosts/common/TrustedFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

bool makeTrustedFolder(const QString &folder)
{
    if (QFileInfo(folder).isDir())
        return true;
    if (QFileInfo(folder).path() == folder || !makeTrustedFolder(QFileInfo(folder).path()))
        return false;
    const auto mode = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup |
                      QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    return QDir().mkdir(folder, mode) || QFileInfo(folder).isDir();
}
