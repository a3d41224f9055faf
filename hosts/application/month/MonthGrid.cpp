// SPDX-License-Identifier: MIT
#include "hosts/application/month/MonthGrid.h"

#include "hosts/application/month/MonthDelegate.h"
#include "hosts/application/month/MonthModel.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>

MonthGrid::MonthGrid(const QLocale &locale, QWidget *parent)
    : QTableView(parent), m_model(new MonthModel(locale, this)), m_delegate(new MonthDelegate(*m_model, this))
{
    setModel(m_model);
    setItemDelegate(m_delegate);
    setAccessibleName(tr("Month"));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    verticalHeader()->setMinimumSectionSize(m_delegate->sizeHint(viewOptionsForSize(), {}).height());
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
}

QStyleOptionViewItem MonthGrid::viewOptionsForSize() const
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    return option;
}

void MonthGrid::setToday(const QDate &day)
{
    m_delegate->setToday(day);
    viewport()->update();
}

void MonthGrid::setDay(const QDate &day)
{
    if (!day.isValid())
        return;
    const bool isOther = day != m_day;
    m_day = day;
    const QDate month(day.year(), day.month(), 1);
    if (m_model->firstOfMonth() != month) {
        m_model->setMonth(day);
        Q_EMIT monthChanged();
    }
    setCurrentIndex(m_model->indexOf(day));
    if (isOther)
        Q_EMIT dayChanged(day);
}

void MonthGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    const QDate day = m_model->dayAt(current);
    if (day.isValid() && day != m_day) {
        m_day = day;
        Q_EMIT dayChanged(day);
    }
}

QDate MonthGrid::dayAfter(int key) const
{
    const int ahead = isRightToLeft() ? -1 : 1;
    switch (key) {
    case Qt::Key_Left:
        return m_day.addDays(-ahead);
    case Qt::Key_Right:
        return m_day.addDays(ahead);
    case Qt::Key_Up:
        return m_day.addDays(-MonthModel::daysOfWeek);
    case Qt::Key_Down:
        return m_day.addDays(MonthModel::daysOfWeek);
    case Qt::Key_PageUp:
        return m_day.addMonths(-1);
    case Qt::Key_PageDown:
        return m_day.addMonths(1);
    case Qt::Key_Home:
        return {m_day.year(), m_day.month(), 1};
    case Qt::Key_End:
        return {m_day.year(), m_day.month(), m_day.daysInMonth()};
    default:
        return {};
    }
}

void MonthGrid::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (const QDate day = isPlain ? dayAfter(event->key()) : QDate(); day.isValid())
        setDay(day);
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT dayOpened();
    else
        QTableView::keyPressEvent(event);
}

void MonthGrid::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->pos());
    const auto hit = m_delegate->hitAt(event->pos(), visualRect(index), fontMetrics(), index);
    if (event->button() == Qt::LeftButton && index.isValid() && hit.isMore)
        Q_EMIT dayOpened();
}

void MonthGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->pos());
    const auto hit = m_delegate->hitAt(event->pos(), visualRect(index), fontMetrics(), index);
    if (index.isValid() && hit.occurrence)
        Q_EMIT occurrenceOpened(*hit.occurrence);
    else if (index.isValid())
        Q_EMIT dayOpened();
}

void MonthGrid::contextMenuEvent(QContextMenuEvent *event)
{
    const QModelIndex index = indexAt(event->pos());
    const auto hit = m_delegate->hitAt(event->pos(), visualRect(index), fontMetrics(), index);
    if (event->reason() != QContextMenuEvent::Mouse) // which of the day's cannot be said by keys here
        Q_EMIT dayOpened();
    else if (index.isValid() && hit.occurrence)
        Q_EMIT menuWanted(*hit.occurrence, event->globalPos());
}
