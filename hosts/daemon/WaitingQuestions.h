// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PerformanceOrder.h"
#include "hosts/daemon/ParametersDigest.h"

#include <deque>
#include <functional>
#include <optional>

/// Questions about plug-ins that nobody has been asked yet: those about what is due before all others, each
/// in the order in which they came.
class WaitingQuestions
{
public:
    struct Question {
        PerformanceOrder about;
        ParametersDigest digest;
        quint64 generation = 0; ///< Of the bundle: one that became another is not asked about.
        bool isDue = false;
    };

    /// So many may wait that are not due: each holds its parameters.
    static constexpr size_t most = 1024;

    bool isFull() const { return m_later.size() >= most; }
    void add(Question question);

    /// What waits for its turn is due by now. Nothing when it is due already, or does not wait.
    void makeDue(const QString &bundlePath, const ParametersDigest &digest);

    /// The next; absent when there is none.
    std::optional<Question> take();

    /// Drops those that `isUnwanted` answers true for, which is called once for each.
    void drop(const std::function<bool(const Question &)> &isUnwanted);

private:
    std::deque<Question> m_due;
    std::deque<Question> m_later;
};
