// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>

namespace dozely
{

/// A file of the system's own that programs share: believed only when nobody else can have written it, read
/// up to a limit, replaced whole, and changed by one program at a time.
///
///     const GuardedFile file({path, PropertyList::maximumSize});
///     const auto lock = file.lock();
///     const auto content = lock ? file.read() : lock.error();
///
/// THREADING: any thread. BLOCKING: for the disk, and `lock` for its limit.
class DOZELYKIT_EXPORT GuardedFile
{
public:
    /// Whose file is believed.
    enum class Owners {
        System,            ///< That of the owner of the root folder.
        SystemAndThisUser, ///< Also that of the effective user of this process.
    };

    struct Terms {
        QString path;    ///< Written out in full, below the root folder.
        qint64 largest;  ///< Bytes.
        int mode = 0644; ///< The permission bits of the file.
        Owners owners = Owners::System;
    };

    /// What happens to a file that was set aside earlier.
    enum class Earlier { Replaced, Kept };

    /// Names of errors that callers tell apart.
    /// @{
    static constexpr char busy[] = "busy";           ///< Another program has the lock.
    static constexpr char untrusted[] = "untrusted"; ///< Somebody else may have written it.
    static constexpr char tooLarge[] = "too large";
    /// @}

    /// Has the lock until it goes.
    class DOZELYKIT_EXPORT Lock
    {
    public:
        struct Held;
        explicit Lock(std::unique_ptr<Held> held);
        Lock(Lock &&other) noexcept;
        Lock &operator=(Lock &&other) noexcept;
        ~Lock();

    private:
        std::unique_ptr<Held> m_held;
    };

    explicit GuardedFile(Terms terms);

    const QString &path() const { return m_terms.path; }

    /// Whether there is anything of that name, a link that leads nowhere among it.
    bool exists() const;

    /// The whole content; nothing when there is no such file. A link is not followed.
    Result<std::optional<QByteArray>> read() const;

    /// Takes the lock: the kernel's, on the file of the same name with ".lock" behind it, waiting for at most
    /// `limit`. That file stays, and is for its owner alone, since whoever can open it can keep the lock from
    /// everybody; what lies there of an earlier holder means nothing. The folder is made where there is none,
    /// writable for its owner alone.
    Result<Lock> lock(std::chrono::milliseconds limit = std::chrono::seconds(5)) const;

    /// Replaces the file as replaceFileAtomically does; makes the folder as `lock` does. Null, or what could
    /// not be read back for its size, is refused, and the old file stays.
    Result<void> replace(const QByteArray &content) const;

    /// Moves the file to its name with ".damaged" behind it. An earlier one is replaced, or kept: the new one
    /// then ends in ".damaged-2" or the next number that is free.
    Result<void> setAside(Earlier earlier) const;

private:
    Terms m_terms;
};

} // namespace dozely
