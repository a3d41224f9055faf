// SPDX-License-Identifier: MIT
#include "hosts/application/month/OccurrenceActions.h"

#include "DozelyKit/core/foundation/Clock.h"

#include <QMenu>
#include <QWidget>

using namespace dozely;
using namespace std::chrono_literals;

OccurrenceActions::OccurrenceActions(QWidget *parent)
    : QObject(parent), m_menu(new QMenu(parent)), m_delays(new QMenu(parent))
{
    m_skip = m_menu->addAction(tr("Skip"));
    m_putOff = m_menu->addMenu(m_delays);
    m_putOff->setText(tr("Put off"));
    m_runNow = m_menu->addAction(tr("Run now"));
    addDelay(tr("10 minutes"), 10min);
    addDelay(tr("30 minutes"), 30min);
    addDelay(tr("1 hour"), 1h);
    addDelay(tr("3 hours"), 3h);
    addDelay(tr("1 day"), 24h);
    connect(m_skip, &QAction::triggered, this,
            [this] { Q_EMIT skipWanted(m_occurrence.identifier, m_occurrence.date); });
    connect(m_runNow, &QAction::triggered, this, [this] { Q_EMIT runWanted(m_occurrence.identifier); });
    setOccurrence({});
}

void OccurrenceActions::addDelay(const QString &text, std::chrono::seconds delay)
{
    connect(m_delays->addAction(text), &QAction::triggered, this,
            [this, delay] { Q_EMIT putOffWanted(m_occurrence.identifier, m_occurrence.date, delay); });
}

void OccurrenceActions::setOccurrence(const std::optional<MonthOccurrence> &occurrence)
{
    m_occurrence = occurrence.value_or(MonthOccurrence());
    const bool isToCome =
        occurrence && !occurrence->wasSkipped && occurrence->moment > Port<Clock>::current()->currentDate();
    m_skip->setEnabled(isToCome);
    m_putOff->setEnabled(isToCome);
    for (QAction *const delay : m_delays->actions())
        delay->setEnabled(isToCome); // their menu may be open
    m_runNow->setEnabled(occurrence.has_value());
}

void OccurrenceActions::popUp(const MonthOccurrence &occurrence, const QPoint &place)
{
    setOccurrence(occurrence);
    m_menu->popup(place);
}
