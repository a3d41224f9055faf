// SPDX-License-Identifier: MIT
#include "hosts/daemon/ZoneWatch.h"

#include "DozelyKit/core/foundation/RootFolder.h"

#include <QFile>

#include <sys/stat.h>

using namespace dozely;

namespace
{
const char *const zoneFile = "/etc/localtime";
const char *const clockFile = "/etc/adjtime"; // whether the machine's clock keeps local time
const char *const zoneData = "/usr/share/zoneinfo/tzdata.zi";

QByteArray contentOf(const char *fixedPath)
{
    constexpr qint64 longest = 64 << 10; // bytes; the rules of a zone are some thousand
    QFile file(RootFolder::join(fixedPath));
    return file.open(QIODevice::ReadOnly) ? file.read(longest) : QByteArray();
}

/// Which file that is, or which link.
QByteArray identityOf(const char *fixedPath)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(RootFolder::join(fixedPath)).constData(), &status) != 0)
        return {};
    return QByteArray::number(qulonglong(status.st_ino)) + ' ' +
           QByteArray::number(qlonglong(status.st_mtim.tv_sec)) + ' ' +
           QByteArray::number(qlonglong(status.st_mtim.tv_nsec));
}

/// A package of zone data replaces its files one after the other, and the link to the machine's zone last.
QByteArray allThatMatters()
{
    return contentOf(zoneFile) + '\0' + contentOf(clockFile) + '\0' + identityOf(zoneFile) + '\0' +
           identityOf(zoneData);
}
} // namespace

ZoneWatch::ZoneWatch(Clock &clock, QObject *parent)
    : QObject(parent),
      m_zone(RootFolder::join(zoneFile), RootFolder::path(), clock),
      m_data(RootFolder::join(zoneData), RootFolder::path(), clock),
      m_known(allThatMatters())
{
    connect(&m_zone, &StoreWatcher::changed, this, &ZoneWatch::look);
    connect(&m_data, &StoreWatcher::changed, this, &ZoneWatch::look);
}

/// Told of whatever happens in those folders.
void ZoneWatch::look()
{
    const QByteArray now = allThatMatters();
    if (now == m_known)
        return;
    m_known = now;
    Q_EMIT changed();
}
