// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/SchedulerBus.h"

#include "DozelyKit/core/dbus/BusObject.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/bus/ScheduleDictionary.h"
#include "hosts/common/bus/ScheduleWish.h"
#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/common/plugins/ActionPlace.h"
#include "hosts/daemon/DaemonController.h"
#include "hosts/daemon/bus/SchedulerRights.h"
#include "hosts/daemon/bus/SchedulerXml.h"

#include <QUuid>

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
constexpr std::chrono::seconds betweenRereads(1);

Error noSuchSchedule(const QString &identifier)
{
    return {QString("There is no schedule %1.").arg(logLabel(identifier)), SchedulerNames::noSuchSchedule};
}

Error invalid(const QString &sentence)
{
    return {sentence, SchedulerNames::invalidSchedule};
}

/// A clause as an answer.
Error notPossible(const Error &error)
{
    QString sentence = error.text + '.';
    sentence[0] = sentence.at(0).toUpper();
    return {sentence, SchedulerNames::notPossible};
}

/// Takes "anyway" out of a wish; absent when it is no boolean.
std::optional<bool> takeAnyway(QVariantMap &wish)
{
    const QVariant anyway = wish.take("anyway");
    if (anyway.isValid() && anyway.typeId() != QMetaType::Bool)
        return {};
    return anyway.toBool();
}

/// What acts in the session of who wishes it stays there, whatever the bundle says one day.
void settlePlace(Schedule &schedule, const BusCaller &caller)
{
    if (!caller.isSystem() && schedule.owner == caller.user && !ActionPlace::isSaidBy(schedule.parameters) &&
        SchedulerRights::placeOf(schedule) == "session")
        schedule.parameters.insert(ParameterKey::actsInUserAgent, qint64(1));
}

/// Whose a schedule is of which that was not said: his who wishes it, or, where it acts as root, root's.
void settleOwner(Schedule &schedule, const BusCaller &caller)
{
    if (schedule.owner || caller.isSystem())
        return;
    schedule.owner = caller.user;
    if (SchedulerRights::placeOf(schedule) == "daemon")
        schedule.owner.reset();
}

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

void SchedulerBus::edit(const Request &request, ScheduleEdits::Wish wish, const QVariantList &values,
                        const QString &verb)
{
    wish.caller = request.caller;
    wish.alter = [this, alter = wish.alter](QList<Schedule> &schedules) {
        if (!m_controller.keeper().scheduler().hasStored(schedules))
            m_news->noteAnyChange(); // by somebody else, and not read yet
        return alter(schedules);
    };
    m_edits.perform(wish, [this, request, values, verb](const Result<ScheduleEdits::Altered> &altered) {
        if (!altered)
            return request.call.refuse(altered.error());
        const Schedule &schedule = altered->after ? *altered->after : *altered->before;
        ZDRLog("Schedule \"%@\" (%@) was %@ by user %d.", logLabel(schedule.name),
               logLabel(schedule.identifier), verb, static_cast<int>(request.caller.user));
        answer(request, values);
    });
}

void SchedulerBus::add(const Request &request)
{
    QVariantMap wish = request.arguments.value(0).toMap();
    const auto anyway = takeAnyway(wish);
    if (!anyway)
        return request.call.refuse(invalid("\"anyway\" is not a boolean."));
    auto made =
        ScheduleWish::made(QUuid::createUuid().toString(QUuid::WithoutBraces), wish, m_clock->currentDate());
    if (!made)
        return request.call.refuse(invalid(made.error().text));
    if (!wish.contains("owner"))
        settleOwner(*made, request.caller);
    settlePlace(*made, request.caller);
    const Schedule schedule = *made;
    const auto alter = [schedule](QList<Schedule> &schedules) -> Result<ScheduleEdits::Altered> {
        schedules += schedule;
        return ScheduleEdits::Altered{{}, schedule};
    };
    edit(request, {{}, alter, !*anyway}, {schedule.identifier}, "added");
}

/// Alters the schedule that the first argument names; an absent one is removed.
void SchedulerBus::alterOne(
    const Request &request, const QString &verb, bool mustBeFeasible,
    const std::function<Result<std::optional<Schedule>>(const Schedule &)> &alterSchedule)
{
    const QString identifier = request.text(0);
    const auto alter = [identifier,
                        alterSchedule](QList<Schedule> &schedules) -> Result<ScheduleEdits::Altered> {
        for (qsizetype i = 0; i < schedules.size(); ++i) {
            if (schedules.at(i).identifier != identifier)
                continue;
            ScheduleEdits::Altered altered{schedules.at(i), {}};
            const auto after = alterSchedule(*altered.before);
            if (!after)
                return after.error();
            altered.after = *after;
            if (altered.after)
                schedules[i] = *altered.after;
            else
                schedules.removeAt(i);
            return altered;
        }
        return noSuchSchedule(identifier);
    };
    edit(request, {{}, alter, mustBeFeasible}, {}, verb);
}

void SchedulerBus::change(const Request &request)
{
    QVariantMap wish = request.arguments.value(1).toMap();
    const auto anyway = takeAnyway(wish);
    const QVariant revision = wish.take("revision");
    if (!anyway)
        return request.call.refuse(invalid("\"anyway\" is not a boolean."));
    if (revision.isValid() && revision.typeId() != QMetaType::QString)
        return request.call.refuse(invalid("\"revision\" is not a text."));
    const QStringList ofAction{"bundlePath", "parameters", "actsIn", "after"};
    const bool isAction = std::any_of(ofAction.cbegin(), ofAction.cend(),
                                      [&](const QString &key) { return wish.contains(key); });
    const auto alter = [this, wish, revision,
                        request](const Schedule &schedule) -> Result<std::optional<Schedule>> {
        if (revision.isValid() && revision.toString() != ScheduleDictionary::revisionOf(schedule))
            return Error{
                QString("\"%1\" was changed by somebody else meanwhile.").arg(logLabel(schedule.name)),
                SchedulerNames::changed};
        auto changed = ScheduleWish::changed(schedule, wish, m_clock->currentDate());
        if (!changed)
            return invalid(changed.error().text);
        settlePlace(*changed, request.caller);
        return std::optional(*changed);
    };
    alterOne(request, "changed", isAction && !*anyway, alter);
}

void SchedulerBus::remove(const Request &request)
{
    alterOne(request, "removed", false,
             [](const Schedule &) -> Result<std::optional<Schedule>> { return std::optional<Schedule>(); });
}

void SchedulerBus::setEnabled(const Request &request)
{
    const bool isEnabled = request.arguments.value(1).toBool();
    alterOne(request, isEnabled ? "enabled" : "disabled", false,
             [isEnabled](Schedule schedule) -> Result<std::optional<Schedule>> {
                 schedule.isEnabled = isEnabled;
                 return std::optional(schedule);
             });
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
