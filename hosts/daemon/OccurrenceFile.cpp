// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceFile.h"

#include "DozelyKit/core/files/AtomicFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/files/TrustedPath.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/common/TrustedFolder.h"

#include <QFile>
#include <QFileInfo>

namespace
{
constexpr int recordMode = 0600;

std::optional<OccurrenceRecord> read(const QString &path, QString *error)
{
    // What somebody else may have written is not parsed.
    QList<quint32> owners{NSProcessInfo::effectiveUserID()};
    if (const auto owner = RootFolder::owner())
        owners += *owner;
    if (const auto trusted = isTrustedPath(path, owners); !trusted) {
        *error = trusted.error().text;
        return {};
    }
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        *error = "it cannot be opened";
        return {};
    }
    return OccurrenceRecord::fromData(file.read(PropertyList::maximumSize + 1), error);
}
} // namespace

QString OccurrenceFile::path()
{
    return RootFolder::join("/var/lib/dozely/occurrences.plist");
}

OccurrenceFile::Loaded OccurrenceFile::load()
{
    Loaded loaded;
    const QFileInfo info(path());
    if (!info.exists() && !info.isSymLink())
        return loaded;
    QString error;
    if (auto record = read(path(), &error)) {
        loaded.record = *std::move(record);
        return loaded;
    }
    loaded.damage = error;
    const QString aside = path() + ".damaged";
    QFile::remove(aside);
    QFile::rename(path(), aside);
    return loaded;
}

bool OccurrenceFile::save(const OccurrenceRecord &record, QString *error)
{
    if (!makeTrustedFolder(QFileInfo(path()).path())) {
        *error = "its folder cannot be made";
        return false;
    }
    const QByteArray data = record.toData();
    if (data.size() > PropertyList::maximumSize) {
        *error = "it has grown too large";
        return false;
    }
    const auto replaced = replaceFileAtomically(path(), data, recordMode);
    if (!replaced)
        *error = replaced.error().text;
    return replaced.ok();
}
