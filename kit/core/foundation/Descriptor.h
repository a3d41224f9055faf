// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <utility>

namespace dozely
{

/// A file descriptor that is closed with its owner; -1 for none.
class Descriptor
{
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    Descriptor(Descriptor &&other) noexcept : m_number(other.release()) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor() { reset(); }

    bool isValid() const { return m_number >= 0; }
    int get() const { return m_number; }
    /// Gives the descriptor away: whoever calls this closes it.
    int release() { return std::exchange(m_number, -1); }
    /// Closes what it holds and takes over `number`.
    DOZELYKIT_EXPORT void reset(int number = -1);

private:
    int m_number;
};

} // namespace dozely
