// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ConsoleUser.h"

/// A console at which whoever the test says sits.
class FakeConsoleUser : public dozely::ConsoleUser
{
public:
    std::optional<User> user;
    std::optional<User> current() override { return user; }
};
