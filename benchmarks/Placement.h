// SPDX-License-Identifier: MIT
#pragma once

#include "BareSocket.h"

#include <QString>

#include <sched.h>
#include <vector>

/// Where the processes of an exchange run. To wake a process on another processor takes longer than a small
/// exchange itself, and where the scheduler leaves the two is an accident that lasts for a whole run: a ratio
/// means something only when both of its sides run in the same places.
struct Placement {
    QString name;
    std::vector<int> ours;   ///< The processors of this process,
    std::vector<int> theirs; ///< and those of the servers.

    /// Moves the main threads of this process and of the servers there.
    void take(const std::vector<pid_t> &servers) const
    {
        place(0, ours);
        for (const pid_t server : servers)
            place(server, theirs);
    }

    /// All on one processor; where there are two, client and servers apart; and wherever the scheduler likes.
    static std::vector<Placement> all()
    {
        const std::vector<int> usable = usableProcessors();
        const std::vector<int> first{usable.front()};
        std::vector<Placement> placements{{"one processor", first, first}};
        if (usable.size() > 1)
            placements.push_back({"two processors", first, {usable.back()}});
        placements.push_back({"anywhere", usable, usable});
        return placements;
    }

private:
    static std::vector<int> usableProcessors()
    {
        cpu_set_t set;
        if (::sched_getaffinity(0, sizeof set, &set) != 0)
            fail("sched_getaffinity");
        std::vector<int> processors;
        for (int i = 0; i < CPU_SETSIZE; ++i) {
            if (CPU_ISSET(i, &set))
                processors.push_back(i);
        }
        return processors;
    }

    static void place(pid_t process, const std::vector<int> &processors)
    {
        cpu_set_t set;
        CPU_ZERO(&set);
        for (const int processor : processors)
            CPU_SET(processor, &set);
        if (::sched_setaffinity(process, sizeof set, &set) != 0)
            fail("sched_setaffinity");
    }
};
