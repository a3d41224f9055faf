// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/IdleMemory.h"

#include <cstdio>
#include <memory>

#include <malloc.h>
#include <sys/mman.h>

namespace dozely
{

namespace
{
/// A mapping of this process, as proc_pid_smaps(5) tells it.
struct Mapping {
    void *begin = nullptr;
    void *end = nullptr;
    bool isUnchangeable = false; ///< Private, of a file, and not to be written.
};

/// The mapping whose description begins with this line; an empty one where none does.
Mapping mappingOf(const char *line)
{
    Mapping mapping;
    char rights[5] = {};
    unsigned long long inode = 0;
    if (std::sscanf(line, "%p-%p %4s %*x %*x:%*x %llu", &mapping.begin, &mapping.end, rights, &inode) != 4)
        return {};
    mapping.isUnchangeable = rights[0] == 'r' && rights[1] == '-' && rights[3] == 'p' && inode != 0;
    return mapping;
}

void giveFilePagesBack()
{
    // Read as a stream, not through Qt: this must not take the memory that it is to give back.
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen("/proc/self/smaps", "re"),
                                                                &std::fclose);
    if (!file)
        return;
    char line[512];
    Mapping mapping;
    while (std::fgets(line, sizeof line, file.get())) {
        if (const Mapping next = mappingOf(line); next.end) {
            mapping = next;
            continue;
        }
        // Pages that are this process's own are not the file's any more: the linker's relocations, which are
        // protected later, or what a debugger wrote.
        unsigned long own = 0;
        if (mapping.isUnchangeable && std::sscanf(line, "Anonymous: %lu kB", &own) == 1 && own == 0)
            ::madvise(mapping.begin, static_cast<char *>(mapping.end) - static_cast<char *>(mapping.begin),
                      MADV_DONTNEED);
    }
}
} // namespace

void IdleMemory::giveHeapBack()
{
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

void IdleMemory::giveBack()
{
    giveHeapBack();
    giveFilePagesBack();
}

} // namespace dozely
