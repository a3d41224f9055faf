// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/GuardedFile.h"

#include "DozelyKit/core/files/AtomicFile.h"
#include "DozelyKit/core/files/RegularFile_p.h"
#include "DozelyKit/core/files/TrustedPath.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>

namespace
{
constexpr std::chrono::milliseconds lockPause{10};

/// Makes the folder and those above it that are missing, writable for their owner alone.
bool makeFolder(const QString &folder)
{
    if (QFileInfo(folder).isDir())
        return true;
    if (QFileInfo(folder).path() == folder || !makeFolder(QFileInfo(folder).path()))
        return false;
    return ::mkdir(QFile::encodeName(folder).constData(), 0755) == 0 || QFileInfo(folder).isDir();
}

dozely::Result<void> makeFolderOf(const QString &path)
{
    if (!makeFolder(QFileInfo(path).path()))
        return dozely::Error{QString("The folder of %1 cannot be made").arg(path)};
    return {};
}

/// Waits for the kernel's lock: 0 or an errno value, EWOULDBLOCK when another program keeps it.
int takeLock(int file, std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    while (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return errno;
        if (deadline.hasExpired())
            return EWOULDBLOCK;
        std::this_thread::sleep_for(lockPause);
    }
    return 0;
}
} // namespace

namespace dozely
{

struct GuardedFile::Lock::Held {
    Descriptor descriptor;
};

GuardedFile::Lock::Lock(std::unique_ptr<Held> held) : m_held(std::move(held)) {}
GuardedFile::Lock::Lock(Lock &&other) noexcept = default;
GuardedFile::Lock &GuardedFile::Lock::operator=(Lock &&other) noexcept = default;
GuardedFile::Lock::~Lock() = default;

GuardedFile::GuardedFile(Terms terms) : m_terms(std::move(terms)) {}

bool GuardedFile::exists() const
{
    const QFileInfo file(path());
    return file.exists() || file.isSymLink();
}

Result<std::optional<QByteArray>> GuardedFile::read() const
{
    if (!exists())
        return std::optional<QByteArray>();
    QList<quint32> owners;
    if (const auto owner = RootFolder::owner())
        owners += *owner;
    else if (m_terms.owners == Owners::System)
        return Error{"the owner of the root folder is not known", untrusted};
    if (m_terms.owners == Owners::SystemAndThisUser)
        owners += NSProcessInfo::effectiveUserID();
    if (const auto trusted = isTrustedPath(path(), owners); !trusted)
        return Error{trusted.error().text, untrusted};
    auto content = readRegularFile(path(), m_terms.largest, false);
    if (!content)
        return Error{content.error().text, content.error().name == fileTooLarge ? tooLarge : ""};
    return std::optional(*std::move(content));
}

Result<GuardedFile::Lock> GuardedFile::lock(std::chrono::milliseconds limit) const
{
    if (const auto made = makeFolderOf(path()); !made)
        return made.error();
    const QString name = path() + ".lock";
    const Error isBusy{QString("%1 is being changed by another program").arg(path()), busy};
    const Error cannotBeMade{QString("The lock file of %1 cannot be made").arg(path())};
    auto held = std::make_unique<Lock::Held>();
    held->descriptor.reset(::open(QFile::encodeName(name).constData(),
                                  O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    // Earlier versions left files that others may read, and with that lock.
    if (!held->descriptor.isValid() || ::fchmod(held->descriptor.get(), S_IRUSR | S_IWUSR) != 0)
        return cannotBeMade;
    if (const int failure = takeLock(held->descriptor.get(), limit); failure != 0)
        return failure == EWOULDBLOCK ? isBusy : Error{qt_error_string(failure)};
    return Lock(std::move(held));
}

Result<void> GuardedFile::replace(const QByteArray &content) const
{
    if (content.isNull() || content.size() > m_terms.largest)
        return Error{"it has grown too large", tooLarge};
    if (const auto made = makeFolderOf(path()); !made)
        return made.error();
    return replaceFileAtomically(path(), content, m_terms.mode);
}

Result<void> GuardedFile::setAside(Earlier earlier) const
{
    const QString damaged = path() + ".damaged";
    QString aside = damaged;
    if (earlier == Earlier::Replaced)
        QFile::remove(aside);
    for (int number = 2; QFileInfo::exists(aside) || QFileInfo(aside).isSymLink(); ++number)
        aside = QString("%1-%2").arg(damaged).arg(number);
    if (!QFile::rename(path(), aside))
        return Error{QString("%1 cannot be moved aside").arg(path())};
    return {};
}

} // namespace dozely
