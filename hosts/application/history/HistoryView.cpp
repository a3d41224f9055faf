// SPDX-License-Identifier: MIT
#include "hosts/application/history/HistoryView.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/application/history/HistoryFilter.h"
#include "hosts/application/history/HistoryModel.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QVBoxLayout>

using namespace dozely;

HistoryView::HistoryView(QWidget *parent)
    : QWidget(parent),
      m_model(new HistoryModel(locale(), this)),
      m_filter(new HistoryFilter(this)),
      m_midnight(Port<Clock>::current()->makeAbsoluteTimer())
{
    auto *const lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, 0, 0, 0);
    m_filter->setSourceModel(m_model);
    makeFilter();
    makeTable();
    m_none = new QLabel(this);
    m_none->setAlignment(Qt::AlignCenter);
    m_none->setWordWrap(true);
    lines->addWidget(m_none, 1);
    connect(m_filter, &QAbstractItemModel::modelReset, this, &HistoryView::showCount);
    connect(m_filter, &QAbstractItemModel::rowsInserted, this, &HistoryView::showCount);
    connect(m_filter, &QAbstractItemModel::rowsRemoved, this, &HistoryView::showCount);
    connect(m_midnight.get(), &AbsoluteTimer::due, this, &HistoryView::waitForMidnight);
    connect(m_midnight.get(), &AbsoluteTimer::clockChanged, this, &HistoryView::waitForMidnight);
    waitForMidnight();
    showCount();
}

void HistoryView::makeFilter()
{
    auto *const line = new QHBoxLayout;
    auto *const words = new QLineEdit(this);
    words->setPlaceholderText(tr("Search"));
    words->setAccessibleName(tr("Search the history"));
    words->setClearButtonEnabled(true);
    auto *const trouble = new QCheckBox(tr("Only what went wrong"), this);
    line->addWidget(words, 1);
    line->addWidget(trouble);
    static_cast<QVBoxLayout *>(layout())->addLayout(line);
    connect(words, &QLineEdit::textChanged, m_filter, &HistoryFilter::setWords);
    connect(trouble, &QCheckBox::toggled, m_filter, &HistoryFilter::setTroubleOnly);
}

void HistoryView::makeTable()
{
    m_table = new QTableView(this);
    m_table->setModel(m_filter);
    m_table->setAccessibleName(tr("History"));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setTabKeyNavigation(false);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(HistoryModel::When, Qt::DescendingOrder);
    m_table->verticalHeader()->hide();
    constexpr int letters = 18; // of a column at first
    const int width = m_table->fontMetrics().averageCharWidth() * letters;
    for (int column = 0; column < HistoryModel::Columns; ++column)
        m_table->setColumnWidth(column, column == HistoryModel::Lateness ? width : width * 4 / 3);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() * 3 / 2);
    setFocusProxy(m_table);
    static_cast<QVBoxLayout *>(layout())->addWidget(m_table, 1);
    connect(m_table, &QTableView::activated, this, &HistoryView::wantLog);
}

void HistoryView::setOutcomes(const QList<QVariantMap> &outcomes)
{
    QList<HistoryOutcome> read;
    for (const QVariantMap &outcome : outcomes)
        read += HistoryOutcome::fromMap(outcome);
    m_model->setOutcomes(read);
    showCount();
}

void HistoryView::showCount()
{
    const bool isEmpty = m_filter->rowCount() == 0;
    m_none->setText(m_model->rowCount() == 0 ? tr("Nothing has taken place yet.")
                                             : tr("Nothing in the history is like that."));
    m_none->setVisible(isEmpty);
    m_table->setVisible(!isEmpty);
}

void HistoryView::waitForMidnight()
{
    m_model->renameDates();
    const QTimeZone here = machineTimeZone();
    const QDate tomorrow = Port<Clock>::current()->currentDate().toTimeZone(here).date().addDays(1);
    m_midnight->start(dateAtWallTime(tomorrow, QTime(0, 0), here).toUTC());
}

void HistoryView::wantLog(const QModelIndex &index)
{
    const HistoryOutcome &outcome = m_model->at(m_filter->mapToSource(index).row());
    if (outcome.begun.isValid())
        Q_EMIT logWanted(outcome.identifier, outcome.begun, outcome.ended);
    else
        Q_EMIT logWanted(outcome.identifier, outcome.date, outcome.date);
}
