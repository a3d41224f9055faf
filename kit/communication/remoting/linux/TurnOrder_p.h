// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QtGlobal>

#include <chrono>
#include <deque>
#include <map>
#include <optional>

namespace dozely
{

/// Whose turn it is among sources that have something to do: those of the user who has had the least time go
/// first, one after the other. So each user gets the same share, however many streams he has and whatever a
/// message of his costs. Who comes, or comes back, begins where the others are: time not used is not saved.
///
/// Not thread-safe.
class DOZELYKIT_AUTOTEST_EXPORT TurnOrder
{
public:
    using User = quint64;

    /// The source waits for a turn on that user's account. It must not wait already.
    void add(quint64 source, User user);

    /// The source whose turn it is, which waits no more; absent when none waits.
    std::optional<quint64> next();

    /// What a turn has taken. It costs no more than 100 ms: what takes longer has mostly waited, for a person
    /// or for a reply, while others had their turns, and must not shut its user out for as long again.
    void charge(User user, std::chrono::nanoseconds time);

    bool isEmpty() const { return m_waiting == 0; }

private:
    struct Account {
        std::chrono::nanoseconds taken{0};
        std::deque<quint64> sources;
    };

    std::map<User, Account> m_accounts;  ///< Of those who wait, and of those ahead of the others.
    std::chrono::nanoseconds m_level{0}; ///< What those who wait have had at least.
    size_t m_waiting = 0;
};

} // namespace dozely
