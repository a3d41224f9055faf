// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AECodes.h"

/// Names a process: the high word is 0, the low one its process id. Both 0 name none.
struct ProcessSerialNumber {
    quint32 highLongOfPSN = 0;
    quint32 lowLongOfPSN = 0;

    bool operator==(const ProcessSerialNumber &) const = default;
};

/// What GetProcessInformation tells. The caller says how long the record is, and that it has no buffer for
/// the name.
struct ProcessInfoRec {
    static constexpr quint32 length = 72; ///< Of the platform's record.

    quint32 processInfoLength = length;
    char *processName = nullptr;
    ProcessSerialNumber processNumber;
    OSType processSignature = 0;
    quint32 userId = 0; ///< Who runs it.
};

/// Steps to the next process that uses Apple events, in order of number; from both words 0 to the first.
/// procNotFound, with both words 0, after the last. Processes of all users are met, dead ones never.
DOZELYKIT_EXPORT OSErr GetNextProcess(ProcessSerialNumber *number);

/// procNotFound when the process does not run or does not use Apple events; paramErr for a record of another
/// length or with a name buffer.
DOZELYKIT_EXPORT OSErr GetProcessInformation(const ProcessSerialNumber &number, ProcessInfoRec *information);

namespace dozely
{

/// The signature under which this process can be found.
namespace ProcessSignature
{
/// Of a process whose bundle names none, and that sets none.
constexpr OSType unknown = fourCharCode("????");

/// What was set, else the "CFBundleSignature" of the main bundle, else `unknown`.
DOZELYKIT_EXPORT OSType current();

/// For the head of main, before the process uses Apple events; 0 goes back to the bundle's.
DOZELYKIT_EXPORT void set(OSType signature);
} // namespace ProcessSignature

} // namespace dozely
