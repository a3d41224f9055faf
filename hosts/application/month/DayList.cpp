// SPDX-License-Identifier: MIT
#include "hosts/application/month/DayList.h"

#include "hosts/application/month/DayModel.h"
#include "hosts/application/month/MonthModel.h"
#include "hosts/application/month/OccurrenceActions.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace
{
/// Rows as wide as the list, so that a long name ends in an ellipsis.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }
};
} // namespace

DayList::DayList(const MonthModel &month, QWidget *parent)
    : QWidget(parent),
      m_month(month),
      m_model(new DayModel(month, this)),
      m_title(new QLabel(this)),
      m_list(new QListView(this)),
      m_actions(new OccurrenceActions(this))
{
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_title);
    layout->addWidget(m_list);
    m_title->setWordWrap(true);
    m_title->setBuddy(m_list);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new RowDelegate(m_list));
    m_list->setUniformItemSizes(true); // there may be thousands
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    setFocusProxy(m_list);
    makeButtons();
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { m_actions->setOccurrence(chosen()); });
    connect(m_list, &QListView::activated, this, [this] {
        if (const auto occurrence = chosen())
            Q_EMIT occurrenceOpened(*occurrence);
    });
    connect(m_list, &QListView::customContextMenuRequested, this, [this](const QPoint &place) {
        if (const auto occurrence = chosen())
            m_actions->popUp(*occurrence, m_list->viewport()->mapToGlobal(place));
    });
}

void DayList::makeButtons()
{
    auto *const line = new QHBoxLayout;
    for (QAction *const action : {m_actions->skip(), m_actions->putOff(), m_actions->runNow()}) {
        auto *const button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setPopupMode(QToolButton::InstantPopup);
        button->setFocusPolicy(Qt::StrongFocus);
        line->addWidget(button);
    }
    line->addStretch();
    static_cast<QVBoxLayout *>(layout())->addLayout(line);
}

void DayList::setDay(const QDate &day)
{
    const bool isSameDay = day == std::exchange(m_day, day);
    if (isSameDay && m_model->occurrences() == m_month.occurrencesOn(day)) {
        m_actions->setOccurrence(chosen()); // what was to come may be past
        m_list->viewport()->update();       // and clocks may show another zone
        return;
    }
    const auto former = chosen();
    const int read = isSameDay ? m_list->verticalScrollBar()->value() : 0;
    m_title->setText(m_month.locale().toString(day, QLocale::LongFormat));
    m_list->setAccessibleName(m_title->text());
    m_model->setDay(day);
    const auto &now = m_model->occurrences();
    for (int row = 0; former && row < now.size(); ++row) {
        if (now.at(row).identifier == former->identifier && now.at(row).date == former->date)
            m_list->setCurrentIndex(m_model->index(row));
    }
    m_list->doItemsLayout();
    m_list->verticalScrollBar()->setValue(read);
    m_actions->setOccurrence(chosen());
}

void DayList::open()
{
    if (!m_list->currentIndex().isValid())
        m_list->setCurrentIndex(m_model->index(0));
    m_list->setFocus(Qt::OtherFocusReason);
}

std::optional<MonthOccurrence> DayList::chosen() const
{
    const QModelIndex index = m_list->currentIndex();
    return index.isValid() ? std::optional(m_model->occurrences().at(index.row())) : std::nullopt;
}

void DayList::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT left();
    else
        QWidget::keyPressEvent(event);
}
