// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/common/calendar/Recurrence.h"

#include <QHash>
#include <QLabel>
#include <QTimeZone>

#include <memory>
#include <optional>

/// Shows the next dates of a schedule that is being edited, in people's words and by the machine's clocks,
/// and where clocks change between them. "Today" stays right: it looks again at midnight, and when the clock
/// is set. THREADING: the main thread.
class NextDates : public QLabel
{
    Q_OBJECT
public:
    explicit NextDates(QWidget *parent = nullptr);

    static constexpr int mostDates = 5;

    /// Shows what comes of it from now on. `date` is the moment of what takes place once; `timeZone` an IANA
    /// name, empty for the machine's zone.
    void setSchedule(const QDateTime &date, const QString &timeZone,
                     const std::optional<Recurrence> &recurrence);

    /// Shows nothing, while what is edited cannot be.
    void clearSchedule();

    /// The lines that are shown.
    QStringList lines() const { return m_lines; }

protected:
    void changeEvent(QEvent *event) override;

private:
    struct Shown {
        QDateTime date;
        QString timeZone;
        std::optional<Recurrence> recurrence;
    };

    struct Dates {
        QList<QDateTime> dates;
        QHash<QDateTime, QTime> meant; ///< Of those that clocks move, the times that the rule says.
    };

    static Dates datesOf(const Recurrence &recurrence, const QTimeZone &zone);
    void showDates();
    void waitUntilOver(const QDateTime &first);
    QStringList linesOf(const Dates &next, const QTimeZone &zone) const;
    QString lineOf(const QDateTime &date, const QTimeZone &zone) const;
    QString hintAt(const QDateTime &date, const QDateTime &before, const QTimeZone &zone) const;

    std::optional<Shown> m_shown;
    QStringList m_lines;
    std::unique_ptr<dozely::AbsoluteTimer> m_over; // when the lines are no longer right
};
