// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QHash>

#include <chrono>
#include <optional>

namespace dozely
{

/// How many notifications of each user are delivered: a burst of 256, then 64 a second. A user who floods the
/// bus is not to keep the process from what others post, nor from its own work. Those whose user could not be
/// found out share one measure.
class DOZELYKIT_AUTOTEST_EXPORT DistributedQuota
{
public:
    static constexpr int burst = 256;
    static constexpr int perSecond = 64;

    /// Whether one more notification of that user is delivered now. The first one that is not costs a line,
    /// and the next line comes when the user has been quiet for long enough to have the whole burst again.
    bool take(const std::optional<quint32> &user);

private:
    struct Measure {
        double left = burst;
        std::chrono::milliseconds last{0};
        bool isReported = false;
    };

    QHash<qint64, Measure> m_measures; ///< By user id; -1 for the unknown.
};

} // namespace dozely
