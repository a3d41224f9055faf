// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/RegularFile_p.h"

#include "DozelyKit/core/foundation/Descriptor.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace dozely
{

Result<QByteArray> readRegularFile(const QString &path, qint64 maximumSize, bool followLinks)
{
    const auto fail = [&](const QString &reason, const QByteArray &name = {}) {
        return Error{QString("Cannot read \"%1\": %2").arg(path, reason), name};
    };
    // O_NONBLOCK: opening a pipe that nobody writes to would wait for ever.
    const int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | (followLinks ? 0 : O_NOFOLLOW);
    const Descriptor file(::open(QFile::encodeName(path).constData(), flags));
    if (!file.isValid())
        return fail(errno == ELOOP && !followLinks ? "it is a symbolic link" : qt_error_string(errno));
    struct stat status {
    };
    if (::fstat(file.get(), &status) != 0)
        return fail(qt_error_string(errno));
    if (!S_ISREG(status.st_mode))
        return fail("it is not a regular file");

    // One byte more than allowed is asked for, so that a file that grows meanwhile is found out as well.
    QByteArray content(static_cast<qsizetype>(std::min<qint64>(status.st_size, maximumSize)) + 1,
                       Qt::Uninitialized);
    qsizetype size = 0;
    while (size < content.size()) {
        const ssize_t part =
            ::read(file.get(), content.data() + size, static_cast<size_t>(content.size() - size));
        if (part < 0 && errno == EINTR)
            continue;
        if (part < 0)
            return fail(qt_error_string(errno));
        if (part == 0)
            break;
        size += part;
    }
    if (size > maximumSize || status.st_size > maximumSize)
        return fail(QString("it is larger than %1 bytes").arg(maximumSize), fileTooLarge);
    content.truncate(size);
    return content;
}

} // namespace dozely
