// SPDX-License-Identifier: MIT
#include "hosts/admin/WantedSchedules.h"

#include "hosts/admin/AdminText.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/calendar/DateTerms.h"
#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/common/calendar/RuleParts.h"

#include <QSet>
#include <QUuid>

#include <algorithm>

using namespace dozely;

namespace
{
/// Words of a file, and the keys of the store that mean the same and have the same type.
const QMap<QString, QString> &sameValues()
{
    static const QMap<QString, QString> words{{"identifier", "Identifier"},
                                              {"name", "Name"},
                                              {"isEnabled", "Is Enabled"},
                                              {"timeZone", "Time Zone"},
                                              {"parameters", "Parameters"},
                                              {"owner", "Owner"},
                                              {"missed", "Missed Policy"},
                                              {"missedLimit", "Missed Limit"},
                                              {"staysWhenOver", "Stays When Over"},
                                              {"overlap", "Overlap Policy"},
                                              {"after", "After Action"}};
    return words;
}

QStringList textsOf(const QVariant &value)
{
    QStringList texts;
    for (const QVariant &each :
         value.typeId() == QMetaType::QVariantList ? value.toList() : QVariantList{value})
        texts += each.toString();
    return texts;
}

/// One schedule of a file in its own words.
class Reader
{
public:
    Reader(QVariantMap wanted, std::optional<Schedule> present, const QDateTime &now)
        : m_wanted(std::move(wanted)), m_present(std::move(present)), m_now(now)
    {
    }

    Result<Schedule> read()
    {
        m_entry.insert("Is Enabled", true);
        if (m_present)
            m_entry.insert("Identifier", m_present->identifier);
        else
            m_entry.insert("Identifier", identifierFor(m_wanted.value("name").toString()));
        takeSame();
        takeAction();
        takeTime();
        if (m_fault)
            return *m_fault;
        for (const QString &key : m_wanted.keys())
            return Error{AdminText::tr("there is no word \"%1\"").arg(logLabel(key))};
        return Schedule::fromEntry(m_entry);
    }

private:
    /// The same on every machine, and whenever it is made.
    static QString identifierFor(const QString &name)
    {
        static const QUuid ours("{5a1f7c8e-6f0b-4d0e-9a53-9d2c6a1e7b40}");
        return QUuid::createUuidV5(ours, name).toString(QUuid::WithoutBraces);
    }

    void fail(const QString &fault)
    {
        if (!m_fault)
            m_fault = Error{fault};
    }

    QVariant take(const QString &key) { return m_wanted.take(key); }

    template<class Value>
    std::optional<Value> accepted(const Result<Value> &value)
    {
        if (value)
            return *value;
        fail(value.error().text);
        return {};
    }

    void takeSame()
    {
        for (auto word = sameValues().cbegin(); word != sameValues().cend(); ++word) {
            if (m_wanted.contains(word.key())) {
                if (const QVariant value = take(word.key()); value.isValid() && !value.isNull())
                    m_entry.insert(*word, value);
            }
        }
        for (const char *key : {"Missed Policy", "After Action"}) { // "run-once" on the command line
            if (m_entry.contains(key))
                m_entry.insert(key, m_entry.value(key).toString().replace('-', ' '));
        }
        if (m_entry.value("Missed Policy") == "plug in")
            m_entry.insert("Missed Policy", "plug-in");
        if (m_entry.value("Time Zone") == "machine")
            m_entry.remove("Time Zone");
    }

    void takeAction()
    {
        QString bundle = take("bundle").toString();
        const QString path = take("bundlePath").toString();
        QVariantMap parameters = m_entry.value("Parameters").toMap();
        if (m_wanted.contains("program")) {
            parameters.insert("Program", take("program"));
            const QVariant arguments = take("arguments");
            if (arguments.isValid())
                parameters.insert("Arguments", QVariant(QVariantList(arguments.toList())));
            bundle = bundle.isEmpty() ? "Command" : bundle;
        }
        const QString place = take("actsIn").toString();
        if (place == "session" || place == "daemon")
            parameters.insert(QString(ParameterKey::actsInUserAgent), qint64(place == "session" ? 1 : 0));
        else if (!place.isEmpty())
            fail(AdminText::tr("\"actsIn\" is neither session nor daemon"));
        for (const auto &[word, key] : {std::pair("wakes", ParameterKey::needsWakeUp),
                                        std::pair("powersOn", ParameterKey::needsStartup)}) {
            if (take(word).toBool())
                parameters.insert(QString(key), qint64(1));
        }
        m_entry.insert("Parameters", parameters);
        m_entry.insert("Bundle Path", !path.isEmpty() ? path
                                      : bundle.isEmpty()
                                          ? QString()
                                          : QString("%1/%2.plugin").arg(QString(FixedPath::plugIns), bundle));
    }

    QTimeZone zone() const
    {
        const QString name = m_entry.value("Time Zone").toString();
        return name.isEmpty() || !isTimeZoneName(name) ? machineTimeZone() : QTimeZone(name.toUtf8());
    }

    void takeTime()
    {
        if (!m_wanted.contains("repeats") && !m_wanted.contains("every")) {
            takeDate();
            return;
        }
        QVariantMap repeats = take("repeats").toMap();
        repeats.remove("inWords");
        if (m_wanted.contains("every"))
            takeEvery(repeats);
        take("date"); // told of what repeats; it follows
        QVariantMap rule;
        for (const auto &[word, key] :
             {std::pair("rule", "Rule"), std::pair("localStart", "Local Start"),
              std::pair("extraDates", "Extra Dates"), std::pair("excludedDates", "Excluded Dates")}) {
            const QVariant value = repeats.take(word);
            if (value.isValid() && !(value.typeId() == QMetaType::QVariantList && value.toList().isEmpty()))
                rule.insert(key, value);
        }
        for (const QString &key : repeats.keys())
            fail(AdminText::tr("\"repeats\" has no word \"%1\"").arg(logLabel(key)));
        if (!rule.contains("Local Start"))
            rule.insert("Local Start", startFor(rule.value("Rule").toString()));
        const auto recurrence = accepted(Recurrence::fromDictionary(rule));
        const auto series = recurrence ? accepted(OccurrenceSeries::of(*recurrence, zone())) : std::nullopt;
        const auto first = series ? series->first() : std::nullopt;
        if (series && !first)
            fail(AdminText::tr("nothing comes of its rule"));
        m_entry.insert("Recurrence Rule", rule);
        m_entry.insert("Date", first.value_or(QDateTime()));
    }

    /// "every", "at", "on", "count": as on the command line.
    void takeEvery(QVariantMap &repeats)
    {
        const auto pattern = accepted(FriendlyTerms::repetition(take("every").toString()));
        RuleParts rule(pattern.value_or(QString()));
        if (m_wanted.contains("on")) {
            QStringList days;
            for (const int day :
                 accepted(FriendlyTerms::monthDays(textsOf(take("on")).join(','))).value_or(QList<int>()))
                days += QString::number(day);
            rule.set("BYMONTHDAY", days.join(','));
        }
        const bool isTimed = m_wanted.contains("at");
        QList<QTime> times;
        for (const QString &text : isTimed ? textsOf(take("at")) : QStringList()) {
            if (const auto time = accepted(FriendlyTerms::time(text)))
                times += *time;
        }
        if (rule.isOfDays() && times.isEmpty())
            fail(AdminText::tr("say at what time, by \"at\""));
        if (!times.isEmpty()) {
            std::sort(times.begin(), times.end());
            if (const auto set = rule.setTimes(times); !set)
                fail(set.error().text);
            m_time = times.constFirst();
        }
        if (m_wanted.contains("count"))
            rule.set("COUNT", QString::number(take("count").toInt()));
        repeats.insert("rule", rule.toString());
    }

    /// From when on a rule counts that does not say so.
    QString startFor(const QString &rule) const
    {
        if (m_present && m_present->recurrence && m_present->recurrence->rule == rule &&
            (m_time.isNull() || m_present->recurrence->localStart.time == m_time))
            return m_present->recurrence->localStart.toString();
        return WallTime{m_now.toTimeZone(zone()).date(), m_time.isNull() ? QTime(0, 0) : m_time}.toString();
    }

    /// A day and a time of its own: what is counted from now would be another date each time.
    void takeDate()
    {
        const QVariant value = take("date");
        if (value.typeId() == QMetaType::QDateTime) {
            m_entry.insert("Date", value);
            return;
        }
        const QString text = value.toString();
        const DateTerms terms(m_now, zone());
        const auto date = accepted(terms.read(text));
        if (date && (!date->time || !text.left(4).toInt()))
            fail(AdminText::tr("\"date\" is not a date such as \"2026-03-14 06:55\""));
        const auto moment = date && date->time ? accepted(terms.momentOf(*date, text)) : std::nullopt;
        if (moment)
            m_entry.insert("Date", moment->date);
    }

    QVariantMap m_wanted;
    std::optional<Schedule> m_present;
    QDateTime m_now;
    QVariantMap m_entry;
    QTime m_time;
    std::optional<Error> m_fault;
};

/// The one of that identifier, or else the only one of that name.
std::optional<Schedule> presentOne(const QList<Schedule> &present, const QString &identifier,
                                   const QString &name)
{
    QList<Schedule> named;
    for (const Schedule &schedule : present) {
        if (!identifier.isEmpty() && schedule.identifier == identifier)
            return schedule;
        if (schedule.name == name)
            named += schedule;
    }
    return named.size() == 1 ? std::optional(named.constFirst()) : std::nullopt;
}
} // namespace

Result<QList<Schedule>> WantedSchedules::in(const QVariant &file, const QList<Schedule> &present,
                                            const QDateTime &now)
{
    const QVariantMap root = file.toMap();
    const bool isStore = root.contains("Schedule Array");
    const QVariant entries = root.value(isStore ? "Schedule Array" : "schedules");
    if (entries.typeId() != QMetaType::QVariantList)
        return Error{
            AdminText::tr("it has no list of schedules (\"schedules\", or \"Schedule Array\" of a store)")};
    QList<Schedule> wanted;
    QSet<QString> identifiers;
    qsizetype number = 0;
    for (const QVariant &entry : entries.toList()) {
        const QVariantMap map = entry.toMap();
        const QString name = map.value(isStore ? "Name" : "name").toString();
        const QString identifier = map.value(isStore ? "Identifier" : "identifier").toString();
        const auto schedule = isStore ? Schedule::fromEntry(entry)
                                      : Reader(map, presentOne(present, identifier, name), now).read();
        ++number;
        if (!schedule)
            return Error{AdminText::tr("schedule %1, \"%2\", is none: %3")
                             .arg(number)
                             .arg(logLabel(name), schedule.error().text)};
        if (identifiers.contains(schedule->identifier))
            return Error{
                AdminText::tr("schedule %1, \"%2\", is there twice").arg(number).arg(logLabel(name))};
        identifiers.insert(schedule->identifier);
        wanted += *schedule;
    }
    return wanted;
}
