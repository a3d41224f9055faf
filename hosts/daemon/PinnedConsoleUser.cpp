// SPDX-License-Identifier: MIT
#include "hosts/daemon/PinnedConsoleUser.h"

using namespace dozely;

PinnedConsoleUser::PinnedConsoleUser(std::shared_ptr<ConsoleUser> real) : m_real(std::move(real)) {}

std::optional<ConsoleUser::User> PinnedConsoleUser::current()
{
    return m_pinned ? m_pinned : m_real->current();
}

std::optional<ConsoleUser::User> PinnedConsoleUser::pin()
{
    m_pinned = m_real->current();
    return m_pinned;
}

void PinnedConsoleUser::release()
{
    m_pinned.reset();
}
