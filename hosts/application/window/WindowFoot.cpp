// SPDX-License-Identifier: MIT
#include "hosts/application/window/WindowFoot.h"

#include <algorithm>

WindowFoot::WindowFoot(QWidget *main, QWidget *other, QWidget *parent)
    : QWidget(parent), m_main(main), m_other(other), m_row(new QBoxLayout(QBoxLayout::LeftToRight, this))
{
    m_row->setContentsMargins(14, 10, 14, 10);
    m_row->setSpacing(12);
    m_row->addWidget(main, 1);
    m_row->addWidget(other, 0, Qt::AlignTrailing);
}

QSize WindowFoot::minimumSizeHint() const
{
    const QMargins margins = m_row->contentsMargins();
    const int width = std::max(m_main->minimumSizeHint().width(), m_other->minimumSizeHint().width());
    return {width + margins.left() + margins.right(), m_row->totalMinimumSize().height()};
}

void WindowFoot::resizeEvent(QResizeEvent *event)
{
    const QMargins margins = m_row->contentsMargins();
    const int wanted = m_main->minimumSizeHint().width() + m_other->minimumSizeHint().width() +
                       m_row->spacing() + margins.left() + margins.right();
    m_row->setDirection(width() < wanted ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    QWidget::resizeEvent(event);
}
