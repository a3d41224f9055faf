// SPDX-License-Identifier: MIT
#include "hosts/application/when/ExceptionList.h"

#include "hosts/application/when/DateInWords.h"
#include "hosts/application/when/DayField.h"
#include "hosts/application/when/FaultLabel.h"

#include <QDateEdit>
#include <QGridLayout>
#include <QListWidget>
#include <QToolButton>

#include <algorithm>

namespace
{
constexpr int shownRows = 4;
}

ExceptionList::ExceptionList(QWidget *parent)
    : QWidget(parent),
      m_day(DayField::make(this, tr("Day to leave out"))),
      m_leaveOut(new QToolButton(this)),
      m_fault(new FaultLabel(this)),
      m_list(new QListWidget(this)),
      m_takeBack(new QToolButton(this))
{
    auto *const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_day, 0, 0);
    layout->addWidget(m_leaveOut, 0, 1);
    layout->addWidget(m_fault, 1, 0, 1, 3);
    layout->addWidget(m_list, 2, 0, 1, 3);
    layout->addWidget(m_takeBack, 3, 0, 1, 3, Qt::AlignLeading);
    layout->setColumnStretch(2, 1);
    m_list->setAccessibleName(tr("Exceptions"));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setUniformItemSizes(true);
    m_list->setTabKeyNavigation(false);
    m_leaveOut->setText(tr("Leave this day out"));
    m_leaveOut->setFocusPolicy(Qt::StrongFocus);
    m_takeBack->setText(tr("Take back"));
    m_takeBack->setAccessibleDescription(tr("Takes the chosen exceptions back"));
    m_takeBack->setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(m_day);
    connect(m_leaveOut, &QToolButton::clicked, this, [this] { Q_EMIT dayChosen(m_day->date()); });
    connect(m_takeBack, &QToolButton::clicked, this, &ExceptionList::takeBack);
    connect(m_list, &QListWidget::itemSelectionChanged, this,
            [this] { m_takeBack->setEnabled(!m_list->selectedItems().isEmpty()); });
    showDates();
}

void ExceptionList::setDates(const QList<WallTime> &excluded, const QList<WallTime> &extra,
                             const QDate &proposal)
{
    m_excluded = excluded;
    m_extra = extra;
    m_day->setDate(proposal);
    m_fault->showFault({});
    showDates();
}

void ExceptionList::leaveOut(const QDate &day, const QList<WallTime> &dates)
{
    const qsizetype before = m_excluded.size();
    for (const WallTime &date : dates) {
        if (!m_excluded.contains(date))
            m_excluded += date;
    }
    m_fault->showFault(
        dates.isEmpty()
            ? tr("Nothing takes place on %1 that could be left out.").arg(DateInWords::of(day, locale()))
            : QString());
    if (m_excluded.size() == before)
        return;
    showDates();
    Q_EMIT changed();
}

void ExceptionList::takeBack()
{
    const auto isChosen = [this](qsizetype row) { return m_list->item(static_cast<int>(row))->isSelected(); };
    QList<WallTime> excluded;
    QList<WallTime> extra;
    for (qsizetype i = 0; i < m_excluded.size(); ++i)
        excluded += isChosen(i) ? QList<WallTime>() : QList<WallTime>{m_excluded.at(i)};
    for (qsizetype i = 0; i < m_extra.size(); ++i)
        extra += isChosen(m_excluded.size() + i) ? QList<WallTime>() : QList<WallTime>{m_extra.at(i)};
    m_excluded = excluded;
    m_extra = extra;
    m_fault->showFault({});
    showDates();
    (m_list->isHidden() ? static_cast<QWidget *>(m_day) : m_list)->setFocus();
    Q_EMIT changed();
}

void ExceptionList::showDates()
{
    const auto inWords = [this](const WallTime &date) {
        return tr("%1, %2", "a day and a time")
            .arg(DateInWords::of(date.day, locale()), DateInWords::of(date.time, locale()));
    };
    m_list->clear();
    for (const WallTime &date : std::as_const(m_excluded))
        m_list->addItem(tr("not on %1").arg(inWords(date)));
    for (const WallTime &date : std::as_const(m_extra))
        m_list->addItem(tr("also on %1").arg(inWords(date)));
    const bool hasAny = m_list->count() > 0;
    if (hasAny) {
        const int rows = std::min(m_list->count(), shownRows);
        m_list->setFixedHeight(rows * m_list->sizeHintForRow(0) + 2 * m_list->frameWidth());
    }
    m_list->setVisible(hasAny);
    m_takeBack->setVisible(hasAny);
    m_takeBack->setEnabled(false);
}
