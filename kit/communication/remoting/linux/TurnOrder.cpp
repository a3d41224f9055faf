// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/TurnOrder_p.h"

#include <algorithm>

namespace dozely
{

namespace
{
constexpr std::chrono::milliseconds dearestTurn(100);
} // namespace

void TurnOrder::add(quint64 source, User user)
{
    Account &account = m_accounts[user];
    account.taken = std::max(account.taken, m_level);
    account.sources.push_back(source);
    ++m_waiting;
}

std::optional<quint64> TurnOrder::next()
{
    Account *first = nullptr;
    for (auto each = m_accounts.begin(); each != m_accounts.end();) {
        Account &account = each->second;
        if (account.sources.empty() && account.taken <= m_level) {
            each = m_accounts.erase(each);
            continue;
        }
        if (!account.sources.empty() && (!first || account.taken < first->taken))
            first = &account;
        ++each;
    }
    if (!first)
        return {};
    m_level = std::max(m_level, first->taken);
    const quint64 source = first->sources.front();
    first->sources.pop_front();
    --m_waiting;
    return source;
}

void TurnOrder::charge(User user, std::chrono::nanoseconds time)
{
    Account &account = m_accounts[user];
    account.taken = std::max(account.taken, m_level) + std::min<std::chrono::nanoseconds>(time, dearestTurn);
}

} // namespace dozely
