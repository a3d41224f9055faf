// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "support/Require.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// A clock that stands still.
class StandingClock : public dozely::Clock
{
public:
    QDateTime currentDate() const override { return date; }
    std::chrono::milliseconds steadyTime() const override { return steady; }
    std::chrono::milliseconds bootTime() const override { return steady; }
    bool isSynchronised() const override { return true; }
    void callAfter(std::chrono::milliseconds, QObject *, std::function<void()>) override {}
    bool acquire(QSemaphore &semaphore, std::chrono::milliseconds) override { return semaphore.tryAcquire(); }
    std::unique_ptr<dozely::AbsoluteTimer> makeAbsoluteTimer() override { return nullptr; }

    QDateTime date = QDateTime({2026, 3, 14}, {6, 0}, Qt::UTC);
    std::chrono::milliseconds steady{0};
};

/// A whole system below a folder in memory, where it is half past nothing. It has no log: what would be
/// written there is lost.
class FuzzedSystem
{
public:
    FuzzedSystem()
    {
        dozely::RootFolder::set(m_folder.path());
        dozely::Port<dozely::Clock>::current() = clock;
        dozely::setProblemReport([this](const QString &sentence) { problems += sentence; });
    }

    QDateTime now() const { return clock->date; }

    QString path(const QString &fixedPath) const { return m_folder.path() + fixedPath; }

    void makeFolder(const QString &fixedPath) const { REQUIRE(QDir().mkpath(path(fixedPath))); }

    void emptyFolder(const QString &fixedPath) const
    {
        const QDir folder(path(fixedPath));
        const QStringList names =
            folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        for (const QString &name : names)
            REQUIRE(QFile::remove(folder.filePath(name)));
    }

    void write(const QString &fixedPath, const QByteArray &content) const
    {
        QFile file(path(fixedPath));
        REQUIRE(file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                file.write(content) == content.size());
    }

    /// Null when there is no such file.
    QByteArray read(const QString &fixedPath) const
    {
        QFile file(path(fixedPath));
        return file.open(QIODevice::ReadOnly) ? file.readAll() + QByteArray("") : QByteArray();
    }

    bool exists(const QString &fixedPath) const { return QFile::exists(path(fixedPath)); }

    std::shared_ptr<StandingClock> clock = std::make_shared<StandingClock>();
    QStringList problems; ///< What was reported.

private:
    QTemporaryDir m_folder{"/dev/shm/fuzz-XXXXXX"};
};
