// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <utility>

/// The parts of a rule of RFC 5545 as texts ("BYDAY" and "MO,TH"), for who changes one and leaves the others.
/// Whether they make sense, OccurrenceSeries says. A plain value.
class RuleParts
{
public:
    RuleParts() = default;

    /// The value of an RRULE. What is no part stays as it is.
    explicit RuleParts(const QString &rule);

    bool has(const QString &name) const { return !value(name).isNull(); }

    /// Null when there is no such part.
    QString value(const QString &name) const;

    /// Changes a part where it stands, or adds it at the end.
    void set(const QString &name, const QString &value);
    void remove(const QString &name);

    /// Has it take place at these times of day, one at least. A single one is not written: it is to be that
    /// of the rule's start. An error when a rule cannot say just these: it combines each of its hours with
    /// each of its minutes.
    dozely::Result<void> setTimes(const QList<QTime> &times);

    /// The times of day, in order, that a rule cannot but mean, too, when it means these.
    static QList<QTime> alsoMeantBy(const QList<QTime> &times);

    /// Whether it says itself at what times of day it takes place.
    bool hasTimes() const { return has("BYHOUR") || has("BYMINUTE") || has("BYSECOND"); }

    /// Whether its occurrences are a day or more apart, so that it gives wall times; else it counts elapsed
    /// time.
    bool isOfDays() const;

    QString toString() const;

private:
    QList<std::pair<QString, QString>> m_parts; // a part without a value has a null one
};
