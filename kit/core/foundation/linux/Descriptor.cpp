// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Descriptor.h"

#include <unistd.h>

void dozely::Descriptor::reset(int number)
{
    if (m_number >= 0)
        ::close(m_number);
    m_number = number;
}
