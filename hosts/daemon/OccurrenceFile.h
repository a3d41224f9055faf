// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/OccurrenceRecord.h"

/// The file of the occurrence record, "/var/lib/dozely/occurrences.plist" below the root folder. Only the
/// daemon touches it.
namespace OccurrenceFile
{
struct Loaded {
    OccurrenceRecord record; ///< Empty when there is no file yet or it is damaged.
    QString damage;          ///< Why the file could not be read; empty when it could, or when there is none.
};

QString path();

/// Reads the record. A damaged file is moved aside to the same name with ".damaged" behind it.
Loaded load();

/// Replaces the file. On failure, as when the record has grown too large, the old one stays. Blocks until the
/// disk has it.
dozely::Result<void> save(const OccurrenceRecord &record);
} // namespace OccurrenceFile
