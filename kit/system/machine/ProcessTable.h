// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QByteArray>
#include <QList>

namespace dozely
{

/// Port: the processes that run on this machine.
class DOZELYKIT_EXPORT ProcessTable
{
public:
    struct Process {
        qint32 identifier;
        quint32 realUserId;
        QByteArray name; ///< As the kernel keeps it, which may have cut it within a character.
    };

    virtual ~ProcessTable() = default;

    /// The processes in the order of the kernel's table; empty when it cannot be read. A process that ends
    /// while the table is read, and one whose user cannot be found out, may be missing.
    virtual QList<Process> processes() = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<ProcessTable> &Port<ProcessTable>::current();

} // namespace dozely
