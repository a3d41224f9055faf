// SPDX-License-Identifier: MIT
//
// The half of ZDRPowerManager that schedules when the machine wakes or switches itself on.
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/machine/ChildProgram.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"

#include <QSet>
#include <QTimeZone>

#include <cerrno>
#include <chrono>

using namespace dozely;

namespace
{
constexpr char autoPower[] = "AutoPower";
constexpr char autoWake[] = "AutoWake";
constexpr char owner[] = "com.dozely";
constexpr std::chrono::minutes longestPmset{1};

QSet<quint32> openReferences; // to the controller
quint32 lastReference = 0;

/// The event type that a key stands for; null for none.
QString eventType(const QString &key)
{
    using zandorSoftwaresExtensions::containsInsensitive;
    if (containsInsensitive(key, autoPower))
        return PowerEventScheduler::powerOn;
    if (containsInsensitive(key, autoWake))
        return PowerEventScheduler::wake;
    return {};
}

/// True when the tool said that it did it.
bool scheduleWithPmset(const QDateTime &date, const QString &type)
{
    // It is told a year in two digits, and would take the one of another century for one of this.
    if (const int year = date.toLocalTime().date().year(); year < 2000 || year > 2099) {
        ZDRLog("pmset keeps no time outside the years 2000 to 2099");
        return false;
    }
    ChildProgram tool;
    tool.path = RootFolder::join("/usr/bin/pmset");
    tool.arguments = QStringList{"schedule", type, date.toLocalTime().toString("MM/dd/yy HH:mm:ss")};
    tool.environment = QByteArrayList{"PATH=/usr/sbin:/usr/bin:/sbin:/bin"};
    // The date is told in our zone, which has to be the tool's.
    if (qEnvironmentVariableIsSet("TZ"))
        tool.environment += "TZ=" + qgetenv("TZ");
    const auto ending = tool.run(longestPmset, 0);
    return ending && ending->signal == 0 && ending->status == 0;
}

/// As an unsigned number of 64 bits; 0 for anything that is no number.
quint64 unsignedValue(const QVariant &value)
{
    return value.typeId() == QMetaType::ULongLong ? value.toULongLong() : quint64(longIntegerValue(value));
}

/// `date`, or what lies at the end of all dates when it would be later.
QDateTime dateAfter(const QDateTime &date, quint64 seconds)
{
    constexpr double end = 9.0e15; // milliseconds: some 285,000 years
    const double milliseconds = double(seconds) * 1000;
    return date.addMSecs(milliseconds < end ? qint64(milliseconds) : qint64(end));
}
} // namespace

qint32 ZDRPowerManager::setAutoEventAtDate(const QString &key, const QDateTime &date)
{
    constexpr qint32 result = -1; // on every path
    if (!date.isValid())
        return result;
    if (key != autoPower && key != "AutoPowerPriv" && key != autoWake && key != "AutoWakePriv")
        return result;
    ZDRLog("Trying Panther method...");
    const QString type = eventType(key);
    if (Port<PowerEventScheduler>::current()->schedule(date, owner, type) == 0) {
        ZDRLog("...OK: %@", date);
        return result;
    }
    ZDRLog("Trying pmset method...");
    if (scheduleWithPmset(date, type))
        ZDRLog("...OK !");
    return result;
}

void ZDRPowerManager::removeAutoEvents(const QString &key)
{
    initialize();
    const QString type = eventType(key);
    PowerEventScheduler &scheduler = *Port<PowerEventScheduler>::current();
    for (const auto &event : scheduler.scheduledEvents()) {
        if (event.owner == owner && !type.isNull() && event.type == type)
            scheduler.cancel(event.time, event.owner, event.type);
    }
}

bool ZDRPowerManager::autoEventsSupported()
{
    const quint32 handle = _pmuReference();
    if (handle == 0)
        return false;
    _closePMUReference(handle);
    return true;
}

quint32 ZDRPowerManager::_pmuReference()
{
    initialize();
    const auto controller = Port<PowerEventScheduler>::current()->controller();
    if (controller.failure != 0)
        ZDRLog("IOMasterPort() failed: %08lx\n", qint64(controller.failure));
    if (!controller.isThere)
        return 0;
    openReferences += ++lastReference;
    return lastReference;
}

void ZDRPowerManager::_closePMUReference(quint32 handle)
{
    initialize();
    if (!openReferences.remove(handle))
        ZDRLog("IOObjectRelease() failed: %08lx\n", qint64(EINVAL));
}

std::optional<QVariantMap> ZDRPowerManager::pmuProperties()
{
    const quint32 handle = _pmuReference();
    const auto properties =
        handle == 0 ? std::nullopt : Port<PowerEventScheduler>::current()->controllerProperties();
    _closePMUReference(handle);
    return properties;
}

QDateTime ZDRPowerManager::wakeDate()
{
    const quint64 seconds = unsignedValue(pmuProperties().value_or(QVariantMap()).value(autoWake));
    return seconds == 0 ? QDateTime() : dateAfter(Port<Clock>::current()->currentDate(), seconds);
}

void ZDRPowerManager::setWakeDate(const QDateTime &date)
{
    sharedInstance()->setAutoEventAtDate(autoWake, date);
}

void ZDRPowerManager::removeWakeDate()
{
    removeAutoEvents(autoWake);
}

QDateTime ZDRPowerManager::startupDate()
{
    const quint64 value = unsignedValue(pmuProperties().value_or(QVariantMap()).value(autoPower));
    if (value == 0)
        return {};
    const QDateTime now = Port<Clock>::current()->currentDate();
    const qint64 offset = QTimeZone::systemTimeZone().offsetFromUtc(now);
    // 2^32 less the seconds from 1904 to 2001: the sum is meant not to be reduced to 32 bits, so that the
    // date lies 2^32 seconds late. Programs that read it count on that.
    constexpr quint64 sinceReference = 1'233'815'296;
    const quint64 seconds = value - quint64(offset) + sinceReference;
    return dateAfter(QDateTime({2001, 1, 1}, {0, 0}, Qt::UTC), seconds);
}

void ZDRPowerManager::setStartupDate(const QDateTime &date)
{
    sharedInstance()->setAutoEventAtDate(autoPower, date);
}

void ZDRPowerManager::removeStartupDate()
{
    removeAutoEvents(autoPower);
}
