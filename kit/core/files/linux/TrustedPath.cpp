// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/TrustedPath.h"

#include "DozelyKit/core/foundation/RootFolder.h"

#include <QFile>
#include <QStringList>

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace dozely
{

namespace
{
// A folder made to exhaust its reader: one descriptor is open per level, and entries cost a system call each.
constexpr int maximumDepth = 32;
constexpr int maximumEntries = 20'000;

/// Looks at one path, entry by entry, by descriptor: what was looked at cannot be exchanged for a link
/// meanwhile.
class PathCheck
{
public:
    explicit PathCheck(const QList<quint32> &owners) : m_owners(owners) {}

    bool isTrusted(const QString &root, const QStringList &parts)
    {
        QString path = root.isEmpty() ? "/" : root;
        int folder = ::open(QFile::encodeName(path).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        bool trusted = folder >= 0 ? isEntryTrusted(folder, path) : refuse(path, reasonOf(errno));
        for (const QString &part : parts) {
            if (!trusted)
                break;
            path = path.endsWith('/') ? path + part : path + '/' + part;
            const int next =
                ::openat(folder, QFile::encodeName(part).constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC);
            trusted = next >= 0 ? isEntryTrusted(next, path) : refuse(path, reasonOf(errno));
            ::close(folder);
            folder = next;
        }
        trusted = trusted && isContentTrusted(folder, path, 0);
        if (folder >= 0)
            ::close(folder);
        return trusted;
    }

    QString why() const { return m_why; }

private:
    static QString reasonOf(int code) { return QString("cannot be read: %1").arg(qt_error_string(code)); }

    bool refuse(const QString &path, const QString &reason)
    {
        m_why = QString("\"%1\" %2").arg(path, reason);
        return false;
    }

    bool isEntryTrusted(int descriptor, const QString &path)
    {
        struct stat status {
        };
        if (::fstat(descriptor, &status) != 0)
            return refuse(path, reasonOf(errno));
        if (S_ISLNK(status.st_mode))
            return refuse(path, "is a symbolic link");
        if (!S_ISDIR(status.st_mode) && !S_ISREG(status.st_mode))
            return refuse(path, "is neither a file nor a folder");
        if (!m_owners.contains(status.st_uid))
            return refuse(path, QString("belongs to user %1").arg(status.st_uid));
        // A sticky folder is no exception: it keeps others from removing a file, not from making one of a
        // name that is not there yet. The group's bit stands for access lists as well.
        if ((status.st_mode & (S_IWGRP | S_IWOTH)) != 0)
            return refuse(path, "may be written by others than its owner");
        return true;
    }

    /// Everything below `descriptor` when it is a folder. Recursion and open descriptors are bounded by the
    /// depth.
    bool isContentTrusted(int descriptor, const QString &path, int depth)
    {
        struct stat status {
        };
        if (::fstat(descriptor, &status) != 0)
            return refuse(path, reasonOf(errno));
        if (!S_ISDIR(status.st_mode))
            return true;
        if (depth == maximumDepth)
            return refuse(path, "lies too deep");
        const int readable = ::openat(descriptor, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        const std::unique_ptr<DIR, int (*)(DIR *)> folder(readable < 0 ? nullptr : ::fdopendir(readable),
                                                          ::closedir);
        if (!folder)
            return refuse(path, reasonOf(errno));
        for (;;) {
            errno = 0;
            const dirent *entry = ::readdir(folder.get());
            if (!entry)
                return errno == 0 || refuse(path, reasonOf(errno));
            if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0)
                continue;
            if (++m_entries > maximumEntries)
                return refuse(path, "holds too many entries");
            if (!isMemberTrusted(descriptor, entry->d_name, path, depth))
                return false;
        }
    }

    bool isMemberTrusted(int folder, const char *name, const QString &folderPath, int depth)
    {
        const QString path = folderPath + '/' + QFile::decodeName(name);
        const int descriptor = ::openat(folder, name, O_PATH | O_NOFOLLOW | O_CLOEXEC);
        if (descriptor < 0)
            return refuse(path, reasonOf(errno));
        const bool trusted =
            isEntryTrusted(descriptor, path) && isContentTrusted(descriptor, path, depth + 1);
        ::close(descriptor);
        return trusted;
    }

    QList<quint32> m_owners;
    QString m_why;
    int m_entries = 0;
};
} // namespace

Result<void> isTrustedPath(const QString &path, const QList<quint32> &owners)
{
    const auto refuse = [&](const QString &reason) { return Error{QString("\"%1\" %2").arg(path, reason)}; };
    const QString root = RootFolder::path();
    if (path != root && !path.startsWith(root + '/'))
        return refuse("lies outside of the system's root folder");
    const QStringList parts = path.mid(root.size()).split('/', Qt::SkipEmptyParts);
    // Not resolved by text: behind a link ".." leads to another folder than the text says.
    if (parts.contains("..") || parts.contains("."))
        return refuse("is not written out in full");
    PathCheck check(owners);
    if (!check.isTrusted(root, parts))
        return Error{check.why()};
    return {};
}

} // namespace dozely
