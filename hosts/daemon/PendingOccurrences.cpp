// SPDX-License-Identifier: MIT
#include "hosts/daemon/PendingOccurrences.h"

#include <algorithm>
#include <limits>

namespace
{
constexpr PendingOccurrences::Item lastOf(qint64 moment)
{
    return {moment, std::numeric_limits<qint32>::max(), std::numeric_limits<qint64>::max()};
}

constexpr PendingOccurrences::Item firstOf(qint64 moment)
{
    return {moment, -1, std::numeric_limits<qint64>::min()};
}
} // namespace

void PendingOccurrences::clear()
{
    m_free.clear();
    m_held.clear();
}

void PendingOccurrences::insert(const Item &item, bool isHeldBack)
{
    (isHeldBack ? m_held : m_free).insert(item);
}

void PendingOccurrences::remove(const Item &item)
{
    if (m_free.erase(item) == 0)
        m_held.erase(item);
}

void PendingOccurrences::hold(const Item &item, bool isHeldBack)
{
    auto &to = isHeldBack ? m_held : m_free;
    auto &from = isHeldBack ? m_free : m_held;
    if (auto node = from.extract(item))
        to.insert(std::move(node));
}

std::optional<qint64> PendingOccurrences::nextAfter(qint64 moment) const
{
    const auto next = m_free.upper_bound(lastOf(moment));
    return next != m_free.cend() ? std::optional(next->moment) : std::nullopt;
}

QList<PendingOccurrences::Item> PendingOccurrences::between(qint64 after, qint64 upTo) const
{
    if (after >= upTo)
        return {};
    return QList<Item>(m_free.upper_bound(lastOf(after)), m_free.upper_bound(lastOf(upTo)));
}

QList<PendingOccurrences::Item> PendingOccurrences::at(qint64 moment) const
{
    QList<Item> items;
    for (const auto *const set : {&m_free, &m_held})
        std::copy(set->lower_bound(firstOf(moment)), set->upper_bound(lastOf(moment)),
                  std::back_inserter(items));
    std::sort(items.begin(), items.end());
    return items;
}
