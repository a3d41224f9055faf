// SPDX-License-Identifier: MIT
#include "support/ScratchRoot.h"

#include "DozelyKit/core/foundation/RootFolder.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

using namespace dozely;

ScratchRoot::ScratchRoot() : m_folder("/tmp/dz-XXXXXX")
{
    ::chmod(qPrintable(path()), 0755);
    makeFolder("/var/log");
    RootFolder::set(path());
}

ScratchRoot::~ScratchRoot()
{
    RootFolder::set("/");
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
