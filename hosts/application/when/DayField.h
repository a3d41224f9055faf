// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QDateEdit;
class QWidget;

/// Fields for a day.
namespace DayField
{
/// A field of the parent with that accessible name, in the locale's short form, though with the whole year,
/// and with a calendar that opens below it.
QDateEdit *make(QWidget *parent, const QString &name);
} // namespace DayField
