// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/ZDRPowerManager.h"

#include "DozelyKit/core/foundation/LoopSignal.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/power/PowerMessages.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "DozelyKit/system/power/ZDRKeyManager.h"
#include "DozelyKit/system/power/ZDRPowerManager_p.h"

#include <csignal>

using namespace dozely;

const QString ZDRPowerManagerSystemWillSleep = QStringLiteral("ZDRPowerManagerSystemWillSleep");
const QString ZDRPowerManagerSystemDidWake = QStringLiteral("ZDRPowerManagerSystemDidWake");
const QString ZDRPowerManagerSystemWillPowerOff = QStringLiteral("ZDRPowerManagerSystemWillPowerOff");

namespace
{
constexpr quint8 keyBoundToNothing = 255;
constexpr int termination = 15;
static_assert(termination == SIGTERM);

/// Held to the end of the process; never destroyed with it, when the event loop that its messages come from
/// is gone.
std::shared_ptr<ZDRPowerManager> &shared()
{
    static auto *const instance = new std::shared_ptr<ZDRPowerManager>;
    return *instance;
}

void post(const QString &name)
{
    NSNotificationCenter::defaultCenter().postNotificationName(name);
}

/// An input event tells everybody who counts idle time that the machine is in use again.
void postWakingKey()
{
    try {
        ZDRKeyManager::postAuxKey(keyBoundToNothing);
    } catch (const NSException &exception) {
        // The wake itself counts for more than its key.
        ZDRLog("The key event after waking failed: %@", exception.reason());
    }
}
} // namespace

void ZDRPowerManager::initialize()
{
    init();
}

std::shared_ptr<ZDRPowerManager> ZDRPowerManager::sharedInstance()
{
    return init();
}

std::shared_ptr<ZDRPowerManager> ZDRPowerManager::init()
{
    auto &instance = shared();
    if (!instance)
        instance.reset(new ZDRPowerManager);
    return instance;
}

ZDRPowerManager::ZDRPowerManager()
{
    // What the ports have to tell belongs into the shared log.
    setProblemReport([](const QString &sentence) { ZDRLog("%@", sentence); });
    d = std::make_unique<ZDRPowerManagerFields>(
        Port<SystemPower>::current(), [this](quint32 messageType, void *change) {
            systemPowerHasChangedCallback(this, 0, messageType, change);
        });
    d->termination = std::make_unique<LoopSignal>(QList<int>{termination}, [] { quit_message(termination); });
}

ZDRPowerManager::~ZDRPowerManager() = default;

void ZDRPowerManager::_systemPowerHasChangedWithArgument(quint32 messageType, void *argument)
{
    switch (messageType) {
    case kIOMessageSystemWillPowerOff:
        post(ZDRPowerManagerSystemWillPowerOff);
        break;
    case kIOMessageSystemWillSleep:
        post(ZDRPowerManagerSystemWillSleep);
        break;
    case kIOMessageSystemHasPoweredOn:
        postWakingKey();
        post(ZDRPowerManagerSystemDidWake);
        break;
    default:
        break;
    }
    d->root_port->allow(argument);
}

void ZDRPowerManager::forceSleep()
{
    SystemPower &power = *init()->d->root_port;
    ZDRLog("Mise en veille forcee.");
    if (power.canSleep() && !power.sleep())
        ZDRLog("Erreur lors de la mise en veille forcee");
}

void systemPowerHasChangedCallback(void *, quint32, quint32 messageType, void *messageArgument)
{
    ZDRPowerManager::sharedInstance()->_systemPowerHasChangedWithArgument(messageType, messageArgument);
}

void quit_message(int signalNumber)
{
    ZDRLog("SIG %d recu.", signalNumber);
    if (signalNumber == termination)
        ZDRPowerManager::sharedInstance()->_systemPowerHasChangedWithArgument(kIOMessageSystemWillPowerOff,
                                                                              nullptr);
}
