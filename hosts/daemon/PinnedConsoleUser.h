// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ConsoleUser.h"

#include <memory>

/// The console user, held still while an occurrence is handed over: the user who is told about it is then
/// surely the one who is remembered as having it, even when the console changes hands in between.
class PinnedConsoleUser : public dozely::ConsoleUser
{
public:
    explicit PinnedConsoleUser(std::shared_ptr<dozely::ConsoleUser> real);

    std::optional<User> current() override;

    /// Asks who is there and keeps the answer until release. Blocks as current does.
    std::optional<User> pin();
    void release();

private:
    std::shared_ptr<dozely::ConsoleUser> m_real;
    std::optional<User> m_pinned;
};
