// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Pipe.h"
#include "DozelyKit/system/machine/ChildProgram.h"

#include <sys/types.h>
#include <vector>

namespace dozely
{

/// The start of one child process. All that the child needs is made ready before the fork: between fork and
/// exec nothing may allocate or lock.
class ChildStart
{
public:
    explicit ChildStart(const ChildProgram &program);

    /// Forks; the child becomes the program, with `output` as its standard output (-1 for none). The id
    /// of the child, which has to be waited for. Once. Waits for nothing.
    Result<pid_t> fork(int output);

    /// Why the program of fork did not start. Waits until it runs, or the child has ended.
    Result<void> outcome() const;

    /// Starts the program as a child of a child that ends at once: nobody has to wait for it. Waits until it
    /// runs.
    Result<void> launchOrphan() const;

    /// The last error of the C library, in `step`.
    static Error failure(const char *step);

    /// Waits until a child has ended: how it did.
    static ChildProgram::Ending waitFor(pid_t child);

private:
    struct Failure {
        char step[16];
        int code;
    };
    struct Orphan;
    Failure become(int output) const;
    static int beBetween(void *shared);
    static int beOrphan(void *shared);

    Pipe m_report; // a Failure; nothing when the program runs
    QByteArray m_path;
    QByteArray m_folder;
    bool m_needsFolder;
    int m_input;
    bool m_sharesOutput;
    QByteArrayList m_arguments;
    QByteArrayList m_environment;
    std::vector<char *> m_argumentVector;
    std::vector<char *> m_environmentVector;
};

} // namespace dozely
