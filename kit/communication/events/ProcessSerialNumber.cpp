// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/ProcessSerialNumber.h"

#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/core/bundles/NSBundle.h"

#include <algorithm>

using namespace dozely;

namespace
{
OSType &givenSignature()
{
    static OSType signature = 0;
    return signature;
}

OSType bundleSignature()
{
    const auto bundle = NSBundle::mainBundle();
    const QString text =
        bundle ? bundle->objectForInfoDictionaryKey("CFBundleSignature").toString() : QString();
    return codeOfCharacters(text).value_or(ProcessSignature::unknown);
}
} // namespace

AEProcesses::~AEProcesses() = default;

void AEProcesses::whenLost(std::function<void()>) {}

OSType ProcessSignature::current()
{
    return givenSignature() != 0 ? givenSignature() : bundleSignature();
}

void ProcessSignature::set(OSType signature)
{
    givenSignature() = signature;
}

OSErr GetNextProcess(ProcessSerialNumber *number)
{
    const quint64 last = quint64{number->highLongOfPSN} << 32 | number->lowLongOfPSN;
    *number = {};
    for (const auto &process : Port<AEProcesses>::current()->processes()) {
        if (static_cast<quint64>(process.identifier) <= last)
            continue;
        number->lowLongOfPSN = static_cast<quint32>(process.identifier);
        return noErr;
    }
    return procNotFound;
}

OSErr GetProcessInformation(const ProcessSerialNumber &number, ProcessInfoRec *information)
{
    if (information->processInfoLength != ProcessInfoRec::length || information->processName)
        return paramErr;
    if (number.highLongOfPSN != 0)
        return procNotFound;
    const qint64 wanted = number.lowLongOfPSN;
    const auto running = Port<AEProcesses>::current()->processes();
    const auto found = std::find_if(running.begin(), running.end(),
                                    [wanted](const auto &process) { return process.identifier == wanted; });
    if (found == running.end())
        return procNotFound;
    information->processNumber = {0, static_cast<quint32>(found->identifier)};
    information->processSignature = found->signature;
    information->userId = found->userId;
    return noErr;
}
