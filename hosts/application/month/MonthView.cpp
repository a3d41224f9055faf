// SPDX-License-Identifier: MIT
#include "hosts/application/month/MonthView.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/application/month/DayList.h"
#include "hosts/application/month/MonthGrid.h"
#include "hosts/application/month/MonthModel.h"
#include "hosts/application/month/OccurrenceActions.h"

#include <QEvent>
#include <QLabel>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

using namespace dozely;

namespace
{
QDate today()
{
    return Port<Clock>::current()->currentDate().toTimeZone(machineTimeZone()).date();
}

QDateTime beginOf(const QDate &day)
{
    return dateAtWallTime(day, QTime(0, 0), machineTimeZone()).toUTC();
}
} // namespace

MonthView::MonthView(QWidget *parent)
    : QWidget(parent),
      m_title(new QLabel(this)),
      m_menu(new OccurrenceActions(this)),
      m_midnight(Port<Clock>::current()->makeAbsoluteTimer())
{
    new QVBoxLayout(this);
    layout()->setContentsMargins(0, 0, 0, 0);
    makeHead();
    auto *const parts = new QSplitter(this);
    m_grid = new MonthGrid(locale(), parts);
    m_list = new DayList(m_grid->month(), parts);
    parts->setStretchFactor(0, 4);
    parts->setStretchFactor(1, 1);
    parts->setChildrenCollapsible(false);
    static_cast<QVBoxLayout *>(layout())->addWidget(parts, 1);
    setFocusProxy(m_grid);
    connectParts();
    m_grid->setDay(today());
    showToday();
}

void MonthView::makeHead()
{
    auto *const line = new QHBoxLayout;
    const auto add = [&](const QString &text, const QString &name, auto go) {
        auto *const button = new QToolButton(this);
        button->setText(text);
        button->setAccessibleName(name);
        button->setToolTip(name);
        button->setFocusPolicy(Qt::StrongFocus);
        connect(button, &QToolButton::clicked, this, go);
        line->addWidget(button);
        return button;
    };
    m_previous = add({}, tr("Previous month"), [this] { setDay(day().addMonths(-1)); });
    add(tr("Today"), tr("Today"), [this] { setDay(today()); });
    m_next = add({}, tr("Next month"), [this] { setDay(day().addMonths(1)); });
    turnArrows();
    QFont font = m_title->font();
    font.setBold(true);
    m_title->setFont(font);
    line->addWidget(m_title, 1);
    static_cast<QVBoxLayout *>(layout())->addLayout(line);
}

void MonthView::turnArrows()
{
    m_previous->setArrowType(isRightToLeft() ? Qt::RightArrow : Qt::LeftArrow);
    m_next->setArrowType(isRightToLeft() ? Qt::LeftArrow : Qt::RightArrow);
}

void MonthView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange && m_next)
        turnArrows();
}

void MonthView::connectParts()
{
    connect(m_grid, &MonthGrid::monthChanged, this, &MonthView::showMonth);
    connect(m_grid, &MonthGrid::dayChanged, m_list, &DayList::setDay);
    connect(m_grid, &MonthGrid::dayOpened, m_list, &DayList::open);
    connect(m_grid, &MonthGrid::menuWanted, m_menu, &OccurrenceActions::popUp);
    connect(m_list, &DayList::left, m_grid, [this] { m_grid->setFocus(); });
    const auto open = [this](const MonthOccurrence &occurrence) { Q_EMIT openWanted(occurrence.identifier); };
    connect(m_grid, &MonthGrid::occurrenceOpened, this, open);
    connect(m_list, &DayList::occurrenceOpened, this, open);
    for (const OccurrenceActions *const actions : {&m_list->actions(), m_menu}) {
        connect(actions, &OccurrenceActions::skipWanted, this, &MonthView::skipWanted);
        connect(actions, &OccurrenceActions::putOffWanted, this, &MonthView::putOffWanted);
        connect(actions, &OccurrenceActions::runWanted, this, &MonthView::runWanted);
    }
    connect(m_midnight.get(), &AbsoluteTimer::due, this, &MonthView::showToday);
    connect(m_midnight.get(), &AbsoluteTimer::clockChanged, this, &MonthView::showToday);
}

void MonthView::setOccurrences(const QList<MonthOccurrence> &occurrences)
{
    m_grid->month().setOccurrences(occurrences);
    m_list->setDay(day());
}

QDateTime MonthView::rangeBegin() const
{
    return beginOf(m_grid->month().firstDay());
}

QDateTime MonthView::rangeEnd() const
{
    return beginOf(m_grid->month().lastDay().addDays(1));
}

QDate MonthView::day() const
{
    return m_grid->day();
}

void MonthView::setDay(const QDate &day)
{
    m_grid->setDay(day);
}

void MonthView::showMonth()
{
    const QDate month = m_grid->month().firstOfMonth();
    m_title->setText(tr("%1 %2", "a month and a year")
                         .arg(locale().standaloneMonthName(month.month()), locale().toString(month, "yyyy")));
    m_grid->setAccessibleName(m_title->text());
    Q_EMIT rangeChanged(rangeBegin(), rangeEnd());
}

void MonthView::showToday()
{
    m_grid->setToday(today());
    m_midnight->start(beginOf(today().addDays(1)));
}
