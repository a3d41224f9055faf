// SPDX-License-Identifier: MIT
#include "hosts/common/bus/ScheduleWish.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/bus/ScheduleDictionary.h"
#include "hosts/common/bus/WishedRecurrence.h"
#include "hosts/common/calendar/OccurrenceSeries.h"

#include <QDir>

#include <algorithm>
#include <limits>

using namespace dozely;

namespace
{
const QStringList knownKeys{"name",     "isEnabled",   "bundlePath", "parameters",    "date",
                            "timeZone", "actsIn",      "owner",      "staysWhenOver", "repeats",
                            "missed",   "missedLimit", "overlap",    "after"};

/// The values of a property list for what came from the bus, with numbers as wide as those of the store. A
/// text that is how a date of the former value travels is that date. Invalid for what no list can hold.
QVariant storable(const QVariant &value, const QVariant &former, int left)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Double:
    case QMetaType::QByteArray:
        return value;
    case QMetaType::QString: {
        const bool wasDate = former.typeId() == QMetaType::QDateTime;
        return wasDate && ScheduleDictionary::textOf(former.toDateTime()) == value.toString() ? former
                                                                                              : value;
    }
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return value.toLongLong();
    case QMetaType::ULongLong:
        return value.toULongLong() > quint64(std::numeric_limits<qint64>::max()) ? value : value.toLongLong();
    case QMetaType::QVariantMap: {
        QVariantMap map = value.toMap();
        const QVariantMap before = former.toMap();
        for (auto each = map.begin(); each != map.end(); ++each) {
            *each = left > 0 ? storable(*each, before.value(each.key()), left - 1) : QVariant();
            if (!each->isValid())
                return {};
        }
        return map;
    }
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        QVariantList list = value.toList();
        const QVariantList before =
            former.typeId() == QMetaType::QVariantList ? former.toList() : QVariantList();
        for (qsizetype i = 0; i < list.size(); ++i) {
            list[i] = left > 0 ? storable(list.at(i), before.value(i), left - 1) : QVariant();
            if (!list.at(i).isValid())
                return {};
        }
        return list;
    }
    default:
        return {};
    }
}

/// Puts what a wish names into a schedule, and collects the first fault.
class Applier
{
public:
    Applier(Schedule &schedule, const QVariantMap &wish, const QDateTime &now)
        : m_schedule(schedule), m_wish(wish), m_now(now)
    {
    }

    /// A sentence; empty when all is well.
    QString apply()
    {
        for (auto key = m_wish.cbegin(); key != m_wish.cend(); ++key) {
            if (!knownKeys.contains(key.key()))
                complain(QString("A schedule has no \"%1\" that could be set.").arg(logLabel(key.key())));
        }
        applyName();
        applyPlain();
        applyBundle();
        applyParameters();
        applyTime();
        applyPolicies();
        return m_fault;
    }

private:
    void complain(const QString &fault)
    {
        if (m_fault.isEmpty())
            m_fault = fault;
    }

    /// The value of a key; absent when it is not named, or is of another type, which is a fault.
    template<class Value>
    std::optional<Value> get(const QString &key, const char *typeName)
    {
        const auto found = m_wish.constFind(key);
        if (found == m_wish.cend())
            return {};
        if (found->metaType() == QMetaType::fromType<Value>())
            return found->value<Value>();
        complain(QString("\"%1\" is not %2.").arg(key, typeName));
        return {};
    }

    std::optional<QString> text(const QString &key) { return get<QString>(key, "a text"); }

    void applyName()
    {
        if (const auto name = text("name"))
            m_schedule.name = *name;
        const QString &name = m_schedule.name;
        if (name.trimmed().isEmpty())
            complain("A schedule needs a name.");
        else if (name.size() > ScheduleWish::longestName)
            complain(QString("The name has more than %1 characters.").arg(ScheduleWish::longestName));
        else if (logLabel(name, wholeText) != name)
            complain("The name holds control characters.");
    }

    void applyPlain()
    {
        m_schedule.isEnabled = get<bool>("isEnabled", "a boolean").value_or(m_schedule.isEnabled);
        m_schedule.staysWhenOver = get<bool>("staysWhenOver", "a boolean").value_or(m_schedule.staysWhenOver);
        if (m_wish.value("owner") == QVariant(QString())) // nobody's, which is root's
            m_schedule.owner.reset();
        else if (const auto owner = get<quint32>("owner", "a user id, an unsigned number of 32 bits"))
            m_schedule.owner = *owner;
    }

    void applyBundle()
    {
        if (const auto path = text("bundlePath"))
            m_schedule.bundlePath = *path;
        const QString &path = m_schedule.bundlePath;
        if (!path.startsWith('/') || path.size() == 1 || QDir::cleanPath(path) != path)
            complain("\"bundlePath\" is not the absolute path of a bundle.");
    }

    void applyParameters()
    {
        if (const auto parameters = get<QVariantMap>("parameters", "a dictionary")) {
            const QVariant kept =
                storable(*parameters, m_schedule.parameters, PropertyList::maximumDepth - 4);
            if (!kept.isValid())
                complain("\"parameters\" hold something that no schedule can keep.");
            m_schedule.parameters = kept.toMap();
        }
        const auto place = text("actsIn");
        if (!place)
            return;
        if (*place == "session" || *place == "daemon")
            m_schedule.parameters.insert(ParameterKey::actsInUserAgent, qint64(*place == "session" ? 1 : 0));
        else if (place->isEmpty())
            m_schedule.parameters.remove(ParameterKey::actsInUserAgent);
        else
            complain("\"actsIn\" is \"session\", \"daemon\" or empty.");
    }

    std::optional<QDateTime> date()
    {
        const auto said = text("date");
        if (!said || said->isEmpty())
            return {};
        auto date = ScheduleDictionary::dateOf(*said);
        if (!date)
            complain(
                QString("\"date\" is no date such as 2026-03-14T06:55:00+01:00: %1.").arg(logLabel(*said)));
        return date;
    }

    void applyZone()
    {
        const auto zone = text("timeZone");
        if (!zone)
            return;
        if (!zone->isEmpty() && !isTimeZoneName(*zone))
            return complain(QString("There is no time zone \"%1\".").arg(logLabel(*zone)));
        m_schedule.timeZone = *zone;
    }

    void applyTime()
    {
        const auto from = date();
        const auto repeats = get<QVariantMap>("repeats", "a dictionary");
        const QString formerZone = m_schedule.timeZone;
        applyZone();
        if (!m_fault.isEmpty())
            return; // nothing can be said of a time in a zone that there is not
        const QDateTime notBefore = from ? std::max(*from, m_now) : m_now;
        const bool isOtherZone = m_schedule.timeZone != formerZone;
        const bool didRepeat = m_schedule.recurrence.has_value();
        Result<void> applied;
        if (repeats && !repeats->isEmpty())
            applied = WishedRecurrence::apply(*repeats, notBefore, m_schedule);
        if (applied && m_schedule.recurrence && (!repeats || !repeats->isEmpty())) {
            if (isOtherZone && didRepeat)
                applied = WishedRecurrence::beginAnew(notBefore, m_schedule);
            if (!applied)
                complain(applied.error().text);
            return;
        }
        if (!applied)
            return complain(applied.error().text);
        applyOnce(from, repeats && didRepeat);
    }

    /// It takes place once, or from now on once.
    void applyOnce(const std::optional<QDateTime> &date, bool didRepeat)
    {
        if (didRepeat && !date) { // the next one is the one that is left
            const auto series = OccurrenceSeries::of(*m_schedule.recurrence, m_schedule.zone());
            const auto next = series ? series->after(m_now) : std::nullopt;
            if (!next)
                return complain("It is over: say \"date\", too.");
            m_schedule.date = *next;
        }
        if (m_schedule.timeZone.isEmpty() &&
            (didRepeat || !m_schedule.date.isValid() || m_wish.contains("timeZone")))
            m_schedule.timeZone = QString::fromUtf8(machineTimeZone().id());
        if (didRepeat)
            (void)WishedRecurrence::apply({}, m_now, m_schedule);
        if (date && *date != m_schedule.date && *date < m_now)
            return complain("\"date\" is past.");
        if (date)
            m_schedule.date = *date;
        if (!m_schedule.date.isValid())
            complain("Say when, by \"date\", or how often, by \"repeats\".");
    }

    template<class Policy>
    void applyPolicy(const QString &key, std::optional<Policy> (*named)(const QString &),
                     std::optional<Policy> &policy)
    {
        const auto name = text(key);
        if (!name)
            return;
        policy = named(*name);
        if (!policy && !name->isEmpty())
            complain(QString("\"%1\" is none of those that there are: \"%2\".").arg(key, logLabel(*name)));
    }

    void applyPolicies()
    {
        constexpr quint64 longestLimit = 100ULL * 366 * 24 * 3600; // a hundred years
        applyPolicy("missed", SchedulePolicies::missedPolicyNamed, m_schedule.missedPolicy);
        applyPolicy("overlap", SchedulePolicies::overlapPolicyNamed, m_schedule.overlapPolicy);
        applyPolicy("after", SchedulePolicies::afterActionNamed, m_schedule.afterAction);
        if (m_wish.contains("missed") && m_schedule.missedPolicy != MissedPolicy::RunOnce)
            m_schedule.missedLimit.reset();
        const auto limit = get<quint64>("missedLimit", "an unsigned number of 64 bits");
        if (limit && (*limit > longestLimit || m_schedule.missedPolicy != MissedPolicy::RunOnce))
            complain("\"missedLimit\" is a number of seconds, and is of what is \"run once\".");
        else if (limit)
            m_schedule.missedLimit = std::chrono::seconds(*limit);
        if (m_wish.contains("overlap") && m_schedule.overlapPolicy && !m_schedule.recurrence)
            complain("\"overlap\" is of what repeats.");
    }

    Schedule &m_schedule;
    const QVariantMap &m_wish;
    const QDateTime &m_now;
    QString m_fault;
};

QByteArray bytesOf(const Schedule &schedule)
{
    return PropertyList::toData(schedule.toEntry(), PropertyList::Format::Xml);
}

/// Whether the store gives back what it is given.
Result<void> check(const Schedule &schedule)
{
    const QByteArray bytes = bytesOf(schedule);
    if (bytes.isNull() || PropertyList::toData(schedule.toEntry(), PropertyList::Format::Binary).isNull())
        return Error{"It holds something that no schedule can keep."};
    if (bytes.size() > ScheduleWish::largestEntry)
        return Error{
            QString("It is too large: a schedule has at most %1 bytes.").arg(ScheduleWish::largestEntry)};
    const auto read = PropertyList::fromData(bytes);
    const auto again = read ? Schedule::fromEntry(*read) : read.error();
    if (!again)
        return Error{QString("It is no schedule: %1.").arg(again.error().text)};
    if (bytesOf(*again) != bytes)
        return Error{"It holds something that no schedule keeps as it is."};
    return {};
}

Result<Schedule> with(Schedule schedule, const QVariantMap &wish, const QDateTime &now)
{
    if (const QString fault = Applier(schedule, wish, now).apply(); !fault.isEmpty())
        return Error{fault};
    if (const auto kept = check(schedule); !kept)
        return kept.error();
    return schedule;
}
} // namespace

Result<Schedule> ScheduleWish::made(const QString &identifier, const QVariantMap &wish, const QDateTime &now)
{
    Schedule schedule;
    schedule.identifier = identifier;
    return with(std::move(schedule), wish, now);
}

Result<Schedule> ScheduleWish::changed(const Schedule &schedule, const QVariantMap &wish,
                                       const QDateTime &now)
{
    return with(schedule, wish, now);
}

std::optional<qsizetype> ScheduleWish::sizeOf(const Schedule &schedule)
{
    const QByteArray bytes = bytesOf(schedule);
    return bytes.isNull() ? std::nullopt : std::optional(bytes.size());
}
