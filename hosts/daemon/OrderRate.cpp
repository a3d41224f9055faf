// SPDX-License-Identifier: MIT
#include "hosts/daemon/OrderRate.h"

bool OrderRate::take(quint32 userId, std::chrono::milliseconds now)
{
    forgetBefore(now - std::chrono::minutes(1));
    auto &taken = m_taken[userId];
    if (taken.size() >= mostAMinute)
        return false;
    taken += now;
    return true;
}

void OrderRate::forgetBefore(std::chrono::milliseconds moment)
{
    m_taken.removeIf([moment](const QHash<quint32, QList<std::chrono::milliseconds>>::iterator &user) {
        QList<std::chrono::milliseconds> &taken = user.value();
        taken.removeIf([moment](std::chrono::milliseconds when) { return when <= moment; });
        return taken.isEmpty();
    });
}
