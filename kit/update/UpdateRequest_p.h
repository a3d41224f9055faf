// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/HttpClient.h"

#include <QStringList>

namespace dozely
{

/// What the update server is told.
namespace UpdateRequest
{
/// Facts about this installation.
struct Facts {
    QString versionString; ///< The installed version as people call it; null when it is not known.
    qint64 version = 0;
    qint32 schedulesCount = 0;
    QString systemVersion; ///< Null when it is not known.

    /// The keys of the request that must be left out, since nothing is known.
    QStringList missing() const;
};

/// How many entries of the schedule store are enabled; 0 when there is no store. One that cannot be read, or
/// that somebody else than the system's owner may write, is logged, and counts as none.
DOZELYKIT_AUTOTEST_EXPORT qint32 countOfEnabledSchedules();

/// The request to the update server. What is not known is left out of its body.
DOZELYKIT_AUTOTEST_EXPORT HttpRequest make(const Facts &facts);
} // namespace UpdateRequest

} // namespace dozely
