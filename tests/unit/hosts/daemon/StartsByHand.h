// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"
#include "hosts/common/performing/PerformerStart.h"

#include <fcntl.h>
#include <poll.h>

#include <map>

/// Starts no program: the test plays the performers that were asked for, and says when they were started.
class StartsByHand : public PerformerStart
{
public:
    struct Asked {
        Performer performer;
        dozely::Descriptor input;
        Answered answered;
    };

    void start(const Performer &performer, Answered answered) override
    {
        const int input = ::fcntl(performer.input, F_DUPFD_CLOEXEC, 3);
        asked.push_back({performer, dozely::Descriptor(input), std::move(answered)});
    }
    void tellEnd(const QString &name, Told told) override { ends.insert_or_assign(name, std::move(told)); }
    void forget(const QString &name) override { forgotten += name; }

    /// Whether the host has closed its end of the connection to that one.
    bool isCalledOff(std::size_t index) const
    {
        pollfd connection{asked.at(index).input.get(), POLLIN, 0};
        return ::poll(&connection, 1, 0) == 1 && (connection.revents & POLLHUP) != 0;
    }

    std::vector<Asked> asked;
    std::map<QString, Told> ends;
    QStringList forgotten;
};
