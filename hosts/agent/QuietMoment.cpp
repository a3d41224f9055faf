// SPDX-License-Identifier: MIT
#include "hosts/agent/QuietMoment.h"

#include "DozelyKit/core/foundation/Clock.h"

#include <utility>

using namespace dozely;

void QuietMoment::wait(std::function<void()> work)
{
    m_waiting = std::make_unique<QObject>();
    Port<Clock>::current()->callAfter(pause, m_waiting.get(), std::move(work));
}
