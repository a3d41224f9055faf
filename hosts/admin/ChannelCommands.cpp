// SPDX-License-Identifier: MIT
#include "hosts/admin/ChannelCommands.h"

#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/Door.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/OccurrenceOptions.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/ScheduleAnswer.h"
#include "hosts/admin/StoreCommands.h"
#include "hosts/common/calendar/DateWords.h"
#include "hosts/common/calendar/FriendlyTerms.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/common/orders/OrderPermissions.h"
#include "hosts/common/orders/OrderRefusal.h"
#include "hosts/common/program/HostRootObject.h"

#include <QFile>

using namespace dozely;

namespace
{
/// The communication centre for one request. Made when the process is no longer root.
class Channel
{
public:
    Channel() { m_center->setObserver(&m_rootObject); }
    ~Channel() { m_center->setObserver(nullptr); }
    Channel(const Channel &) = delete;
    Channel &operator=(const Channel &) = delete;

    WDCommunicationCenter &center() { return *m_center; }

private:
    HostRootObject m_rootObject;
    std::shared_ptr<WDCommunicationCenter> m_center = WDCommunicationCenter::sharedInstance();
};

bool mayOrder(const Schedule &schedule)
{
    return OrderPermissions::mayRunNow(NSProcessInfo::effectiveUserID(), RootFolder::owner(), schedule.owner);
}

/// Becomes somebody whom the daemon lets run the schedule.
void becomeOneWhoMayRun(const Schedule &schedule)
{
    const quint32 user = NSProcessInfo::effectiveUserID();
    if (!mayOrder(schedule)) {
        throw AdminError(ExitStatus::NotPermitted,
                         AdminText::tr("\"%1\" is not your schedule; try it as root.").arg(schedule.name));
    }
    if (user != 0)
        return;
    if (schedule.owner.value_or(0) != 0)
        Identity::giveUpRoot(*schedule.owner);
    else
        Identity::touchChannelWithoutRoot();
}

/// Posts an order; false when the daemon did not take it. Raises AdminError when the daemon refuses.
bool postToDaemonThatMayRefuse(WDCommunicationCenter &center, const NSNotification &order)
{
    std::optional<AdminError> refused;
    const bool isTaken = GuardedPosting::guardDaemon([&] {
        try {
            return center.postNotificationToDaemon(order);
        } catch (const NSException &exception) {
            const auto kind = OrderRefusal::kindOf(exception);
            if (!kind)
                throw;
            center.unlockDaemonAccess();
            const bool isPermitted = *kind != OrderRefusal::Kind::NotPermitted;
            refused.emplace(
                isPermitted ? ExitStatus::Failed : ExitStatus::NotPermitted,
                AdminText::tr("The daemon refuses: %1.").arg(AdminText::reason(exception.reason())));
            return false;
        }
    });
    if (refused)
        throw *refused;
    return isTaken;
}

/// Takes away the socket file of this process's reply port, which a request to an agent makes and which
/// outlives the process: a tool that comes and goes would fill the folder.
void removeReplySocket()
{
    constexpr int headerSize = 2; // bytes before the path in the address record
    if (const auto port = ZDRUnixSocketPort::port())
        QFile::remove(QFile::decodeName(port->address().mid(headerSize).constData()));
}

/// Gives the daemon an order that it answers once it has obeyed, in the name of somebody whom it obeys.
void order(const QLatin1StringView &name, const Schedule &schedule, const QVariantMap &details)
{
    becomeOneWhoMayRun(schedule);
    Channel channel;
    QVariantMap userInfo = details;
    userInfo.insert(OrderKey::scheduleIdentifier, schedule.identifier);
    if (!postToDaemonThatMayRefuse(channel.center(), NSNotification(name, OrderSender::admin, userInfo)))
        throw AdminError(ExitStatus::Failed, AdminText::tr("The daemon does not answer."));
}

/// The same for one occurrence of a schedule. The answer is the sentence, with the schedule's name and the
/// date.
void orderOccurrence(const AdminOptions &options, const QLatin1StringView &name, QVariantMap details,
                     const QString &sentence)
{
    const Schedule schedule = StoreCommands::find(options.argument(0));
    const auto date = OccurrenceOptions::read(options, schedule, DateTerms::Towards::ToCome);
    if (date)
        details.insert(OrderKey::date, *date);
    if (mayOrder(schedule) || !Door::isThere())
        order(name, schedule, details);
    else if (name == OrderName::daemonMustSkip)
        Door::skip(schedule.identifier, date);
    else
        Door::postpone(schedule.identifier, date,
                       std::chrono::seconds(details.value(OrderKey::delay).toLongLong()));
    if (options.isSet("json")) {
        Output::json({{"identifier", schedule.identifier},
                      {"date", date ? QVariant(*date) : QVariant()},
                      {"received", true}});
        return;
    }
    const QString which = date ? ScheduleAnswer::inWords(*date, schedule) : AdminText::tr("its next time");
    Output::line(Output::escaped(sentence.arg(schedule.name, which)));
}

quint32 pingedUser(const AdminOptions &options)
{
    const QString name = options.argument(1);
    if (name.isNull())
        return Identity::caller();
    const auto user = Identity::userNamed(name);
    if (!user)
        throw AdminError(ExitStatus::Failed, AdminText::tr("There is no user \"%1\".").arg(name));
    return *user;
}
} // namespace

namespace
{
QString answerOf(const QString &target, quint32 user)
{
    if (target == "daemon")
        return AdminText::tr("The daemon is alive.");
    return (target == "agent" ? AdminText::tr("The agent of %1 is alive.")
                              : AdminText::tr("The application of %1 is alive."))
        .arg(Identity::nameOf(user));
}

QString silenceOf(const QString &target, quint32 user)
{
    if (target == "daemon")
        return AdminText::tr("The daemon does not answer.");
    return (target == "agent" ? AdminText::tr("The agent of %1 does not answer.")
                              : AdminText::tr("The application of %1 does not answer."))
        .arg(Identity::nameOf(user));
}
} // namespace

void ChannelCommands::ping(const AdminOptions &options)
{
    const QString target = options.argument(0);
    const bool isDaemon = target == "daemon";
    if (!isDaemon && target != "agent" && target != "application")
        throw AdminError(ExitStatus::BadUsage,
                         AdminText::tr("\"%1\" is not daemon, agent or application.").arg(target));
    if (isDaemon && !options.argument(1).isNull())
        throw AdminError(ExitStatus::BadUsage, AdminText::tr("There is one daemon for all users."));
    const quint32 user = isDaemon ? 0 : pingedUser(options);
    Identity::giveUpRoot();
    Channel channel;
    const bool answered = isDaemon            ? channel.center().pingDaemon()
                          : target == "agent" ? channel.center().pingAgentOfUser(user)
                                              : channel.center().pingPrefPaneOfUser(user);
    if (answered && target == "agent")
        removeReplySocket();
    if (options.isSet("json")) {
        QVariantMap answer{{"target", target}, {"answered", answered}};
        if (!isDaemon)
            answer.insert("user", user);
        Output::json(answer);
    } else if (answered) {
        Output::line(answerOf(target, user));
    }
    if (!answered)
        throw AdminError(ExitStatus::Failed, silenceOf(target, user));
}

void ChannelCommands::run(const AdminOptions &options)
{
    const Schedule schedule = StoreCommands::find(options.argument(0));
    order(OrderName::daemonMustRunNow, schedule, {});
    if (options.isSet("json"))
        Output::json({{"identifier", schedule.identifier}, {"received", true}});
    else
        Output::line(Output::escaped(
            AdminText::tr("The daemon was asked to perform \"%1\"; the log tells how it went.")
                .arg(schedule.name)));
}

void ChannelCommands::skip(const AdminOptions &options)
{
    orderOccurrence(options, OrderName::daemonMustSkip, {}, AdminText::tr("\"%1\" is left out: %2."));
}

void ChannelCommands::postpone(const AdminOptions &options)
{
    const auto delay = FriendlyTerms::duration(options.argument(1));
    if (!delay || delay->count() < 1) {
        throw AdminError(ExitStatus::BadUsage,
                         AdminText::tr("\"%1\" is no time to postpone it by, such as 90, 10m or 1h.")
                             .arg(options.argument(1)));
    }
    orderOccurrence(options, OrderName::daemonMustPostpone,
                    {{OrderKey::delay, static_cast<qint64>(delay->count())}},
                    AdminText::tr("\"%2\" is postponed by %1: %3.").arg(DateWords::of(*delay)));
}
