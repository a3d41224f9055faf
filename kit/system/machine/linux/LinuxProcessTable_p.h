// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ProcessTable.h"

namespace dozely
{

/// The process folder of the kernel. It lists processes by ascending id and keeps at most 15 bytes of a name.
class DOZELYKIT_AUTOTEST_EXPORT LinuxProcessTable : public ProcessTable
{
public:
    explicit LinuxProcessTable(QByteArray folder = "/proc") : m_folder(std::move(folder)) {}
    QList<Process> processes() override;

private:
    QByteArray m_folder;
};

} // namespace dozely
