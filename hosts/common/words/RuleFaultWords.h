// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QCoreApplication>

/// What is wrong with a rule, in the person's language.
class RuleFaultWords
{
    Q_DECLARE_TR_FUNCTIONS(RuleFaultWords)
public:
    /// A sentence for an error of the calendar's code; in its own words where that is no RuleFault.
    static QString of(const dozely::Error &error);
};
