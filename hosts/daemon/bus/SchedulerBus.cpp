// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/SchedulerBus.h"

#include "DozelyKit/core/dbus/BusObject.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/common/bus/ScheduleDictionary.h"
#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/daemon/DaemonController.h"
#include "hosts/daemon/bus/SchedulerRefusals.h"
#include "hosts/daemon/bus/SchedulerRights.h"
#include "hosts/daemon/bus/SchedulerXml.h"

#include <utility>

using namespace dozely;

using namespace SchedulerRefusals;

namespace
{
constexpr std::chrono::seconds betweenRereads(1);

BusObject::Place placeOnBus()
{
    // The text is of the sources: tests hold that it is whole.
    return {SchedulerNames::name, SchedulerNames::path, BusDescription::fromXml(schedulerXml).value()};
}
} // namespace

SchedulerBus::SchedulerBus(DaemonController &controller, const std::shared_ptr<Clock> &clock)
    : m_controller(controller),
      m_clock(clock),
      m_authority(*clock),
      m_edits(*clock, m_authority),
      m_answers(controller.keeper(), *clock),
      m_properties(controller.keeper().scheduler(), m_answers, controller.console(), *clock),
      m_queue(*clock, [this](const BusCaller &caller, const BusCall &call, const QVariantList &arguments) {
          return serve({caller, call, arguments, {}});
      })
{
    m_object = std::make_unique<BusObject>(
        BusConnection::Bus::System, placeOnBus(),
        BusObject::Handlers{
            .call = [this](const BusCall &call,
                           const QVariantList &arguments) { m_queue.add(*m_object->bus(), call, arguments); },
            .willRead = [this] { m_news->refresh(); },
            .opened =
                [this](BusConnection &bus) {
                    m_authority.setBus(&bus);
                    m_news->begin();
                    m_controller.keeper().restSoon();
                },
            .refused =
                [this](const QString &why) {
                    if (std::exchange(m_refusal, why) != why)
                        ZDRLog("The schedules cannot be reached as com.dozely on the system bus: %@",
                               logLabel(why));
                },
            .closed =
                [this] {
                    m_authority.setBus(nullptr);
                    m_queue.clear();
                }});
    m_news = std::make_unique<SchedulerNews>(controller, *m_object, m_answers, m_properties, *clock);
    connect(&m_edits, &ScheduleEdits::edited, this, [this](const QString &identifier) {
        m_news->noteEdit(identifier, [this] { m_controller.rereadStore(); });
    });
    connect(&m_edits, &ScheduleEdits::wentOn, &m_queue, &CallQueue::charge);
    m_object->keepThere(clock);
}

SchedulerBus::~SchedulerBus()
{
    m_authority.setBus(nullptr);
    m_news.reset(); // before what it speaks through
}

bool SchedulerBus::serve(Request request)
{
    static const QHash<QByteArray, Method> methods{
        {"List", &SchedulerBus::list},         {"Get", &SchedulerBus::get},
        {"Add", &SchedulerBus::add},           {"Change", &SchedulerBus::change},
        {"Remove", &SchedulerBus::remove},     {"SetEnabled", &SchedulerBus::setEnabled},
        {"RunNow", &SchedulerBus::runNow},     {"Skip", &SchedulerBus::skip},
        {"Postpone", &SchedulerBus::postpone}, {"Next", &SchedulerBus::next},
        {"History", &SchedulerBus::history},   {"TestWaking", &SchedulerBus::testWaking}};
    if (!learnStanding(request))
        return false;
    if (const Method method = methods.value(request.call.method()))
        (this->*method)(request);
    m_controller.keeper().restSoon(); // what an answer took a daemon that mostly sleeps would keep for days
    return true;
}

/// Whether it is known what the caller may without being asked, where that is told or decides what is.
bool SchedulerBus::learnStanding(Request &request)
{
    const QByteArray &method = request.call.method();
    const bool isOfAll = method == "History" && request.text(0).isEmpty();
    if (method != "List" && method != "Get" && !isOfAll)
        return true;
    if (const auto standing = m_authority.standing(request.caller)) {
        request.standing = *standing;
        return true;
    }
    m_authority.look(request.caller, [this, user = request.caller.user] { m_queue.resume(user); });
    return false;
}

void SchedulerBus::answer(const Request &request, const QVariantList &values) const
{
    m_object->answer(request.call, values);
}

/// One that was added to the file a moment ago is looked for, too.
std::optional<qint32> SchedulerBus::placeOf(const QString &identifier)
{
    const Scheduler &scheduler = m_controller.keeper().scheduler();
    auto place = scheduler.placeOf(identifier);
    const auto now = m_clock->steadyTime();
    if (place || (m_reread.count() >= 0 && now - m_reread < betweenRereads))
        return place;
    m_reread = now;
    m_controller.rereadStore();
    return scheduler.placeOf(identifier);
}

void SchedulerBus::list(const Request &request)
{
    // None would be another answer.
    if (const auto &why = m_controller.keeper().whyUnread())
        return request.call.refuse(ScheduleEdits::onBus(*why));
    answer(request, {QVariant(m_answers.list(request.caller, request.standing))});
}

void SchedulerBus::get(const Request &request)
{
    if (const auto place = placeOf(request.text(0)))
        answer(request, {m_answers.schedule(*place, request.caller, request.standing)});
    else
        request.call.refuse(noSuchSchedule(request.text(0)));
}

/// Who was told of an occurrence may decide about it as about his own.
QList<QByteArray> SchedulerBus::neededFor(const Request &request, const Schedule &schedule) const
{
    QList<QByteArray> needed = SchedulerRights::needed(request.caller, schedule, schedule);
    const bool isOfOccurrence = request.call.method() == "Skip" || request.call.method() == "Postpone";
    if (!needed.contains(SchedulerNames::manageAll) || !isOfOccurrence)
        return needed;
    const auto date = dateIn(request, 1);
    if (date && m_controller.wishes().isObeyed(schedule.identifier, *date, request.caller.user))
        return {SchedulerNames::manageOwn};
    return needed;
}

/// Goes on once the caller has all the rights that the schedule takes as it is then.
void SchedulerBus::withRight(const Request &request, const QSet<QByteArray> &granted,
                             const std::function<void()> &then)
{
    const auto place = placeOf(request.text(0));
    if (!place)
        return request.call.refuse(noSuchSchedule(request.text(0)));
    for (const QByteArray &action : neededFor(request, m_controller.keeper().scheduler().stored(*place))) {
        if (granted.contains(action) || granted.contains(SchedulerNames::manageAll))
            continue;
        return m_authority.ask(request.caller, action,
                               [this, request, granted, action, then](const Result<void> &allowed) {
                                   if (!allowed)
                                       return request.call.refuse(allowed.error());
                                   withRight(request, granted + QSet<QByteArray>{action}, then);
                               });
    }
    then();
}

/// A date that is an argument, or that none is named; absent, and refused, for what is no date.
std::optional<std::optional<QDateTime>> SchedulerBus::dateIn(const Request &request, qsizetype place) const
{
    const QString text = request.text(place);
    if (text.isEmpty())
        return std::optional<QDateTime>();
    if (const auto date = ScheduleDictionary::dateOf(text))
        return date;
    request.call.refuse(
        invalid(QString("It is no date such as 2026-03-14T06:55:00+01:00: %1.").arg(logLabel(text))));
    return {};
}

void SchedulerBus::runNow(const Request &request)
{
    withRight(request, {}, [this, request] {
        if (const auto asked = m_controller.runNow(request.text(0), request.caller.user); !asked)
            return request.call.refuse(notPossible(asked.error()));
        answer(request);
    });
}

void SchedulerBus::skip(const Request &request)
{
    const auto date = dateIn(request, 1);
    if (!date)
        return;
    withRight(request, {}, [this, request, date = *date] {
        const auto skipped = m_controller.skip(request.text(0), date, request.caller.user);
        if (!skipped)
            return request.call.refuse(notPossible(skipped.error()));
        m_news->noteChange(request.text(0));
        answer(request, {ScheduleDictionary::textOf(*skipped)});
    });
}

void SchedulerBus::postpone(const Request &request)
{
    const auto date = dateIn(request, 1);
    if (!date)
        return;
    const std::chrono::seconds delay(request.arguments.value(2).toUInt());
    withRight(request, {}, [this, request, date = *date, delay] {
        const auto postponed = m_controller.postpone(request.text(0), date, delay, request.caller.user);
        if (!postponed)
            return request.call.refuse(notPossible(postponed.error()));
        m_news->noteChange(request.text(0));
        answer(request, {ScheduleDictionary::textOf(*postponed)});
    });
}

void SchedulerBus::next(const Request &request)
{
    const auto from = dateIn(request, 1);
    const auto until = from ? dateIn(request, 2) : std::nullopt;
    if (!from || !until)
        return;
    std::optional<qint32> place;
    if (const QString identifier = request.text(0); !identifier.isEmpty()) {
        place = placeOf(identifier);
        if (!place)
            return request.call.refuse(noSuchSchedule(identifier));
    }
    const QVariant told = m_answers.next(place, from->value_or(m_clock->currentDate()),
                                         until->value_or(QDateTime()), request.arguments.value(3).toUInt());
    answer(request, {told});
}

void SchedulerBus::history(const Request &request)
{
    const QString identifier = request.text(0);
    const qsizetype most = request.arguments.value(1).toUInt();
    const BusCaller &caller = request.caller;
    const auto tell = [this, request, most](const std::optional<QString> &which,
                                            const std::optional<quint32> &owner) {
        const auto told = m_answers.history(which, owner, most);
        if (told)
            answer(request, {QVariant(*told)});
        else
            request.call.refuse(told.error());
    };
    if (identifier.isEmpty())
        return tell({}, request.standing.ofAll ? std::nullopt : std::optional(caller.user));
    const auto schedule = m_controller.keeper().scheduler().schedule(identifier);
    if (schedule && schedule->owner == caller.user)
        return tell(identifier, {});
    m_authority.ask(caller, SchedulerNames::manageAll,
                    [request, tell, identifier](const Result<void> &allowed) {
                        if (allowed)
                            tell(identifier, {});
                        else
                            request.call.refuse(allowed.error());
                    });
}

void SchedulerBus::testWaking(const Request &request)
{
    const std::chrono::seconds duration(request.arguments.value(0).toUInt());
    const auto tell = [this, request](const Result<WakeTrial::Finding> &finding) {
        if (finding)
            answer(request, {SchedulerAnswers::wakeTrial(*finding)});
        else
            request.call.refuse(notPossible(finding.error()));
    };
    m_authority.ask(request.caller, SchedulerNames::wake,
                    [this, request, duration, tell](const Result<void> &allowed) {
                        if (allowed)
                            m_controller.testWaking(duration, request.caller.user, tell);
                        else
                            request.call.refuse(allowed.error());
                    });
}
