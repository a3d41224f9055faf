// SPDX-License-Identifier: MIT
#include "hosts/application/history/HistoryModel.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/application/history/OutcomeWords.h"

#include <QApplication>
#include <QStyle>

#include <limits>

using namespace dozely;

HistoryModel::HistoryModel(const QLocale &locale, QObject *parent)
    : QAbstractTableModel(parent),
      m_locale(locale),
      m_trouble(QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning))
{
}

void HistoryModel::setOutcomes(const QList<HistoryOutcome> &outcomes)
{
    beginResetModel();
    m_outcomes = outcomes;
    endResetModel();
}

void HistoryModel::renameDates()
{
    if (!m_outcomes.isEmpty())
        Q_EMIT dataChanged(index(0, When), index(rowCount() - 1, State));
}

int HistoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_outcomes.size());
}

int HistoryModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QVariant HistoryModel::data(const QModelIndex &index, int role) const
{
    const HistoryOutcome &outcome = m_outcomes.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return words(outcome, index.column());
    case Qt::ToolTipRole:
        return words(outcome, index.column());
    case Qt::DecorationRole:
        return index.column() == State && outcome.isTrouble() ? m_trouble : QVariant();
    case sortRole:
        return sortedBy(outcome, index.column());
    case troubleRole:
        return outcome.isTrouble();
    default:
        return {};
    }
}

QString HistoryModel::words(const HistoryOutcome &outcome, int column) const
{
    const QDateTime now = Port<Clock>::current()->currentDate();
    switch (column) {
    case When:
        return OutcomeWords::when(outcome, now, m_locale);
    case Name:
        return outcome.name.isEmpty() ? tr("(gone)", "a schedule") : outcome.name.simplified();
    case State:
        return OutcomeWords::state(outcome, now, m_locale);
    case Lateness:
        return OutcomeWords::lateness(outcome, m_locale);
    default:
        return OutcomeWords::failure(outcome);
    }
}

QVariant HistoryModel::sortedBy(const HistoryOutcome &outcome, int column) const
{
    if (column == When)
        return outcome.date;
    if (column == Lateness)
        return outcome.lateness.value_or(std::numeric_limits<qint64>::min());
    return words(outcome, column);
}

QVariant HistoryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case When:
        return tr("When");
    case Name:
        return tr("Schedule");
    case State:
        return tr("Outcome");
    case Lateness:
        return tr("Began");
    default:
        return tr("Why");
    }
}
