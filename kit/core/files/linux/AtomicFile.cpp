// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/AtomicFile.h"

#include "DozelyKit/core/foundation/Descriptor.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cctype>
#include <cerrno>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace dozely
{

namespace
{
constexpr char temporaryPrefix[] = ".dozely-";

/// So old nobody's temporary is that is still at it.
constexpr time_t longestWriting = 600; // seconds

/// ".dozely-" and up to sixteen hexadecimal digits.
bool isTemporary(const QByteArray &name)
{
    if (!name.startsWith(temporaryPrefix))
        return false;
    const QByteArray number = name.mid(qsizetype(sizeof temporaryPrefix) - 1);
    bool isNumber = false;
    number.toULongLong(&isNumber, 16);
    return isNumber && std::isxdigit(static_cast<unsigned char>(number[0]));
}

/// Removes what programs left behind that were killed between making a temporary and renaming it.
void sweep(int folder)
{
    const int readable = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(readable < 0 ? nullptr : ::fdopendir(readable),
                                                       ::closedir);
    while (const dirent *entry = entries ? ::readdir(entries.get()) : nullptr) {
        struct stat status {
        };
        if (isTemporary(entry->d_name) &&
            ::fstatat(folder, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode) &&
            status.st_mtime < ::time(nullptr) - longestWriting)
            ::unlinkat(folder, entry->d_name, 0);
    }
}

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
    sweep(folder.get());
    const QByteArray temporary =
        temporaryPrefix + QByteArray::number(QRandomGenerator::system()->generate64(), 16);
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
