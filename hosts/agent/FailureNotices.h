// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/NSUserNotification.h"

#include <QHash>

#include <memory>

/// Tells the user that actions failed or were not performed: plain notices without a button, one for each
/// schedule. THREADING: the main thread.
class FailureNotices
{
public:
    /// Shows it, in the place of an earlier one about the schedule. Both texts are for people.
    void show(const QString &schedule, const QString &reason);

private:
    QHash<QString, std::shared_ptr<NSUserNotification>> m_notices; // by schedule
};
