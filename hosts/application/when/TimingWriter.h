// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/when/Timing.h"

#include "DozelyKit/core/foundation/Result.h"

#include <QCoreApplication>

/// What becomes of a schedule's date, zone and recurrence when a person has picked something else. What was
/// not picked anew stays as it is, to the letter: a rule has those of its parts changed that say something
/// else now.
///
/// What is changed begins anew, from now on or from its first day, so that nothing of it counts as missed.
/// The present is that of the clock at each question.
class TimingWriter
{
    Q_DECLARE_TR_FUNCTIONS(TimingWriter)
public:
    struct Schedule {
        QDateTime date; ///< UTC; of what repeats that of its first occurrence.
        QString timeZone;
        std::optional<Recurrence> recurrence;

        bool operator==(const Schedule &) const = default;
    };

    explicit TimingWriter(Schedule origin);

    const Schedule &origin() const { return m_origin; }

    /// What the origin says.
    const Timing &shown() const { return m_shown; }

    /// What the timing makes of the origin. An error is a whole sentence for a person, in his language.
    dozely::Result<Schedule> written(const Timing &timing) const;

    /// The timing as a rule for experts, whether or not anything comes of it; empty for what takes place
    /// once.
    QString ruleOf(const Timing &timing) const;

    /// The wall times of one day that could be left out; none where nothing takes place.
    QList<WallTime> occurrencesOn(const QDate &day, const Timing &timing) const;

private:
    dozely::Result<Schedule> once(const Timing &timing) const;
    dozely::Result<Recurrence> begun(const Timing &timing) const;
    std::optional<QString> faultOf(const Timing &timing) const;
    Recurrence withoutDates(const Timing &timing) const;
    bool isSamePattern(const Timing &timing) const;

    Schedule m_origin;
    Timing m_shown;
};
