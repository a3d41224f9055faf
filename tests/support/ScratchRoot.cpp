// SPDX-License-Identifier: MIT
#include "support/ScratchRoot.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "support/SignalProcess.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <sys/stat.h>
#include <utility>

using namespace dozely;

ScratchRoot::ScratchRoot() : m_folder("/tmp/dz-XXXXXX")
{
    ::chmod(qPrintable(path()), 0755);
    makeFolder("/var/log");
    RootFolder::set(path());
}

ScratchRoot::~ScratchRoot()
{
    killPerformers();
    RootFolder::set("/");
}

/// Once more after each kill: one may just be starting another process.
void ScratchRoot::killPerformers() const
{
    const QByteArray root = "--root" + QByteArray(1, '\0') + QFile::encodeName(path()) + '\0';
    for (bool isKilled = true; std::exchange(isKilled, false);) {
        for (const QString &entry : QDir("/proc").entryList(QDir::Dirs)) {
            bool isNumber = false;
            const pid_t process = entry.toInt(&isNumber);
            QFile commandLine(QString("/proc/%1/cmdline").arg(process));
            if (!isNumber || !commandLine.open(QIODevice::ReadOnly))
                continue;
            const QByteArray line = commandLine.readAll();
            if (line.contains(root) && line.left(line.indexOf('\0')).contains("performer") &&
                signalProcess(process, SIGKILL))
                isKilled = true;
        }
    }
}

QString ScratchRoot::makeFolder(const QString &fixedPath, int mode) const
{
    QDir().mkpath(join(fixedPath));
    ::chmod(qPrintable(join(fixedPath)), static_cast<mode_t>(mode));
    return join(fixedPath);
}

void ScratchRoot::makeSocketFolder() const
{
    makeFolder("/private/var/tmp/com.dozely", 0777);
}

QByteArray ScratchRoot::logContent() const
{
    QFile file(join("/var/log/dozely.log"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList ScratchRoot::logLines() const
{
    constexpr int stampWidth = 16; // "Mar 04 09:15:02 "
    QStringList lines;
    for (const QString &line : QString::fromUtf8(logContent()).split('\n', Qt::SkipEmptyParts))
        lines += line.mid(stampWidth);
    return lines;
}
