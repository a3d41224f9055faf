// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/history/HistoryOutcome.h"

#include <QCoreApplication>
#include <QLocale>

#include <chrono>

/// Outcomes as people say them, in their own language. Dates are by the machine's clocks.
class OutcomeWords
{
    Q_DECLARE_TR_FUNCTIONS(OutcomeWords)
public:
    /// "today 22:00"; of several the first and the last.
    static QString when(const HistoryOutcome &outcome, const QDateTime &now, const QLocale &locale);

    /// "done", "missed 7 times".
    static QString state(const HistoryOutcome &outcome, const QDateTime &now, const QLocale &locale);

    /// "on time", "5 min late"; empty for what never began.
    static QString lateness(const HistoryOutcome &outcome, const QLocale &locale);

    /// Why; empty where the state says all.
    static QString failure(const HistoryOutcome &outcome);

private:
    static QString duration(std::chrono::milliseconds duration, const QLocale &locale);
};
