// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceFile.h"

#include "DozelyKit/core/files/GuardedFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QFile>

using namespace dozely;

namespace
{
constexpr int recordMode = 0600;

GuardedFile recordFile()
{
    return GuardedFile({OccurrenceFile::path(), PropertyList::maximumSize, recordMode,
                        GuardedFile::Owners::SystemAndThisUser});
}
} // namespace

QString OccurrenceFile::path()
{
    return RootFolder::join("/var/lib/dozely/occurrences.plist");
}

bool OccurrenceFile::exists()
{
    return recordFile().exists();
}

OccurrenceFile::Loaded OccurrenceFile::load()
{
    const auto data = recordFile().read();
    if (data && !*data)
        return {};
    auto record = data ? OccurrenceRecord::fromData(**data) : data.error();
    if (record)
        return {*std::move(record), {}};
    return {{}, record.error().text};
}

Result<void> OccurrenceFile::setAside(bool isDamaged)
{
    if (isDamaged)
        return recordFile().setAside(GuardedFile::Earlier::Replaced);
    const QString target = path() + ".taken-over";
    QFile::remove(target);
    if (!QFile::rename(path(), target))
        return Error{"it could not be renamed"};
    return {};
}
