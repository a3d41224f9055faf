// SPDX-License-Identifier: MIT
#include "hosts/common/schedules/Schedule.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "DozelyKit/core/log/LogLabel.h"

#include <QDir>
#include <QSet>

#include <algorithm>

using namespace dozely;

namespace
{
using namespace Qt::StringLiterals;

const QSet<QString> knownKeys{
    "Identifier",    "Name",         "Is Enabled",     "Bundle Path",     "Parameters",
    "Date",          "Time Zone",    "Owner",          "Stays When Over", "Recurrence Rule",
    "Missed Policy", "Missed Limit", "Overlap Policy", "After Action"};

constexpr qint64 longestMissedLimit = 100LL * 366 * 24 * 3600; // seconds, a hundred years

/// Those that both forms of a property list know.
constexpr int firstYear = 1;
constexpr int lastYear = 9999;

/// Collects the first fault of an entry.
class EntryReader
{
public:
    explicit EntryReader(const QVariantMap &entry) : m_entry(entry) {}

    template<class Value>
    Value required(const QString &key, const char *typeName)
    {
        const auto found = m_entry.constFind(key);
        if (found != m_entry.cend())
            return checked<Value>(key, *found, typeName);
        complain(QString("\"%1\" is missing").arg(key));
        return {};
    }

    template<class Value>
    Value optional(const QString &key, const char *typeName)
    {
        const auto found = m_entry.constFind(key);
        return found != m_entry.cend() ? checked<Value>(key, *found, typeName) : Value();
    }

    void complain(const QString &fault)
    {
        if (m_fault.isEmpty())
            m_fault = fault;
    }
    QString fault() const { return m_fault; }

private:
    template<class Value>
    Value checked(const QString &key, const QVariant &value, const char *typeName)
    {
        if (value.isValid() && value.metaType() != QMetaType::fromType<Value>())
            complain(QString("\"%1\" is not %2").arg(key, typeName));
        return value.value<Value>();
    }

    const QVariantMap &m_entry;
    QString m_fault;
};

bool isInteger(const QVariant &value)
{
    const int type = value.typeId();
    return type == QMetaType::LongLong || type == QMetaType::ULongLong || type == QMetaType::Int ||
           type == QMetaType::UInt;
}

std::optional<quint32> readOwner(const QVariantMap &entry, EntryReader &reader)
{
    constexpr qint64 nobodyAtAll = 0xffffffff; // the id that the system calls take for "no change"
    const QVariant value = entry.value(u"Owner"_s);
    if (!value.isValid())
        return {};
    const qint64 owner = isInteger(value) ? value.toLongLong() : -1;
    if (owner >= 0 && owner < nobodyAtAll)
        return static_cast<quint32>(owner);
    reader.complain("\"Owner\" is not a user id");
    return {};
}

SharedRecurrence readRecurrence(const QVariantMap &entry, EntryReader &reader)
{
    const QVariant value = entry.value(u"Recurrence Rule"_s);
    if (!value.isValid())
        return {};
    auto recurrence = Recurrence::fromDictionary(value);
    if (recurrence)
        return *std::move(recurrence);
    reader.complain(recurrence.error().text);
    return {};
}

/// One of the names that `valueNamed` knows.
template<class Value>
std::optional<Value> readName(const QString &key, std::optional<Value> (*valueNamed)(const QString &),
                              const QVariantMap &entry, EntryReader &reader)
{
    if (!entry.contains(key))
        return {};
    const auto value = valueNamed(reader.optional<QString>(key, "a string"));
    if (!value)
        reader.complain(QString("\"%1\" is none of those that there are: \"%2\"")
                            .arg(key, logLabel(entry.value(key).toString())));
    return value;
}

std::optional<std::chrono::seconds> readMissedLimit(const QVariantMap &entry, EntryReader &reader)
{
    const QVariant value = entry.value(u"Missed Limit"_s);
    if (!value.isValid())
        return {};
    const qint64 seconds = isInteger(value) ? value.toLongLong() : -1;
    if (seconds >= 0 && seconds <= longestMissedLimit)
        return std::chrono::seconds(seconds);
    reader.complain("\"Missed Limit\" is not a number of seconds");
    return {};
}

void readPolicies(Schedule &schedule, const QVariantMap &entry, EntryReader &reader)
{
    using namespace SchedulePolicies;
    schedule.missedPolicy = readName(u"Missed Policy"_s, missedPolicyNamed, entry, reader);
    schedule.missedLimit = readMissedLimit(entry, reader);
    schedule.overlapPolicy = readName(u"Overlap Policy"_s, overlapPolicyNamed, entry, reader);
    schedule.afterAction = readName(u"After Action"_s, afterActionNamed, entry, reader);
}

void insertPolicies(QVariantMap &entry, const Schedule &schedule)
{
    using namespace SchedulePolicies;
    if (schedule.missedPolicy)
        entry.insert("Missed Policy", nameOf(*schedule.missedPolicy));
    if (schedule.missedLimit)
        entry.insert("Missed Limit", static_cast<qint64>(schedule.missedLimit->count()));
    if (schedule.overlapPolicy)
        entry.insert("Overlap Policy", nameOf(*schedule.overlapPolicy));
    if (schedule.afterAction)
        entry.insert("After Action", nameOf(*schedule.afterAction));
}

/// Occurrences are told apart by whole seconds, which every format of property list keeps. Never early.
QDateTime roundedUp(const QDateTime &date)
{
    const qint64 milliseconds = date.toMSecsSinceEpoch();
    const qint64 over = ((milliseconds % 1000) + 1000) % 1000;
    return QDateTime::fromMSecsSinceEpoch(over ? milliseconds + 1000 - over : milliseconds, Qt::UTC);
}

/// Whether a date that cannot be read stands anywhere in `value`. Its depth is that of a property list.
bool holdsDamage(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<PropertyList::DamagedDate>())
        return true;
    if (value.typeId() == QMetaType::QVariantMap) {
        const QVariantMap map = value.toMap();
        return std::any_of(map.cbegin(), map.cend(), holdsDamage);
    }
    const QVariantList list = value.typeId() == QMetaType::QVariantList ? value.toList() : QVariantList();
    return std::any_of(list.cbegin(), list.cend(), holdsDamage);
}

bool isCleanFixedPath(const QString &path)
{
    return path.startsWith('/') && path.size() > 1 && !path.contains(QChar(0)) &&
           QDir::cleanPath(path) == path;
}
} // namespace

Result<Schedule> Schedule::fromEntry(const QVariant &entry)
{
    if (entry.typeId() != QMetaType::QVariantMap)
        return Error{"it is not a dictionary"};
    const QVariantMap map = entry.toMap();
    EntryReader reader(map);
    Schedule schedule;
    schedule.identifier = reader.required<QString>(u"Identifier"_s, "a string");
    schedule.name = reader.required<QString>(u"Name"_s, "a string");
    schedule.isEnabled = reader.required<bool>(u"Is Enabled"_s, "a boolean");
    schedule.bundlePath = reader.required<QString>(u"Bundle Path"_s, "a string");
    schedule.parameters = reader.optional<QVariantMap>(u"Parameters"_s, "a dictionary");
    schedule.date = reader.required<QDateTime>(u"Date"_s, "a date");
    schedule.timeZone = reader.optional<QString>(u"Time Zone"_s, "a string");
    schedule.owner = readOwner(map, reader);
    schedule.staysWhenOver = reader.optional<bool>(u"Stays When Over"_s, "a boolean");
    schedule.recurrence = readRecurrence(map, reader);
    readPolicies(schedule, map, reader);
    if (schedule.identifier.isEmpty())
        reader.complain("\"Identifier\" is empty");
    if (!isCleanFixedPath(schedule.bundlePath))
        reader.complain("\"Bundle Path\" is not an absolute path");
    if (!schedule.date.isValid())
        reader.complain("\"Date\" is not a date");
    else if (const int year = roundedUp(schedule.date).date().year(); year < firstYear || year > lastYear)
        reader.complain("\"Date\" is out of range");
    for (auto key = map.cbegin(); key != map.cend(); ++key) {
        if (holdsDamage(*key))
            reader.complain(QString("\"%1\" holds a date that cannot be read").arg(logLabel(key.key())));
    }
    if (!schedule.timeZone.isEmpty() && !isTimeZoneName(schedule.timeZone))
        reader.complain("\"Time Zone\" is not known");
    if (!reader.fault().isEmpty())
        return Error{reader.fault()};
    schedule.date = roundedUp(schedule.date);
    for (auto key = map.cbegin(); key != map.cend(); ++key) {
        if (!knownKeys.contains(key.key()))
            schedule.otherKeys.insert(key.key(), key.value());
    }
    return schedule;
}

QVariantMap Schedule::toEntry() const
{
    QVariantMap entry = otherKeys;
    entry.insert("Identifier", identifier);
    entry.insert("Name", name);
    entry.insert("Is Enabled", isEnabled);
    entry.insert("Bundle Path", bundlePath);
    entry.insert("Parameters", parameters);
    entry.insert("Date", roundedUp(date));
    if (!timeZone.isEmpty())
        entry.insert("Time Zone", timeZone);
    if (staysWhenOver)
        entry.insert("Stays When Over", true);
    if (owner)
        entry.insert("Owner", static_cast<qint64>(*owner));
    if (recurrence)
        entry.insert("Recurrence Rule", recurrence->toDictionary());
    insertPolicies(entry, *this);
    return entry;
}

QTimeZone Schedule::zone() const
{
    if (!timeZone.isEmpty())
        return QTimeZone(timeZone.toUtf8());
    return recurrence ? machineTimeZone() : QTimeZone::utc();
}

QDateTime Schedule::calendarDate() const
{
    return recurrence ? date.toTimeZone(zone()) : dozely::calendarDate(date, timeZone);
}

QString Schedule::fullBundlePath() const
{
    return RootFolder::join(bundlePath);
}
