// SPDX-License-Identifier: MIT
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>

namespace dozely
{
class Clock;
} // namespace dozely

/// Tells when a file may have changed: written in place, replaced, removed, made, in a folder that may itself
/// come and go. Waits for the kernel's word and polls nothing. A burst of changes is told once.
///
/// THREADING: the thread that made it, from its event loop.
class StoreWatcher : public QObject
{
    Q_OBJECT
public:
    /// Watches `file`, below the folder `root` that exists for good. `clock` must outlive the object.
    StoreWatcher(const QString &file, const QString &root, dozely::Clock &clock, QObject *parent = nullptr);

Q_SIGNALS:
    /// The file may differ from what it was at the last signal, or at the beginning.
    void changed();

private:
    void noticeChange();
    void watchWhatIsThere();
    QStringList whatIsThere() const;

    QString m_file;
    QString m_root;
    dozely::Clock &m_clock;
    QFileSystemWatcher m_watcher;
    bool m_isPending = false;
};
