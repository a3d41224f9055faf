// SPDX-License-Identifier: MIT
#include "hosts/application/window/ScheduleAdding.h"

#include "hosts/application/book/ScheduleKeys.h"
#include "hosts/application/window/NewSchedule.h"

#include <utility>

ScheduleAdding::ScheduleAdding(ScheduleBook &book, ActionSides &sides, quint32 user)
    : m_book(book), m_sides(sides), m_user(user)
{
    connect(&m_sides, &ActionSides::stateChanged, this, [this](const QString &path) {
        if (path == m_action)
            finish();
    });
}

ScheduleAdding::~ScheduleAdding() = default;

void ScheduleAdding::add()
{
    m_wish.clear();
    m_action = NewSchedule::usualAction(m_sides);
    finish();
}

void ScheduleAdding::addWish(const QVariantMap &wish)
{
    m_wish = wish;
    m_action = wish.value(ScheduleKey::bundlePath).toString();
    finish();
}

void ScheduleAdding::finish()
{
    if (!m_action.isEmpty() && m_sides.state(m_action) == ActionSides::State::Trying)
        return; // what it begins with, its side says
    const QString action = std::exchange(m_action, {});
    const QVariantMap wish = std::exchange(m_wish, {});
    Q_EMIT added(m_book.add(wish.isEmpty() ? NewSchedule::values(m_sides, action, m_user)
                                           : NewSchedule::ofWish(m_sides, wish, m_user),
                            tr("New schedule")));
}
