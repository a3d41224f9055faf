// SPDX-License-Identifier: MIT
#include "hosts/common/events/EventScriptFunction.h"

#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/system/scripting/AppleScriptExtensions.h"
#include "DozelyKit/system/scripting/NSAppleScript.h"
#include "hosts/common/events/EventRequest.h"
#include "hosts/common/events/EventValue.h"

#include <cmath>

namespace
{
constexpr double usualSeconds = 30;
constexpr double mostSeconds = 30;    // a script has a minute in all
constexpr double handOverSeconds = 2; // without a reply: until the receiver takes the event
constexpr int ticksPerSecond = 60;

[[noreturn]] void refuse(const QString &sentence)
{
    throw NSException(NSInvalidArgumentException, sentence);
}

OSType codeArgument(const QVariantList &arguments, int index, const QString &what)
{
    const auto code = EventValue::codeOf(arguments.value(index).toString(), what);
    if (arguments.value(index).typeId() != QMetaType::QString || !code)
        refuse(QString("the %1 has to be a text of four characters").arg(what));
    return *code;
}

/// Nothing and an empty table, which could be a list as well, are no parameters.
AEDesc parametersArgument(const QVariant &value)
{
    if (!value.isValid() || (value.typeId() == QMetaType::QVariantList && value.toList().isEmpty()))
        return AEDesc(typeAERecord);
    if (value.typeId() != QMetaType::QVariantMap)
        refuse("the parameters have to be a table with keywords of four characters");
    const auto parameters = EventValue::toDescriptor(value);
    if (!parameters)
        refuse(parameters.error().text + '.');
    return *parameters;
}

double secondsArgument(const QVariant &value)
{
    if (!value.isValid())
        return usualSeconds;
    const bool isNumber = value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Double;
    const double seconds = value.toDouble();
    if (!isNumber || !(seconds >= 0 && seconds <= mostSeconds))
        refuse("the seconds have to be a number from 0 to 30");
    return seconds;
}

/// sendEvent(signature, class, id [, parameters [, seconds]]): the parameters of the reply; with 0 seconds
/// none is waited for, only for a busy receiver to take the event.
QVariant sendEvent(const QVariantList &arguments)
{
    EventRequest request;
    request.signature = codeArgument(arguments, 0, "signature");
    request.eventClass = codeArgument(arguments, 1, "event class");
    request.eventID = codeArgument(arguments, 2, "event ID");
    request.parameters = parametersArgument(arguments.value(3));
    request.user = NSProcessInfo::effectiveUserID();
    const double seconds = secondsArgument(arguments.value(4));
    request.wantsReply = seconds > 0;
    request.timeOutInTicks =
        static_cast<qint64>(std::ceil((request.wantsReply ? seconds : handOverSeconds) * ticksPerSecond));
    const auto outcome = request.send();
    if (outcome.status != noErr)
        refuse(QString("%1 (%2)").arg(eventFailure(outcome.status)).arg(outcome.status));
    return request.wantsReply ? EventValue::fromDescriptor(outcome.reply) : QVariant();
}
} // namespace

void EventScriptFunction::registerFunction()
{
    zandorSoftwaresExtensions::registerScriptFunctions(); // first: it is done once, and would be put over
                                                          // ours
    NSAppleScript::registerFunction("sendEvent", sendEvent);
}
