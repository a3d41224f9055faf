// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/Recurrence.h"

#include <QExplicitlySharedDataPointer>
#include <QSharedData>

#include <utility>

/// A recurrence that never changes, or none: a value in the space of a pointer, since most schedules have
/// none. Copies share it. It is read as a std::optional is, and equal when what it holds is.
class SharedRecurrence
{
public:
    SharedRecurrence() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a recurrence is one that is held
    SharedRecurrence(Recurrence recurrence) : m_held(new Held(std::move(recurrence))) {}

    bool has_value() const { return m_held.constData() != nullptr; }
    explicit operator bool() const { return has_value(); }

    /// Only where there is one.
    /// @{
    const Recurrence &operator*() const { return m_held->recurrence; }
    const Recurrence *operator->() const { return &m_held->recurrence; }
    /// @}

    /// An empty one where there is none.
    Recurrence valueOrEmpty() const { return has_value() ? **this : Recurrence(); }

    void reset() { m_held.reset(); }

    friend bool operator==(const SharedRecurrence &a, const SharedRecurrence &b)
    {
        return a.m_held == b.m_held || (a && b && *a == *b);
    }

private:
    struct Held : QSharedData {
        explicit Held(Recurrence recurrence) : recurrence(std::move(recurrence)) {}
        const Recurrence recurrence;
    };
    QExplicitlySharedDataPointer<const Held> m_held;
};
