// SPDX-License-Identifier: MIT
#include "hosts/application/window/ScheduleListPane.h"

#include "hosts/application/window/ScheduleDelegate.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

ScheduleListPane::ScheduleListPane(ScheduleBook &book, ActionSides &sides, QWidget *parent)
    : QWidget(parent),
      m_schedules(new ScheduleListModel(book, sides, this)),
      m_order(new ScheduleListOrder(m_schedules, this)),
      m_search(new QLineEdit),
      m_list(new QListView),
      m_remove(new QPushButton(tr("&Remove")))
{
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(12, 14, 12, 12);
    column->setSpacing(10);
    m_search->setObjectName("search");
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search the schedules"));
    m_search->setClearButtonEnabled(true);
    column->addWidget(m_search);

    m_list->setObjectName("schedules");
    m_list->setAccessibleName(tr("Schedules"));
    m_list->setModel(m_order);
    m_list->setItemDelegate(new ScheduleDelegate(m_list));
    m_list->setUniformItemSizes(true); // a thousand are asked for one size
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setMouseTracking(true);
    m_list->viewport()->setAutoFillBackground(false); // it lies on the pane itself
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    column->addWidget(m_list, 1);

    auto *const buttons = new QHBoxLayout;
    auto *const add = new QPushButton(tr("&New schedule"));
    add->setObjectName("add");
    m_remove->setObjectName("remove");
    buttons->addWidget(add, 1);
    buttons->addWidget(m_remove);
    column->addLayout(buttons);
    m_remove->setEnabled(false);

    connect(m_search, &QLineEdit::textChanged, m_order, &ScheduleListOrder::search);
    connect(add, &QPushButton::clicked, this, &ScheduleListPane::addingWanted);
    connect(m_remove, &QPushButton::clicked, this, &ScheduleListPane::removalWanted);
    // A screen reader selects a row without moving to it.
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const QModelIndexList selected = m_list->selectionModel()->selectedIndexes();
        if (selected.size() == 1 && selected.first() != m_list->currentIndex())
            m_list->setCurrentIndex(selected.first());
    });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        m_remove->setEnabled(m_list->currentIndex().isValid());
        Q_EMIT currentChanged(currentKey());
    });
}

QString ScheduleListPane::currentKey() const
{
    return m_list->currentIndex().data(ScheduleListModel::KeyRole).toString();
}

void ScheduleListPane::setCurrentKey(const QString &key)
{
    const auto find = [&] {
        const QModelIndexList found =
            m_order->match(m_order->index(0, 0), ScheduleListModel::KeyRole, key, 1, Qt::MatchExactly);
        return found.isEmpty() ? QModelIndex() : found.first();
    };
    if (!find().isValid())
        m_search->clear(); // what is searched for hides it
    m_list->setCurrentIndex(find());
}

void ScheduleListPane::ensureCurrent()
{
    if (!m_list->currentIndex().isValid())
        m_list->setCurrentIndex(m_order->index(0, 0));
}

int ScheduleListPane::count() const
{
    int count = 0;
    for (int row = 0; row < m_schedules->rowCount(); ++row)
        count += m_schedules->index(row).data(ScheduleListModel::WantedRole).toBool() ? 1 : 0;
    return count;
}
