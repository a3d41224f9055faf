// SPDX-License-Identifier: MIT
#include "hosts/admin/EventCommand.h"

#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/StringFormat.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/ParameterOptions.h"
#include "hosts/common/events/EventRequest.h"
#include "hosts/common/events/EventValue.h"

using namespace dozely;

namespace
{
constexpr qint64 ticksPerSecond = 60;

OSType codeArgument(const AdminOptions &options, int index, const QString &what)
{
    const auto code = EventValue::codeOf(options.argument(index), what);
    if (!code)
        throw AdminError(ExitStatus::BadUsage, AdminText::sentence(AdminText::reason(code.error())));
    return *code;
}

quint32 receivingUser(const AdminOptions &options)
{
    if (!options.isSet("user"))
        return Identity::caller();
    const auto user = Identity::userNamed(options.value("user"));
    if (!user)
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("There is no user \"%1\".").arg(options.value("user")));
    return *user;
}

qint64 ticksOption(const AdminOptions &options)
{
    if (!options.isSet("timeout"))
        return kAEDefaultTimeout;
    bool isNumber = false;
    const uint seconds = options.value("timeout").toUInt(&isNumber);
    if (!isNumber || seconds == 0)
        throw AdminError(ExitStatus::BadUsage,
                         AdminText::tr("--timeout needs a whole number of seconds, not \"%1\".")
                             .arg(options.value("timeout")));
    return seconds * ticksPerSecond;
}

EventRequest requestOf(const AdminOptions &options)
{
    EventRequest request;
    request.signature = codeArgument(options, 0, "signature");
    request.eventClass = codeArgument(options, 1, "event class");
    request.eventID = codeArgument(options, 2, "event ID");
    const auto parameters = EventValue::toDescriptor(ParameterOptions::read(options));
    if (!parameters)
        throw AdminError(ExitStatus::BadUsage, AdminText::sentence(AdminText::reason(parameters.error())));
    request.parameters = *parameters;
    request.wantsReply = !options.isSet("no-reply");
    request.timeOutInTicks = ticksOption(options);
    request.user = receivingUser(options);
    return request;
}

void printReply(const AppleEvent &reply)
{
    QList<QStringList> rows;
    for (qsizetype i = 0; i < reply.count(); ++i) {
        const AEDesc value = reply.at(i);
        rows += {EventValue::textOfCode(reply.keywordAt(i)), EventValue::textOfCode(value.descriptorType()),
                 descriptionOf(EventValue::fromDescriptor(value))};
    }
    if (!rows.isEmpty())
        Output::table({AdminText::tr("KEYWORD"), AdminText::tr("TYPE"), AdminText::tr("VALUE")}, rows);
}

[[noreturn]] void fail(const EventRequest &request, const EventRequest::Outcome &outcome)
{
    const QString sentence =
        outcome.process == 0
            ? AdminText::tr("No process of %1 has the signature \"%2\".")
                  .arg(Identity::nameOf(request.user), EventValue::textOfCode(request.signature))
            : eventFailure(outcome.status);
    throw AdminError(outcome.status == errAEPrivilegeError ? ExitStatus::NotPermitted : ExitStatus::Failed,
                     QString("%1 (%2)").arg(sentence).arg(outcome.status));
}
} // namespace

void EventCommand::run(const AdminOptions &options)
{
    const EventRequest request = requestOf(options);
    if (request.user != 0 && NSProcessInfo::effectiveUserID() == 0)
        Identity::giveUpRoot(request.user);
    const auto outcome = request.send();
    if (outcome.status != noErr)
        fail(request, outcome);
    if (options.isSet("json"))
        Output::json(
            {{"process", outcome.process},
             {"reply", request.wantsReply ? EventValue::fromDescriptor(outcome.reply) : QVariant()}});
    else if (!request.wantsReply)
        Output::line(AdminText::tr("Process %1 has the event.").arg(outcome.process));
    else if (outcome.reply.count() == 0)
        Output::line(AdminText::tr("Process %1 has handled the event.").arg(outcome.process));
    else
        printReply(outcome.reply);
}
