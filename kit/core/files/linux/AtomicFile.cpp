// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/AtomicFile.h"

#include "DozelyKit/core/foundation/linux/Descriptor_p.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace dozely
{

namespace
{
bool writeAll(int descriptor, const QByteArray &content)
{
    qsizetype done = 0;
    while (done < content.size()) {
        const ssize_t part =
            ::write(descriptor, content.constData() + done, static_cast<size_t>(content.size() - done));
        if (part < 0 && errno != EINTR)
            return false;
        done += part < 0 ? 0 : part;
    }
    return true;
}

/// Writes the temporary file and puts it in the place of the old one. False with errno on failure; the
/// temporary may then be left.
bool replaceIn(int folder, const QByteArray &temporary, const QByteArray &name, const QByteArray &content,
               int mode)
{
    const Descriptor file(::openat(folder, temporary.constData(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    // The mode is widened only when the content is complete, and whatever the process's mask says.
    return file.get() >= 0 && writeAll(file.get(), content) &&
           ::fchmod(file.get(), static_cast<mode_t>(mode)) == 0 && ::fsync(file.get()) == 0 &&
           ::renameat(folder, temporary.constData(), folder, name.constData()) == 0;
}
} // namespace

Result<void> replaceFileAtomically(const QString &path, const QByteArray &content, int mode)
{
    const auto fail = [&](int code) {
        return Error{QString("Cannot write \"%1\": %2").arg(path, qt_error_string(code))};
    };
    const QFileInfo target(path);
    const QByteArray name = QFile::encodeName(target.fileName());
    if (name.isEmpty())
        return fail(EISDIR);
    const Descriptor folder(
        ::open(QFile::encodeName(target.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.get() < 0)
        return fail(errno);
    const QByteArray temporary =
        ".dozely-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    if (!replaceIn(folder.get(), temporary, name, content, mode)) {
        const int code = errno;
        ::unlinkat(folder.get(), temporary.constData(), 0);
        return fail(code);
    }
    // Without this the new name may be lost with the power, though the content is on the disk.
    if (::fsync(folder.get()) != 0)
        return fail(errno);
    return {};
}

} // namespace dozely
