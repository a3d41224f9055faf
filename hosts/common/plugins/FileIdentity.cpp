// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/FileIdentity.h"

#include <QFile>

#include <sys/stat.h>

FileIdentity FileIdentity::of(const QString &path)
{
    struct stat status {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return {status.st_dev, status.st_ino, status.st_size,
            status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec};
}
