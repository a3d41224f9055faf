// SPDX-License-Identifier: MIT
#pragma once

#include <dlfcn.h>

namespace dozely
{

/// A shared library of the machine that is opened when something needs it, so that a process which never does
/// has neither it nor what it needs itself in memory. Stays open for the life of the process.
///
/// EXAMPLE
///     MachineLibrary library("libm.so.6");
///     double (*cosine)(double) = nullptr;
///     if (library.find(cosine, "cos"))
///         cosine(1);
///
/// THREADING: any thread. BLOCKING: the constructor, for the disk.
class MachineLibrary
{
public:
    /// `name` as the dynamic linker knows it (dlopen(3)), its version included.
    explicit MachineLibrary(const char *name) : m_handle(::dlopen(name, RTLD_NOW | RTLD_LOCAL)) {}

    /// Sets `function` to what the library calls `symbol`; false, and null, when the library is not there or
    /// has no such thing.
    template<class Function>
    bool find(Function *&function, const char *symbol) const
    {
        function = m_handle ? reinterpret_cast<Function *>(::dlsym(m_handle, symbol)) : nullptr;
        return function != nullptr;
    }

private:
    void *m_handle;
};

} // namespace dozely
