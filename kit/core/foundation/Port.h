// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace dozely
{

/// Where a port is reached: what the library asks of the machine in one matter, behind an abstract class.
///
///     const QDateTime now = Port<Clock>::current()->currentDate();
///
/// The header of each port declares its own `current`, and the linux/ folder beside it makes there, at the
/// first call, what this machine has. A port that another library or a host fills instead (the header says
/// so) has its place beside its header and begins as null. Tests put something else in its place before the
/// code under test runs.
///
/// THREADING: `current` may be called from any thread; replacing what it refers to is for the head of main
/// and for tests.
template<typename Interface>
class Port
{
public:
    /// Null only where the port's header says so. Never destroyed: whatever runs while the process ends may
    /// still log, and the log asks the clock.
    static std::shared_ptr<Interface> &current();
};

} // namespace dozely
