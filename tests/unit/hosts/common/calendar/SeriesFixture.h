// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/OccurrenceSeries.h"

#include <QStringList>

#include <gmock/gmock.h>

/// Series of a rule in a zone, and what they say as texts.
class SeriesFixture : public testing::Test
{
protected:
    static Recurrence recurrence(const char *rule, const char *start, const QStringList &extra = {},
                                 const QStringList &excluded = {})
    {
        Recurrence result;
        result.rule = rule;
        result.localStart = WallTime::fromString(start).value();
        for (const QString &date : extra)
            result.extraDates.append(WallTime::fromString(date).value());
        for (const QString &date : excluded)
            result.excludedDates.append(WallTime::fromString(date).value());
        return result;
    }

    static OccurrenceSeries series(const Recurrence &recurrence, const char *zone = "Europe/Paris")
    {
        const auto made = OccurrenceSeries::of(recurrence, QTimeZone(zone));
        EXPECT_TRUE(made) << qPrintable(made ? QString() : made.error().text);
        return made.value();
    }

    /// Why a rule is refused; empty when it is not.
    static std::string faultOf(const char *rule, const char *start = "2026-03-14T06:55:00",
                               const char *zone = "Europe/Paris")
    {
        const auto made = OccurrenceSeries::of(recurrence(rule, start), QTimeZone(zone));
        return made ? std::string() : made.error().text.toStdString();
    }

    static QDateTime utc(const char *text) { return QDateTime::fromString(text, Qt::ISODate); }

    static QString written(const std::optional<QDateTime> &date, const char *zone)
    {
        if (!date)
            return "none";
        const QDateTime there = date->toTimeZone(QTimeZone(zone));
        return there.toOffsetFromUtc(there.offsetFromUtc()).toString(Qt::ISODate);
    }

    /// The first so many, as clocks of the zone show them, with the offset.
    static QStringList firstOf(const Recurrence &recurrence, int count, const char *zone = "Europe/Paris")
    {
        const OccurrenceSeries all = series(recurrence, zone);
        QStringList result;
        for (auto date = all.first(); date && result.size() < count; date = all.after(*date))
            result.append(written(date, zone));
        return result;
    }

    /// The same without time and offset, for rules about days.
    static QString firstDaysOf(const Recurrence &recurrence, int count)
    {
        QStringList days = firstOf(recurrence, count, "UTC");
        for (QString &day : days)
            day.truncate(10);
        return days.join(' ');
    }
};
