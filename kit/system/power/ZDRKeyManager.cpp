// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/ZDRKeyManager.h"

#include "DozelyKit/core/foundation/NSAssertionHandler.h"
#include "DozelyKit/core/foundation/Platform.h"
#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/ServiceRegistry.h"

namespace
{
constexpr char success[] = "KERN_SUCCESS"; // what was expected
constexpr quint32 auxKeyDown = 0x0A00;

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

void post(const NXEventData &data, const char *method, Line line)
{
    const quint32 driver = ZDRKeyManager::eventDriver();
    if (Platform::current().keyEventDriver->post(driver, NX_SYSDEFINED, {}, data, kNXEventDataVersion, 0,
                                                 0) != 0)
        fail(method, line, success);
}
} // namespace

quint32 ZDRKeyManager::eventDriver()
{
    constexpr char method[] = "eventDriver";
    if (connection != 0)
        return connection;
    ServiceRegistry &registry = *Platform::current().serviceRegistry;
    quint32 masterPort = 0;
    if (registry.masterPort(&masterPort) != 0)
        fail(method, masterPortLine, success);
    quint32 iterator = 0;
    if (registry.matchingServices(masterPort, "IOHIDSystem", &iterator) != 0)
        fail(method, matchingLine, success);
    const quint32 service = registry.next(iterator);
    if (service == 0)
        fail(method, serviceLine, "service");
    if (Platform::current().keyEventDriver->open(service, kIOHIDParamConnectType, &connection) != 0)
        fail(method, openLine, success);
    registry.release(service);
    registry.release(iterator);
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
