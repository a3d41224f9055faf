// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AECodes.h"
#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QList>

#include <functional>
#include <memory>

class NSSocketPort;

namespace dozely
{

/// Port: the processes of this machine that use Apple events, each with its signature and a socket of its
/// own.
///
/// THREADING: any thread.
class DOZELYKIT_EXPORT AEProcesses
{
public:
    struct Process {
        qint32 identifier = 0; ///< The process id.
        quint32 userId = 0;    ///< Its effective user, by the word of the machine.
        OSType signature = 0;  ///< By the process's own word.
    };

    virtual ~AEProcesses();

    /// Makes the place where they meet, if it is missing and this process may; from then on again whenever it
    /// goes. A root daemon does so, for the processes of other users. The main thread alone.
    virtual void prepare() = 0;

    /// Those of all users that run now, in order of identifier.
    virtual QList<Process> processes() = 0;

    /// A port that listens, at which this process can be found under its signature for as long as the port
    /// lives. Null when it cannot be had. At most one a process.
    virtual std::shared_ptr<NSSocketPort> announce(OSType signature) = 0;

    /// From now on has `lost` called from the event loop whenever this process cannot be found although
    /// something has changed where they meet: what `announce` made has been taken away, or the place is there
    /// again. Who holds the port then lets go of it and announces anew. An empty one ends that. The main
    /// thread alone. Does nothing where that cannot happen.
    virtual void whenLost(std::function<void()> lost);

    /// A port that reaches the process, and the process itself into `found`; null when it does not run.
    /// Whoever connects looks who answers: another process may have taken the place in this very moment.
    virtual std::shared_ptr<NSSocketPort> portOf(qint32 identifier, Process *found) = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<AEProcesses> &Port<AEProcesses>::current();

} // namespace dozely
