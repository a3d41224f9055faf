// SPDX-License-Identifier: MIT
#include "hosts/daemon/StoreWatcher.h"

#include "DozelyKit/core/foundation/Clock.h"

#include <QFileInfo>

using namespace dozely;

namespace
{
/// Long enough for the several steps of one replacement, short enough for a person not to notice.
constexpr std::chrono::milliseconds settlingTime(50);
} // namespace

StoreWatcher::StoreWatcher(const QString &file, const QString &root, Clock &clock, QObject *parent)
    : QObject(parent), m_file(file), m_root(root.isEmpty() ? QString("/") : root), m_clock(clock)
{
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &StoreWatcher::noticeChange);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &StoreWatcher::noticeChange);
    watchWhatIsThere();
}

QStringList StoreWatcher::whatIsThere() const
{
    QStringList paths;
    for (QString path = m_file; path.size() > m_root.size(); path = QFileInfo(path).path()) {
        if (QFileInfo::exists(path))
            paths += path;
    }
    return paths << m_root;
}

void StoreWatcher::watchWhatIsThere()
{
    // A folder tells of what comes, goes or is renamed in it, the file of what is written into it. All
    // watches are made anew: what bears the name now may be another file than the one that is watched. A
    // folder that is made while this runs may escape one round, hence the next.
    QStringList wanted;
    do {
        const QStringList watched = m_watcher.files() + m_watcher.directories();
        if (!watched.isEmpty())
            m_watcher.removePaths(watched);
        wanted = whatIsThere();
        m_watcher.addPaths(wanted);
    } while (wanted != whatIsThere());
}

void StoreWatcher::noticeChange()
{
    if (m_isPending)
        return;
    m_isPending = true;
    m_clock.callAfter(settlingTime, this, [this] {
        m_isPending = false;
        // Watching begins before the file is read: what happens in between is told again.
        watchWhatIsThere();
        Q_EMIT changed();
    });
}
