// SPDX-License-Identifier: MIT
#include "hosts/application/when/ToggleGrid.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QToolButton>

#include <algorithm>

ToggleGrid::ToggleGrid(int columns, const QList<Item> &items, QWidget *parent)
    : QWidget(parent), m_columns(columns)
{
    constexpr int gap = 3;
    auto *const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(gap);
    layout->setColumnStretch(columns, 1);
    int place = 0;
    for (const Item &item : items) {
        auto *const button = new QToolButton(this);
        button->setCheckable(true);
        button->setText(item.text);
        button->setAccessibleName(item.name);
        button->setToolTip(item.name);
        button->setFocusPolicy(Qt::ClickFocus);
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        button->installEventFilter(this);
        connect(button, &QToolButton::clicked, this, &ToggleGrid::changed);
        connect(button, &QToolButton::toggled, this, [this, button] { colour(button); });
        layout->addWidget(button, place / m_columns, place % m_columns, 1, item.columns);
        place += item.columns;
        m_buttons += button;
        m_values += item.value;
    }
    if (m_buttons.isEmpty())
        return;
    setStop(m_buttons.constFirst());
    setFocusProxy(m_buttons.constFirst());
}

QList<int> ToggleGrid::chosen() const
{
    QList<int> values;
    for (qsizetype i = 0; i < m_buttons.size(); ++i) {
        if (m_buttons.at(i)->isChecked())
            values += m_values.at(i);
    }
    std::sort(values.begin(), values.end());
    return values;
}

void ToggleGrid::choose(const QList<int> &values)
{
    for (qsizetype i = 0; i < m_buttons.size(); ++i)
        m_buttons.at(i)->setChecked(values.contains(m_values.at(i)));
}

bool ToggleGrid::eventFilter(QObject *watched, QEvent *event)
{
    const qsizetype place = m_buttons.indexOf(qobject_cast<QAbstractButton *>(watched));
    if (place < 0)
        return false;
    if (event->type() == QEvent::FocusIn)
        setStop(m_buttons.at(place));
    if (event->type() != QEvent::KeyPress)
        return false;
    const int ahead = isRightToLeft() ? -1 : 1;
    qsizetype next = place;
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Right:
        next += ahead;
        break;
    case Qt::Key_Left:
        next -= ahead;
        break;
    case Qt::Key_Down:
        next += m_columns;
        break;
    case Qt::Key_Up:
        next -= m_columns;
        break;
    case Qt::Key_Home:
        next = 0;
        break;
    case Qt::Key_End:
        next = m_buttons.size() - 1;
        break;
    default:
        return false;
    }
    next = std::clamp<qsizetype>(next, 0, m_buttons.size() - 1);
    m_buttons.at(next)->setFocus(Qt::TabFocusReason);
    return true;
}

void ToggleGrid::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    for (QAbstractButton *const button : std::as_const(m_buttons))
        colour(button);
}

void ToggleGrid::colour(QAbstractButton *button) const
{
    // A button that is merely sunk cannot be told from the others on a dark ground.
    QPalette colours = palette();
    if (button->isChecked()) {
        colours.setBrush(QPalette::Button, colours.brush(QPalette::Highlight));
        colours.setBrush(QPalette::ButtonText, colours.brush(QPalette::HighlightedText));
    }
    button->setPalette(colours);
}

void ToggleGrid::setStop(QAbstractButton *button)
{
    for (QAbstractButton *const other : std::as_const(m_buttons))
        other->setFocusPolicy(other == button ? Qt::StrongFocus : Qt::ClickFocus);
}
