// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ConsoleUser.h"

namespace dozely
{

/// The user of the active session on the seat of the machine itself ("seat0"), as the login manager tells it
/// over the system bus. Asked afresh each time, so a login manager or a bus that was restarted is found
/// again.
class DOZELYKIT_AUTOTEST_EXPORT LogindConsoleUser : public ConsoleUser
{
public:
    std::optional<User> current() override;
};

} // namespace dozely
