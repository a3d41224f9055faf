// SPDX-License-Identifier: MIT
#pragma once

/// How much more may be looked at to answer one question about a rule, in days, hours or times of day looked
/// at, whichever the rule makes us look at. Somebody may write a rule that never gives anything, or once in
/// ten thousand years; what is counted in steps ends on a slow machine at the same place as on a fast one. It
/// reaches through a thousand years day by day, and takes a few milliseconds.
class StepBudget
{
public:
    static constexpr int ofAQuestion = 400'000;
    /// What it costs to ask the zone for its next stretch, which beyond the changes that its file lists is
    /// computed.
    static constexpr int ofAStretch = 200;

    explicit StepBudget(int steps = ofAQuestion) : m_left(steps) {}

    /// Takes steps out; false when there are none left.
    bool take(int steps = 1)
    {
        m_left = m_left > steps ? m_left - steps : 0;
        return m_left > 0;
    }
    bool isSpent() const { return m_left == 0; }

private:
    int m_left;
};
