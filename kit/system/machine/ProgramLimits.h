// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <optional>

namespace dozely
{

/// What a program may take of the machine, as systemd.exec(5) and systemd.resource-control(5) have it. What
/// is absent is left as it is for any program.
struct ProgramLimits {
    std::optional<int> nice; ///< -20 to 19, the lower the sooner it gets a processor.
    std::optional<quint64>
        cpuWeight; ///< 1 to 10000, its share of the processors among others; others have 100.
    std::optional<quint64> ioWeight; ///< The same for reading and writing of disks.
    std::optional<quint64> memory;   ///< Bytes, at most.

    bool operator==(const ProgramLimits &) const = default;
};

} // namespace dozely
