// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <map>

namespace dozely
{

/// How many bytes may be held on behalf of users, of each and of all together.
class ByteQuota
{
public:
    ByteQuota(qsizetype ofEach, qsizetype ofAll) : m_ofEach(ofEach), m_ofAll(ofAll) {}

    /// Whether the user may have so many more; they are his from then on.
    bool take(quint32 user, qsizetype bytes)
    {
        if (m_held + bytes > m_ofAll || heldBy(user) + bytes > m_ofEach)
            return false;
        m_held += bytes;
        m_users[user] += bytes;
        return true;
    }

    void give(quint32 user, qsizetype bytes)
    {
        const auto held = m_users.find(user);
        if (held == m_users.end())
            return;
        m_held -= bytes;
        held->second -= bytes;
        if (held->second <= 0)
            m_users.erase(held);
    }

private:
    qsizetype heldBy(quint32 user) const
    {
        const auto held = m_users.find(user);
        return held == m_users.end() ? 0 : held->second;
    }

    qsizetype m_ofEach;
    qsizetype m_ofAll;
    qsizetype m_held = 0;
    std::map<quint32, qsizetype> m_users;
};

} // namespace dozely
