// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/core/foundation/linux/FolderWatch_p.h"

#include <QByteArray>
#include <QHash>

#include <mutex>

namespace dozely
{

/// The processes that use Apple events, each with two files in one folder that belongs to nobody in
/// particular (mode 1777, so that nobody removes another's): a record with its signature, and its socket.
///
/// A record counts while the process that its name begins with holds a lock on it. Only the kernel can tell
/// that, and it tells so the moment a process dies, however it died; nobody can take another's place.
/// docs/apple-events.md has the form.
class DOZELYKIT_AUTOTEST_EXPORT EventProcesses : public AEProcesses
{
public:
    void prepare() override;
    QList<Process> processes() override;
    std::shared_ptr<NSSocketPort> announce(OSType signature) override;
    void whenLost(std::function<void()> lost) override;
    std::shared_ptr<NSSocketPort> portOf(qint32 identifier, Process *found) override;

    /// The folder, below the root folder.
    static QString folder();

private:
    struct Known {
        Process process;
        QByteArray record; ///< The name of its record.
    };
    QList<Known> walk();
    void watchFolder();
    void folderChanged();

    std::mutex m_mutex;
    QHash<qint32, Known> m_seen; ///< By the latest walk; spares the way to a process the next one.

    std::unique_ptr<FolderWatch> m_watch; ///< Null while nobody wants to know.
    bool m_keepsFolder = false;
    std::function<void()> m_lost;
};

} // namespace dozely
