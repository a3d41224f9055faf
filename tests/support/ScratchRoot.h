// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// Relocates the whole system below a fresh folder for the life of the object, log folder included. The
/// folder is removed at the end. Short on purpose: socket paths must fit.
class ScratchRoot
{
public:
    ScratchRoot();
    ~ScratchRoot();
    ScratchRoot(const ScratchRoot &) = delete;
    ScratchRoot &operator=(const ScratchRoot &) = delete;

    QString path() const { return m_folder.path(); }
    /// A fixed path below the scratch root.
    QString join(const QString &fixedPath) const { return path() + fixedPath; }
    /// Makes the folder (with its parents) and returns its path.
    QString makeFolder(const QString &fixedPath, int mode = 0755) const;
    /// Creates the socket folder as a root daemon would, for tests of processes that are not root.
    void makeSocketFolder() const;
    /// The lines of the shared log so far, without their time stamps.
    QStringList logLines() const;
    QByteArray logContent() const;

    /// Ends all performers that were started below this root. They outlive their hosts, and the test.
    void killPerformers() const;

private:
    QTemporaryDir m_folder;
};
