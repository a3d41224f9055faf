// SPDX-License-Identifier: MIT
#include "hosts/performer/OwnUnit.h"

#include "DozelyKit/core/foundation/RootFolder.h"

#include <QByteArrayList>
#include <QFile>

namespace
{
QByteArrayList linesOf(const QString &path)
{
    QFile file(dozely::RootFolder::join(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
}

/// What follows the word at the head of the first line that has it.
QByteArray after(const QByteArray &word, const QByteArrayList &lines)
{
    for (const QByteArray &line : lines) {
        if (line.startsWith(word))
            return line.mid(word.size());
    }
    return {};
}
} // namespace

bool OwnUnit::hasRunOutOfMemory()
{
    const QByteArray group = after("0::", linesOf("/proc/self/cgroup"));
    if (group.isEmpty())
        return false;
    return after("oom_kill ", linesOf("/sys/fs/cgroup" + QFile::decodeName(group) + "/memory.events"))
               .toLongLong() > 0;
}
