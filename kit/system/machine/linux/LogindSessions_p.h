// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/LoginSessions.h"

#include <chrono>

namespace dozely
{

/// Sessions as the login manager tells them over the system bus. When one was used last is known of a
/// terminal by its latest input; a desktop says that it is idle, and since when, and what it says while it is
/// not idle tells nothing.
class DOZELYKIT_AUTOTEST_EXPORT LogindSessions : public LoginSessions
{
public:
    /// Asks no longer than `limit`, for all questions of one answer together.
    explicit LogindSessions(std::chrono::milliseconds limit = std::chrono::seconds(2)) : m_limit(limit) {}
    std::optional<QList<Session>> current() override;

private:
    std::chrono::milliseconds m_limit;
};

} // namespace dozely
