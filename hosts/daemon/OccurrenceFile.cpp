// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceFile.h"

#include "DozelyKit/core/files/GuardedFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/RootFolder.h"

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

OccurrenceFile::Loaded OccurrenceFile::load()
{
    const GuardedFile file = recordFile();
    const auto data = file.read();
    if (data && !*data)
        return {};
    auto record = data ? OccurrenceRecord::fromData(**data) : data.error();
    if (record)
        return {*std::move(record), {}};
    // One that cannot be moved is replaced by the next save all the same.
    (void)file.setAside(GuardedFile::Earlier::Replaced);
    return {{}, record.error().text};
}

Result<void> OccurrenceFile::save(const OccurrenceRecord &record)
{
    return recordFile().replace(record.toData());
}
