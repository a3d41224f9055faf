// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/when/Timing.h"

#include <QCoreApplication>
#include <QLocale>

/// What a person may not expect of what he picked.
class TimingRemark
{
    Q_DECLARE_TR_FUNCTIONS(TimingRemark)
public:
    /// One sentence, such as that months without a day 31 are left out; empty where there is nothing to say.
    static QString on(const Timing &timing, const QLocale &locale);

private:
    static QString onMonths(const Timing::Pattern &pattern, const QLocale &locale);
    static QString onOnce(const Timing &timing, const QLocale &locale);
};
