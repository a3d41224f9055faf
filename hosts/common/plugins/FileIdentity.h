// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Which file a path leads to and which content it has, as far as the file system tells: another identity is
/// another file, or one that was written since. All 0 where there is none.
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;     ///< Bytes.
    qint64 modified = 0; ///< Nanoseconds since 1970.

    static FileIdentity of(const QString &path);

    bool operator==(const FileIdentity &) const = default;
};
