// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/LoginSessions.h"

namespace dozely
{

/// Sessions as the login manager tells them over the system bus. When one was used last is known of a
/// terminal by its latest input; a desktop says that it is idle, and since when, and what it says while it is
/// not idle tells nothing.
class DOZELYKIT_AUTOTEST_EXPORT LogindSessions : public LoginSessions
{
public:
    std::optional<QList<Session>> current() override;
};

} // namespace dozely
