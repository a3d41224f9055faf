// SPDX-License-Identifier: MIT
#include "hosts/application/when/DayField.h"

#include "hosts/application/when/WheelGuard.h"

#include <QDateEdit>
#include <QLocale>
#include <QRegularExpression>

QDateEdit *DayField::make(QWidget *parent, const QString &name)
{
    static const QRegularExpression shortYear("(?<!y)yy(?!y)");
    auto *const edit = new QDateEdit(parent);
    edit->setLayoutDirection(Qt::LeftToRight); // else Qt turns the parts of the date round, year first
    edit->setDisplayFormat(edit->locale().dateFormat(QLocale::ShortFormat).replace(shortYear, "yyyy"));
    edit->setMinimumDate(QDate(100, 1, 1)); // the first that it can have
    edit->setCalendarPopup(true);
    edit->setAccessibleName(name);
    WheelGuard::guard(edit);
    return edit;
}
