// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/RegularFile_p.h"

#include <QFile>
#include <QScopeGuard>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
std::nullopt_t fail(QString *error, const QString &path, const QString &reason)
{
    if (error)
        *error = QString("Cannot read \"%1\": %2.").arg(path, reason);
    return std::nullopt;
}
} // namespace

std::optional<QByteArray> readRegularFile(const QString &path, qint64 maximumSize, bool followLinks,
                                          QString *error)
{
    // O_NONBLOCK: opening a pipe that nobody writes to would wait for ever.
    const int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | (followLinks ? 0 : O_NOFOLLOW);
    const int descriptor = ::open(QFile::encodeName(path).constData(), flags);
    if (descriptor < 0)
        return fail(error, path,
                    errno == ELOOP && !followLinks ? "it is a symbolic link" : qt_error_string(errno));
    const auto close = qScopeGuard([descriptor] { ::close(descriptor); });
    struct stat status {
    };
    if (::fstat(descriptor, &status) != 0)
        return fail(error, path, qt_error_string(errno));
    if (!S_ISREG(status.st_mode))
        return fail(error, path, "it is not a regular file");

    // One byte more than allowed is asked for, so that a file that grows meanwhile is found out as well.
    QByteArray content(static_cast<qsizetype>(std::min<qint64>(status.st_size, maximumSize)) + 1,
                       Qt::Uninitialized);
    qsizetype size = 0;
    while (size < content.size()) {
        const ssize_t part =
            ::read(descriptor, content.data() + size, static_cast<size_t>(content.size() - size));
        if (part < 0 && errno == EINTR)
            continue;
        if (part < 0)
            return fail(error, path, qt_error_string(errno));
        if (part == 0)
            break;
        size += part;
    }
    if (size > maximumSize || status.st_size > maximumSize)
        return fail(error, path, QString("it is larger than %1 bytes").arg(maximumSize));
    content.truncate(size);
    return content;
}
