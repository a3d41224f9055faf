// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/linux/DistributedQuota_p.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"

#include <QString>

#include <algorithm>

namespace dozely
{

namespace
{
// Users are few; ids of containers may be many.
constexpr qsizetype mostUsers = 1024;

double secondsFrom(std::chrono::milliseconds duration)
{
    return std::chrono::duration<double>(duration).count();
}
} // namespace

bool DistributedQuota::take(const std::optional<quint32> &user)
{
    const std::chrono::milliseconds now = Port<Clock>::current()->steadyTime();
    const qint64 key = user ? qint64(*user) : -1;
    if (!m_measures.contains(key) && m_measures.size() >= mostUsers)
        m_measures.removeIf([now](const auto &measure) {
            return measure->left + perSecond * secondsFrom(now - measure->last) >= burst;
        });
    if (!m_measures.contains(key)) {
        if (m_measures.size() >= mostUsers)
            return false;
        m_measures.insert(key, {burst, now, false});
    }
    Measure &measure = m_measures[key];
    measure.left = std::min<double>(burst, measure.left + perSecond * secondsFrom(now - measure.last));
    measure.last = now;
    if (measure.left >= burst)
        measure.isReported = false;
    if (measure.left >= 1) {
        measure.left -= 1;
        return true;
    }
    if (!measure.isReported) {
        measure.isReported = true;
        reportProblem(QString("User %1 posts too many notifications: some are not delivered.")
                          .arg(user ? QString::number(*user) : QString("(unknown)")));
    }
    return false;
}

} // namespace dozely
