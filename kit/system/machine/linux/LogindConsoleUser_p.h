// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ConsoleUser.h"

#include <chrono>
#include <thread>

namespace dozely
{

class BusConnection;

/// The user of the active session on the seat of the machine itself ("seat0"), as the login manager tells it
/// over the system bus. It is asked afresh each time; the connection to the bus is kept, since actions wait
/// for the answer, and made again when it does not work any more, so a login manager or a bus that was
/// restarted is found again.
///
/// THREADING: any thread, one at a time; the connection is made anew for another one.
class DOZELYKIT_AUTOTEST_EXPORT LogindConsoleUser : public ConsoleUser
{
public:
    /// Asks no longer than `limit`, for all questions of one answer together.
    explicit LogindConsoleUser(std::chrono::milliseconds limit = std::chrono::seconds(2));
    ~LogindConsoleUser() override;
    std::optional<User> current() override;

private:
    std::chrono::milliseconds m_limit;
    std::unique_ptr<BusConnection> m_bus; // absent until the first question, and after one that failed
    std::thread::id m_thread;             // whose it is
};

} // namespace dozely
