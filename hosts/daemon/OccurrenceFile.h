// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/OccurrenceRecord.h"

/// The record of earlier versions, "/var/lib/dozely/occurrences.plist" below the root folder: a property list
/// that is taken over once.
namespace OccurrenceFile
{
struct Loaded {
    OccurrenceRecord record; ///< Empty when there is no file or it is damaged.
    QString damage;          ///< Why the file could not be read; empty when it could, or when there is none.
};

QString path();

bool exists();

/// Reads the record.
Loaded load();

/// Moves a record that was read out of the way: to the same name with ".taken-over" behind it, or ".damaged".
dozely::Result<void> setAside(bool isDamaged);
} // namespace OccurrenceFile
