// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/RecurrenceRule.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "hosts/common/calendar/CalendarDay.h"
#include "hosts/common/calendar/RuleFault.h"

#include <algorithm>
#include <array>

using namespace dozely;

namespace
{
using Frequency = RecurrenceRule::Frequency;

constexpr qint64 largestNumber = 1'000'000'000; // of COUNT and INTERVAL

/// One part of a rule, "BYDAY=MO,TU", and the first fault of all of them.
class RuleReader
{
public:
    Result<RecurrenceRule> read(const QString &text)
    {
        if (!std::all_of(text.begin(), text.end(), [](QChar c) { return c > QChar(' ') && c < QChar(127); }))
            return Error{"the rule has blanks or other characters that no rule has", RuleFault::characters};
        const QString upper = text.toUpper();
        QStringView rest(upper);
        while (m_fault.isEmpty()) {
            const qsizetype end = rest.indexOf(QChar(';'));
            readPart(end < 0 ? rest : rest.left(end));
            if (end < 0)
                break;
            rest = rest.mid(end + 1);
        }
        if (m_fault.isEmpty())
            checkTogether();
        if (!m_fault.isEmpty())
            return Error{m_fault, m_code};
        return m_rule;
    }

private:
    void complain(const char *code, const QString &fault, QStringView about = {})
    {
        if (!m_fault.isEmpty())
            return;
        m_fault = fault;
        m_code = code;
        if (!about.isEmpty())
            m_code += ' ' + about.toLatin1();
    }

    void complainOfValue(const QString &expected)
    {
        constexpr int shown = 40; // of a value that may be long
        const QString value = logLabel(m_value.left(shown).toString());
        complain(RuleFault::value, QString("%1=%2 of the rule is not %3").arg(m_name, value, expected),
                 QString("%1=%2").arg(m_name, value));
    }

    void readPart(QStringView part)
    {
        using Reader = void (RuleReader::*)();
        static constexpr std::array<std::pair<const char *, Reader>, 16> readers{{
            {"FREQ", &RuleReader::readFrequency},
            {"INTERVAL", &RuleReader::readInterval},
            {"COUNT", &RuleReader::readCount},
            {"UNTIL", &RuleReader::readUntil},
            {"WKST", &RuleReader::readWeekStart},
            {"BYSECOND", &RuleReader::readSeconds},
            {"BYMINUTE", &RuleReader::readMinutes},
            {"BYHOUR", &RuleReader::readHours},
            {"BYDAY", &RuleReader::readDays},
            {"BYMONTHDAY", &RuleReader::readMonthDays},
            {"BYYEARDAY", &RuleReader::readYearDays},
            {"BYWEEKNO", &RuleReader::readWeeks},
            {"BYMONTH", &RuleReader::readMonths},
            {"BYSETPOS", &RuleReader::readPositions},
            {"RSCALE", &RuleReader::refuseCalendar},
            {"SKIP", &RuleReader::refuseCalendar},
        }};
        const qsizetype equals = part.indexOf(QChar('='));
        m_name = part.left(equals < 0 ? part.size() : equals);
        m_value = equals < 0 ? QStringView() : part.mid(equals + 1);
        for (size_t i = 0; i < readers.size(); ++i) {
            if (m_name != QLatin1String(readers.at(i).first))
                continue;
            if (m_seen.test(i))
                return complain(RuleFault::twice, QString("the rule has %1 twice").arg(m_name), m_name);
            if (m_value.isEmpty())
                return complain(RuleFault::noValue, QString("%1 of the rule has no value").arg(m_name),
                                m_name);
            m_seen.set(i);
            return (this->*readers.at(i).second)();
        }
        constexpr int shown = 40;
        const QString name = logLabel(m_name.left(shown).toString());
        if (name.isEmpty())
            return complain(RuleFault::emptyPart, "the rule has an empty part");
        complain(RuleFault::unknownPart, QString("the rule has a part that is not known, \"%1\"").arg(name),
                 name);
    }

    /// A number of at most `digits` digits, with a sign where one may be; nothing for any other text.
    static std::optional<qint64> number(QStringView text, int digits, bool mayBeSigned)
    {
        bool isNegative = false;
        if (mayBeSigned && (text.startsWith(QChar('-')) || text.startsWith(QChar('+')))) {
            isNegative = text.startsWith(QChar('-'));
            text = text.mid(1);
        }
        if (text.isEmpty() || text.size() > digits)
            return {};
        qint64 value = 0;
        for (const QChar c : text) {
            if (c < QChar('0') || c > QChar('9'))
                return {};
            value = value * 10 + (c.unicode() - '0');
        }
        return isNegative ? -value : value;
    }

    qint64 positive()
    {
        constexpr int digits = 10;
        const std::optional<qint64> value = number(m_value, digits, false);
        if (!value || *value < 1 || *value > largestNumber)
            complainOfValue(QString("a number from 1 to %1").arg(largestNumber));
        return value.value_or(1);
    }

    template<class Take>
    void eachOf(Take take)
    {
        QStringView rest = m_value;
        while (m_fault.isEmpty()) {
            const qsizetype end = rest.indexOf(QChar(','));
            take(end < 0 ? rest : rest.left(end));
            if (end < 0)
                break;
            rest = rest.mid(end + 1);
        }
    }

    template<class Take>
    void eachNumber(int least, int most, int digits, bool mayBeSigned, Take take)
    {
        eachOf([&](QStringView text) {
            const std::optional<qint64> value = number(text, digits, mayBeSigned);
            if (!value || std::abs(*value) < least || std::abs(*value) > most)
                return complainOfValue(QString("made of numbers from %1 to %2%3")
                                           .arg(least)
                                           .arg(most)
                                           .arg(mayBeSigned ? QString(" or from -%1 to -1").arg(most) : ""));
            take(static_cast<int>(*value));
        });
    }

    template<size_t Size>
    void readSet(std::bitset<Size> &set, int least)
    {
        eachNumber(least, static_cast<int>(Size) - 1, 2, false,
                   [&](int value) { set.set(static_cast<size_t>(value)); });
    }

    template<size_t Size>
    void readBothWays(std::bitset<Size> &set, std::bitset<Size> &fromEnd, int digits)
    {
        eachNumber(1, static_cast<int>(Size) - 1, digits, true,
                   [&](int value) { (value > 0 ? set : fromEnd).set(static_cast<size_t>(std::abs(value))); });
    }

    static std::optional<int> weekday(QStringView text)
    {
        static constexpr std::array<const char *, 7> names{"MO", "TU", "WE", "TH", "FR", "SA", "SU"};
        for (size_t i = 0; i < names.size(); ++i) {
            if (text == QLatin1String(names.at(i)))
                return static_cast<int>(i);
        }
        return {};
    }

    void readFrequency()
    {
        static constexpr std::array<const char *, 7> names{"SECONDLY", "MINUTELY", "HOURLY", "DAILY",
                                                           "WEEKLY",   "MONTHLY",  "YEARLY"};
        for (size_t i = 0; i < names.size(); ++i) {
            if (m_value == QLatin1String(names.at(i))) {
                m_rule.frequency = static_cast<Frequency>(i);
                m_hasFrequency = true;
                return;
            }
        }
        complainOfValue("one of SECONDLY, MINUTELY, HOURLY, DAILY, WEEKLY, MONTHLY and YEARLY");
    }

    void readInterval() { m_rule.interval = positive(); }
    void readCount() { m_rule.count = positive(); }
    void readSeconds()
    {
        constexpr int leapSecond = 60;
        eachNumber(0, leapSecond, 2, false,
                   [&](int value) { m_rule.seconds.set(static_cast<size_t>(std::min(value, 59))); });
    }
    void readMinutes() { readSet(m_rule.minutes, 0); }
    void readHours() { readSet(m_rule.hours, 0); }
    void readMonths() { readSet(m_rule.months, 1); }
    void readMonthDays() { readBothWays(m_rule.monthDays, m_rule.monthDaysFromEnd, 2); }
    void readYearDays() { readBothWays(m_rule.yearDays, m_rule.yearDaysFromEnd, 3); }
    void readWeeks() { readBothWays(m_rule.weeks, m_rule.weeksFromEnd, 2); }
    void readPositions()
    {
        constexpr int most = 366;
        eachNumber(1, most, 3, true, [&](int value) { m_rule.positions.push_back(value); });
    }

    void readWeekStart()
    {
        const std::optional<int> day = weekday(m_value);
        if (!day)
            complainOfValue("one of MO, TU, WE, TH, FR, SA and SU");
        m_rule.weekStart = day.value_or(0);
    }

    void readDays()
    {
        constexpr qsizetype nameLength = 2;
        constexpr int mostWeeks = 53;
        eachOf([&](QStringView text) {
            const std::optional<int> day = weekday(text.right(nameLength));
            const QStringView before = text.left(std::max<qsizetype>(0, text.size() - nameLength));
            const std::optional<qint64> ordinal = before.isEmpty() ? 0 : number(before, 2, true);
            if (!day || !ordinal || std::abs(*ordinal) > mostWeeks || (*ordinal == 0 && !before.isEmpty()))
                return complainOfValue("made of days such as MO, 2MO and -1MO");
            if (*ordinal == 0)
                m_rule.weekdays.set(static_cast<size_t>(*day));
            else
                m_rule.ordinalWeekdays.push_back({static_cast<int>(*ordinal), *day});
        });
    }

    /// "20260314", "20260314T065500", "20260314T065500Z".
    void readUntil()
    {
        constexpr qsizetype dayLength = 8;
        const bool isMoment = m_value.endsWith(QChar('Z'));
        const QStringView text = isMoment ? m_value.left(m_value.size() - 1) : m_value;
        const bool isDay = text.size() == dayLength && !isMoment;
        const std::optional<qint64> day = number(text.left(dayLength), dayLength, false);
        std::optional<qint64> time = isDay ? std::optional<qint64>(235959) : std::nullopt;
        if (text.size() == dayLength + 7 && text.at(dayLength) == QChar('T'))
            time = number(text.mid(dayLength + 1), 6, false);
        if (!day || !time || text.size() < dayLength)
            return complainOfUntil();
        const auto part = [](qint64 digits, qint64 unit) { return static_cast<int>(digits / unit % 100); };
        const int hour = part(*time, 10000);
        const int minute = part(*time, 100);
        const int second = std::min(part(*time, 1), part(*time, 1) == 60 ? 59 : 99);
        const int year = static_cast<int>(*day / 10000);
        if (year < 1 || !CalendarDay::exists(year, part(*day, 100), part(*day, 1)) || hour > 23 ||
            minute > 59 || second > 59)
            return complainOfUntil();
        const qint64 number = CalendarDay::numberOf(year, part(*day, 100), part(*day, 1));
        m_rule.until = RecurrenceRule::Until{
            isMoment ? RecurrenceRule::UntilForm::Moment : RecurrenceRule::UntilForm::WallTime,
            number * CalendarDay::seconds + (hour * 60 + minute) * 60 + second};
    }

    void complainOfUntil()
    {
        complainOfValue("a date such as 20260314, 20260314T065500 or 20260314T065500Z");
    }

    void refuseCalendar()
    {
        complain(
            RuleFault::calendar,
            QString("the rule has %1, and other calendars than the Gregorian are not supported").arg(m_name),
            m_name);
    }

    /// What RFC 5545 forbids together (3.3.10).
    void checkTogether()
    {
        if (!m_hasFrequency)
            return complain(RuleFault::noFrequency, "the rule has no FREQ");
        const Frequency frequency = m_rule.frequency;
        const bool isYearly = frequency == Frequency::Yearly;
        if (m_rule.count && m_rule.until)
            complain(RuleFault::countAndUntil, "the rule has COUNT and UNTIL, of which there may be one");
        if (!m_rule.ordinalWeekdays.empty() && frequency != Frequency::Monthly && !isYearly)
            complain(RuleFault::numberedDays,
                     "BYDAY of the rule has a number, which needs FREQ=MONTHLY or FREQ=YEARLY");
        if (!m_rule.ordinalWeekdays.empty() && m_rule.hasWeek())
            complain(RuleFault::numberedDaysInWeeks,
                     "BYDAY of the rule has a number, which cannot be beside BYWEEKNO");
        if (m_rule.hasMonthDay() && frequency == Frequency::Weekly)
            complain(RuleFault::monthDays, "the rule has BYMONTHDAY, which cannot be beside FREQ=WEEKLY");
        if (m_rule.hasYearDay() && frequency >= Frequency::Daily && !isYearly)
            complain(RuleFault::yearDays,
                     "the rule has BYYEARDAY, which cannot be beside FREQ=DAILY, WEEKLY or MONTHLY");
        if (m_rule.hasWeek() && !isYearly)
            complain(RuleFault::weeks, "the rule has BYWEEKNO, which needs FREQ=YEARLY");
        if (!m_rule.positions.empty() && !m_rule.hasParts())
            complain(RuleFault::positions, "the rule has BYSETPOS, which needs another BY part");
    }

    RecurrenceRule m_rule;
    bool m_hasFrequency = false;
    std::bitset<16> m_seen;
    QStringView m_name;
    QStringView m_value;
    QString m_fault;
    QByteArray m_code;
};
} // namespace

Result<RecurrenceRule> RecurrenceRule::parse(const QString &text)
{
    return RuleReader().read(text);
}
