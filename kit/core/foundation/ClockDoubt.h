// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QDateTime>

#include <chrono>
#include <optional>

namespace dozely
{

class Clock;

/// Whether the calendar clock can be believed. A clock whose battery is dead, or that a person mistypes, is
/// wrong for a moment; what it makes late in that moment must not be given up, nor performed.
///
/// A clock that jumps by more than five minutes is doubted, and so is one that nothing has set right when
/// this object is made, as far as it is about more than the last five minutes. It is believed again when it
/// has stood for a minute, when it says that it is synchronised, or when it is back where it was. Time that
/// the machine slept is no jump.
///
/// Only looks; whoever has it decides what to do. A plain value; may be used from any thread, by one at a
/// time.
class DOZELYKIT_EXPORT ClockDoubt
{
public:
    static constexpr std::chrono::minutes largestStep{5};
    static constexpr std::chrono::seconds timeToStand{60};

    /// `clock` must outlive the object.
    explicit ClockDoubt(const Clock &clock);

    /// Looks at the clock.
    void look();

    /// Nothing up to this date is to be decided now. Null while the clock is believed, and while it was only
    /// set back, which makes nothing late.
    QDateTime until() const { return m_until; }

    /// Whether there is a reason to look again soon.
    bool isDoubted() const { return m_since.has_value(); }

    /// How far the clock is ahead of the one that was believed; negative when it was set back, 0 when it is
    /// believed or nobody knows.
    std::chrono::seconds step() const;

    /// What the latest doubt, which is over, held up, and for how long: that is nobody's lateness.
    struct Excuse {
        QDateTime until; ///< Null when there was none.
        std::chrono::milliseconds duration{0};
    };
    Excuse excuse() const { return m_excuse; }

private:
    std::chrono::milliseconds offset() const;
    void believe();

    const Clock &m_clock;
    std::optional<std::chrono::milliseconds> m_believed; // the calendar's offset to the time since the boot
    std::chrono::milliseconds m_seen;                    // the same when it was looked at last
    std::optional<std::chrono::milliseconds> m_since;    // when the doubt began
    std::chrono::milliseconds m_stoodSince{0};           // when the clock was last seen to jump
    QDateTime m_until;
    Excuse m_excuse;
};

} // namespace dozely
