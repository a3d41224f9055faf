// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/SchedulerAnswers.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/bus/ScheduleDictionary.h"
#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/common/plugins/ActionPlace.h"
#include "hosts/common/plugins/Feasibility.h"
#include "hosts/common/record/RecordedOutcomes.h"
#include "hosts/common/record/UpcomingOccurrences.h"
#include "hosts/daemon/ScheduleKeeper.h"
#include "hosts/daemon/UsersOwnBundle.h"
#include "hosts/daemon/bus/SchedulerRights.h"

#include <algorithm>

using namespace dozely;

namespace
{
using ScheduleDictionary::textOf;

const QDateTime endOfTime({9999, 12, 31}, {23, 59, 59}, Qt::UTC);

bool has(const Schedule &schedule, QLatin1StringView parameter)
{
    return schedule.parameters.value(parameter).toInt() == 1;
}

QVariantMap occurrenceOf(const Schedule &schedule, const QDateTime &date, const QDateTime &moment)
{
    return {{"identifier", schedule.identifier},
            {"name", schedule.name},
            {"date", textOf(date)},
            {"moment", textOf(moment)},
            {"isPostponed", moment != date},
            {"wakes", has(schedule, ParameterKey::needsWakeUp)},
            {"powersOn", has(schedule, ParameterKey::needsStartup)}};
}

void insertDate(QVariantMap &dictionary, const QString &key, const QDateTime &date)
{
    if (date.isValid())
        dictionary.insert(key, textOf(date));
}

QVariantMap outcomeOf(const RecordedOccurrence &occurrence, const QString &name)
{
    const RecordedOutcome &outcome = occurrence.outcome;
    QVariantMap told{{"identifier", occurrence.identifier},
                     {"date", textOf(occurrence.date)},
                     {"state", outcome.state},
                     {"isCountExact", occurrence.isCountExact}};
    if (!name.isEmpty())
        told.insert("name", name);
    insertDate(told, "first", occurrence.first);
    if (occurrence.count)
        told.insert("count", quint64(*occurrence.count));
    insertDate(told, "postponedTo", occurrence.postponedTo);
    insertDate(told, "begun", outcome.begun);
    insertDate(told, "ended", outcome.ended);
    if (outcome.lateness)
        told.insert("lateness", *outcome.lateness);
    if (outcome.exitStatus)
        told.insert("exitStatus", qint32(*outcome.exitStatus));
    if (!outcome.failure.isEmpty())
        told.insert("failure", outcome.failure);
    return told;
}

/// By which programs tell them apart; they never change.
QString nameOf(WakeTrial::Outcome outcome)
{
    switch (outcome) {
    case WakeTrial::Outcome::NoClock:
        return "no clock";
    case WakeTrial::Outcome::Dropped:
        return "dropped";
    case WakeTrial::Outcome::Kept:
        return "kept";
    case WakeTrial::Outcome::Woken:
        return "woken";
    case WakeTrial::Outcome::TooEarly:
        return "too early";
    case WakeTrial::Outcome::TooLate:
        break;
    }
    return "too late";
}
} // namespace

SchedulerAnswers::SchedulerAnswers(ScheduleKeeper &keeper, const Clock &clock)
    : m_keeper(keeper), m_clock(clock)
{
}

QVariantMap SchedulerAnswers::describe(qint32 place, const BusCaller &caller,
                                       const PolkitAuthority::Standing &standing, Places &places) const
{
    const Scheduler &scheduler = m_keeper.scheduler();
    const Schedule schedule = scheduler.stored(place);
    QVariantMap told = ScheduleDictionary::of(schedule);
    QString acts;
    if (ActionPlace::isSaidBy(schedule.parameters)) {
        acts = Feasibility::placeOf(schedule);
    } else {
        auto known = places.constFind(schedule.bundlePath);
        if (known == places.cend())
            known = places.insert(schedule.bundlePath, isUsersOwnBundle(schedule)
                                                           ? QString("session")
                                                           : Feasibility::placeOf(schedule));
        acts = *known;
    }
    told.insert("actsIn", acts.isNull() ? QString("") : acts);
    told.insert("revision", ScheduleDictionary::revisionOf(schedule));
    const bool isOwn = schedule.owner == caller.user && SchedulerRights::isOwn(schedule, caller.user);
    told.insert("mayChange", standing.ofAll || (isOwn && standing.ofOwn));
    QDateTime next;
    for (const Occurrence &occurrence : scheduler.pendingOf(place)) {
        if (!next.isValid() || occurrence.moment() < next)
            next = occurrence.moment();
    }
    insertDate(told, "next", next);
    return told;
}

QVariantList SchedulerAnswers::list(const BusCaller &caller, const PolkitAuthority::Standing &standing) const
{
    Places places;
    QVariantList all;
    for (qint32 place = 0; place < m_keeper.scheduler().schedules().size(); ++place)
        all += describe(place, caller, standing, places);
    return all;
}

QVariantMap SchedulerAnswers::schedule(qint32 place, const BusCaller &caller,
                                       const PolkitAuthority::Standing &standing) const
{
    Places places;
    return describe(place, caller, standing, places);
}

/// What the record says of dates to come, and of postponed ones.
QList<RecordedOccurrence> SchedulerAnswers::known(const Schedule &schedule) const
{
    const OccurrenceRecord &record = m_keeper.scheduler().record();
    const QString &identifier = schedule.identifier;
    QList<QDateTime> dates = record.datesBetween(identifier, m_clock.currentDate().addSecs(-1), endOfTime);
    for (const QDateTime &date : record.postponed(identifier)) {
        if (!dates.contains(date))
            dates += date;
    }
    QList<RecordedOccurrence> known;
    for (const QDateTime &date : std::as_const(dates)) {
        const auto entry = record.find(identifier, date);
        const bool isPostponed = entry && entry->state == OccurrenceState::Postponed;
        known +=
            RecordedOccurrence{identifier, date, {}, isPostponed ? entry->postponedTo : QDateTime(), {}, {}};
    }
    return known;
}

QVariantList SchedulerAnswers::next(const std::optional<qint32> &place, const QDateTime &from,
                                    const QDateTime &until, qsizetype most) const
{
    const Scheduler &scheduler = m_keeper.scheduler();
    QList<Schedule> schedules;
    QList<RecordedOccurrence> all;
    const qint32 count = place ? *place + 1 : static_cast<qint32>(scheduler.schedules().size());
    for (qint32 each = place.value_or(0); each < count; ++each) {
        schedules += scheduler.stored(each);
        all += known(schedules.constLast());
    }
    const QDateTime begin = std::max(from, m_clock.currentDate());
    UpcomingOccurrences upcoming(schedules, begin.addSecs(-1), all);
    QVariantList told;
    while (told.size() < std::min(most, mostTold)) {
        const auto occurrence = upcoming.next();
        if (!occurrence || (until.isValid() && occurrence->moment > until))
            break;
        if (occurrence->moment >= begin)
            told += occurrenceOf(schedules.at(occurrence->schedule), occurrence->date, occurrence->moment);
    }
    return told;
}

Result<QVariantList> SchedulerAnswers::history(const std::optional<QString> &identifier,
                                               const std::optional<quint32> &owner, qsizetype most) const
{
    m_keeper.flush();
    const auto outcomes = RecordedOutcomes::open();
    const auto failed = [](const Error &error) {
        return Error{QString("What became of it cannot be told: %1.").arg(error.text),
                     SchedulerNames::notPossible};
    };
    if (!outcomes)
        return failed(outcomes.error());
    QHash<QString, QString> names;
    QList<std::optional<QString>> wanted;
    for (const Schedule &schedule : m_keeper.scheduler().schedules()) {
        names.insert(schedule.identifier, schedule.name);
        if (!identifier && owner && schedule.owner == owner)
            wanted += schedule.identifier;
    }
    if (identifier || !owner)
        wanted += identifier;
    most = std::min(most, mostTold);
    QList<RecordedOccurrence> found;
    for (const auto &one : std::as_const(wanted)) {
        const auto latest = outcomes->latest(one, most);
        if (!latest)
            return failed(latest.error());
        found += *latest;
    }
    std::stable_sort(
        found.begin(), found.end(),
        [](const RecordedOccurrence &a, const RecordedOccurrence &b) { return a.date > b.date; });
    QVariantList told;
    for (const RecordedOccurrence &occurrence : found.mid(0, most))
        told += outcomeOf(occurrence, names.value(occurrence.identifier));
    return told;
}

QVariantMap SchedulerAnswers::occurrence(const Occurrence &occurrence) const
{
    return occurrenceOf(occurrence.schedule, occurrence.date, occurrence.moment());
}

QVariantMap SchedulerAnswers::outcomeForAll(const OccurrenceRecord::Key &key) const
{
    const auto entry = m_keeper.scheduler().record().find(key.first, key.second);
    if (!entry || !entry->isOver())
        return {};
    const auto place = m_keeper.scheduler().placeOf(key.first);
    RecordedOccurrence occurrence{key.first, key.second, {}, {}, {}, {}};
    occurrence.outcome = {
        OccurrenceRecord::nameOf(entry->state), entry->begun, entry->lateness, {}, entry->ended};
    if (entry->run) {
        occurrence.first = entry->run->first;
        occurrence.count = entry->run->count;
        occurrence.isCountExact = entry->run->isCountExact;
    }
    return outcomeOf(occurrence, place ? m_keeper.scheduler().schedules().at(*place).name : QString());
}

QVariantMap SchedulerAnswers::wakeTrial(const WakeTrial::Finding &finding)
{
    QVariantMap told{{"outcome", nameOf(finding.outcome)}, {"sentence", finding.sentence}};
    insertDate(told, "planned", finding.planned);
    insertDate(told, "back", finding.back);
    return told;
}
