// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/PowerOrder.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"

#include <utility>

namespace dozely
{

namespace
{
constexpr std::chrono::minutes longestWait{10};
constexpr std::chrono::seconds interval{10};
} // namespace

PowerOrder::PowerOrder(SystemPower::Change change, QString name, std::function<void()> order)
    : m_change(change), m_name(std::move(name)), m_order(std::move(order))
{
}

void PowerOrder::give(AtLast atLast)
{
    m_atLast = atLast;
    m_deadline = Port<Clock>::current()->steadyTime() + longestWait;
    if (std::exchange(m_isWaiting, true))
        return; // it is tried again soon
    m_told.clear();
    tryAgain();
}

void PowerOrder::tryAgain()
{
    const auto clock = Port<Clock>::current();
    const QStringList blockers = Port<SystemPower>::current()->blockers(m_change);
    const QString names = logLabel(blockers.join("; "));
    if (blockers.isEmpty()) {
        order();
    } else if (clock->steadyTime() < m_deadline) {
        if (blockers != m_told)
            ZDRLog("%@: held up by %@; tried again for ten minutes.", m_name, names);
        m_told = blockers;
        clock->callAfter(interval, this, [this] { tryAgain(); });
        return;
    } else if (m_atLast == AtLast::Done) {
        ZDRLog("%@: done although held up by %@.", m_name, names);
        order();
    } else {
        ZDRLog("%@: given up, held up by %@.", m_name, names);
        m_isWaiting = false;
    }
    Q_EMIT ended();
}

void PowerOrder::order()
{
    m_isWaiting = false;
    m_order();
}

} // namespace dozely
