// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QList>

#include <optional>
#include <set>
#include <tuple>

/// Occurrences to come, in the order in which they are to be performed: by their moment, in the order of the
/// store where that is equal. Those that are held back stand apart, so that what waits is never in the way of
/// what is next. Each operation takes the time of a search in a tree, and that of what it gives back.
class PendingOccurrences
{
public:
    /// Milliseconds since 1970, UTC, and a schedule's place in the store.
    struct Item {
        qint64 moment;
        qint32 place;
        qint64 date; ///< The occurrence's own.

        bool operator==(const Item &) const = default;
        bool operator<(const Item &other) const
        {
            return std::tie(moment, place, date) < std::tie(other.moment, other.place, other.date);
        }
    };

    void clear();
    void insert(const Item &item, bool isHeldBack);
    void remove(const Item &item);

    /// Nothing happens for an item that is not there.
    void hold(const Item &item, bool isHeldBack);

    bool contains(const Item &item) const { return m_free.contains(item) || m_held.contains(item); }

    /// The earliest moment after that one of what is not held back; absent when there is none.
    std::optional<qint64> nextAfter(qint64 moment) const;

    /// What is not held back and has a moment after `after`, up to `upTo`.
    QList<Item> between(qint64 after, qint64 upTo) const;

    /// What has that very moment, held back or not, in the order of the store.
    QList<Item> at(qint64 moment) const;

private:
    std::set<Item> m_free;
    std::set<Item> m_held;
};
