// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QCoreApplication>

#include <optional>

/// Why something was refused or failed, in the person's language. The daemon and the library say it in
/// English; what of it is known here is said in other words, and all else as it comes.
class ReasonWords
{
    Q_DECLARE_TR_FUNCTIONS(ReasonWords)
public:
    /// Of a sentence of the daemon, or a clause of its, as either comes.
    static QString of(const QString &reason);

    /// Of an error that a SchedulerClient answers with; of the bus itself it is the name that counts.
    static QString of(const dozely::Error &error);

private:
    static std::optional<QString> known(const QString &reason, int depth);
};
