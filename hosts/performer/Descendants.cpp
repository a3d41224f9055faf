// SPDX-License-Identifier: MIT
#include "hosts/performer/Descendants.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QMultiHash>
#include <QSet>

#include <csignal>

namespace
{
struct Parentage {
    pid_t parent;
    char state;
};

/// From "PID (NAME) STATE PPID ..." of proc(5); the name may hold anything.
Parentage parentageOf(const QString &process)
{
    QFile file("/proc/" + process + "/stat");
    if (!file.open(QIODevice::ReadOnly))
        return {0, 'X'};
    const QByteArray line = file.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    if (fields.size() < 2 || fields[0].isEmpty())
        return {0, 'X'};
    return {fields[1].toInt(), fields[0].front()};
}
} // namespace

QList<pid_t> Descendants::of(pid_t ancestor)
{
    QMultiHash<pid_t, pid_t> children;
    QSet<pid_t> ended;
    for (const QString &process : QDir("/proc").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const pid_t id = process.toInt(&isNumber);
        if (!isNumber)
            continue;
        const Parentage parentage = parentageOf(process);
        children.insert(parentage.parent, id);
        if (parentage.state == 'Z' || parentage.state == 'X')
            ended += id;
    }
    QList<pid_t> found = children.values(ancestor);
    for (qsizetype i = 0; i < found.size(); ++i)
        found += children.values(found[i]);
    found.removeIf([&](pid_t id) { return ended.contains(id); });
    return found;
}

qsizetype Descendants::signal(pid_t ancestor, int number)
{
    const QList<pid_t> processes = of(ancestor);
    for (const pid_t process : processes)
        ::kill(process, number);
    return processes.size();
}
