// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ChildProgram.h"

#include <chrono>

namespace dozely
{

/// A program that ChildProgram::start has started. Destroyed, the object kills the program and its group, and
/// waits until the program is gone.
///
/// THREADING: the thread that started it.
class DOZELYKIT_EXPORT RunningProgram
{
public:
    ~RunningProgram();
    RunningProgram(const RunningProgram &) = delete;
    RunningProgram &operator=(const RunningProgram &) = delete;

    /// The program goes on when this object is destroyed; how it ends is not told any more.
    void letGo();

    /// Sends a signal to the program and its group; nothing once the program has ended.
    void sendSignal(int number) const;

    /// For how long the program has stood ready to run and had no processor, since it was started: what it
    /// took longer by that is the machine's fault. Its first thread alone counts. 0 where the machine does
    /// not tell, and once the program has ended. Any moment; it does not block.
    std::chrono::milliseconds timeWithoutProcessor() const;

private:
    friend struct ChildProgram;
    struct Private;
    RunningProgram(const ChildProgram &program, ChildProgram::Ended ended);
    std::unique_ptr<Private> d;
};

} // namespace dozely
