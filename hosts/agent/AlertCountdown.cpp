// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertCountdown.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/agent/TimeLeft.h"

#include <algorithm>

using namespace dozely;

using std::chrono::milliseconds;

AlertCountdown::AlertCountdown() : m_timer(Port<Clock>::current()->makeAbsoluteTimer())
{
    connect(m_timer.get(), &AbsoluteTimer::due, this, &AlertCountdown::step);
    connect(m_timer.get(), &AbsoluteTimer::clockChanged, this, &AlertCountdown::step);
}

AlertCountdown::~AlertCountdown() = default;

void AlertCountdown::begin(const QDateTime &date)
{
    if (!date.isValid()) {
        stop();
        m_date = {};
        return;
    }
    if (date == m_date)
        return; // shown anew, it goes on
    m_date = date;
    m_whole = std::max(milliseconds(Port<Clock>::current()->currentDate().msecsTo(date)), milliseconds(1000));
    if (m_isSeen)
        m_timer->start(date);
    step();
}

void AlertCountdown::setSeen(bool isSeen)
{
    m_isSeen = isSeen;
    m_next.reset();
    if (!isSeen) {
        m_timer->stop();
        return;
    }
    if (m_date.isValid())
        m_timer->start(m_date);
    step();
}

void AlertCountdown::stop()
{
    m_timer->stop();
    m_next.reset();
}

void AlertCountdown::step()
{
    m_next.reset();
    if (!m_date.isValid())
        return;
    const auto clock = Port<Clock>::current();
    const milliseconds left(std::max<qint64>(clock->currentDate().msecsTo(m_date), 0));
    Q_EMIT stepped(left);
    if (left.count() == 0 || !m_isSeen)
        return;
    m_next = std::make_unique<QObject>();
    clock->callAfter(TimeLeft::untilNextStep(left, m_whole), m_next.get(), [this] { step(); });
}
