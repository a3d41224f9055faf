// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QLocale>

/// What the calendar's code says to people. English where no other language was installed, as in every host
/// that speaks to programs alone.
class CalendarText
{
    Q_DECLARE_TR_FUNCTIONS(CalendarText)
public:
    /// The one whose names of days and months go with the texts.
    static QLocale locale() { return QLocale(tr("C", "the locale that has the names of days and months")); }
};
