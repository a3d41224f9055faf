// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/ZDRKeyManager.h"

#include "DozelyKit/core/foundation/NSAssertionHandler.h"
#include "DozelyKit/system/power/KeyEventDriver.h"

using namespace dozely;

namespace
{
constexpr char success[] = "KERN_SUCCESS"; // what was expected
constexpr quint32 auxKeyDown = 0x0A00;
constexpr quint32 openConnection = 1;

quint32 connection = 0; // to the event driver; opened once

// The numbers tell the place among the failures; who handles them knows them by these.
enum Line : qint32 {
    masterPortLine = 28,
    matchingLine = 31,
    serviceLine = 34,
    openLine = 37,
    postSysDefinedKeyLine = 55,
    postAuxKeyLine = 70,
};

/// May throw, and may return: then the caller goes on.
void fail(const char *method, Line line, const char *description)
{
    NSAssertionHandler::currentHandler().handleFailureInMethod(method, "ZDRKeyManager", "ZDRKeyManager", line,
                                                               description);
}

void post(const NXEventData &event, const char *method, Line line)
{
    ZDRKeyManager::eventDriver();
    if (!Port<KeyEventDriver>::current()->post(event))
        fail(method, line, success);
}
} // namespace

quint32 ZDRKeyManager::eventDriver()
{
    constexpr char method[] = "eventDriver";
    if (connection != 0)
        return connection;
    switch (Port<KeyEventDriver>::current()->open()) {
    case KeyEventDriver::Opening::Opened:
        connection = openConnection;
        break;
    case KeyEventDriver::Opening::NoAnswer:
        fail(method, masterPortLine, success);
        break;
    case KeyEventDriver::Opening::NoList:
        fail(method, matchingLine, success);
        break;
    case KeyEventDriver::Opening::NoInputSystem:
        fail(method, serviceLine, "service");
        break;
    case KeyEventDriver::Opening::Refused:
        fail(method, openLine, success);
        break;
    }
    return connection;
}

void ZDRKeyManager::postSysDefinedKey(quint8 key)
{
    NXEventData data{};
    data.compound.subType = key;
    post(data, "postSysDefinedKey", postSysDefinedKeyLine);
}

void ZDRKeyManager::postAuxKey(quint8 key)
{
    NXEventData data{};
    data.compound.subType = NX_SUBTYPE_AUX_CONTROL_BUTTONS;
    data.compound.words[0] = quint32(key) << 16 | auxKeyDown;
    post(data, "postAuxKey", postAuxKeyLine);
}
