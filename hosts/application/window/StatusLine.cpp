// SPDX-License-Identifier: MIT
#include "hosts/application/window/StatusLine.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/application/when/DateInWords.h"
#include "hosts/application/window/WindowFoot.h"

#include <QHBoxLayout>

using namespace dozely;

namespace
{
QLabel *newLabel(const char *name)
{
    auto *const label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::RichText);
    return label;
}

QToolButton *newButton(const char *name, const QString &text, const QString &hint)
{
    auto *const button = new QToolButton;
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(hint);
    button->setAccessibleDescription(hint);
    return button;
}

QWidget *newRow(const QWidgetList &widgets, int spacing)
{
    auto *const row = new QWidget;
    auto *const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    for (QWidget *const widget : widgets)
        layout->addWidget(widget);
    layout->addStretch();
    return row;
}
} // namespace

StatusLine::StatusLine(SchedulerClient &client, QWidget *parent)
    : QWidget(parent),
      m_client(client),
      m_service(newLabel("service")),
      m_agent(newLabel("agent")),
      m_clock(newLabel("clock")),
      m_testAlert(newButton("testAlert", tr("Test the alert"),
                            tr("Shows an alert that announces nothing, to see whether alerts reach you."))),
      m_testWaking(newButton("testWaking", tr("Test waking"),
                             tr("Tries whether the clock of this computer can wake it.")))
{
    // One above the other where there is too little room.
    auto *const row =
        new WindowFoot(newRow({m_service, m_agent, m_clock}, 16), newRow({m_testAlert, m_testWaking}, 6));
    row->layout()->setContentsMargins(0, 0, 0, 0);
    auto *const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(row);
    connect(m_testAlert, &QToolButton::clicked, this, &StatusLine::alertTestWanted);
    connect(m_testWaking, &QToolButton::clicked, this, &StatusLine::wakingTestWanted);
    connect(&client, &SchedulerClient::propertiesChanged, this, &StatusLine::refresh);
    connect(&client, &SchedulerClient::availabilityChanged, this, &StatusLine::refresh);
    refresh();
}

void StatusLine::tell(QLabel &label, Mood mood, const QString &text, const QString &remedy)
{
    const char *const colour = mood == Mood::Good ? "#2e9e5b" : mood == Mood::Bad ? "#d9822b" : "#8a8a8a";
    // The sign differs, too: not everybody tells the colours apart.
    const QString sign = mood == Mood::Good ? "●" : mood == Mood::Bad ? "▲" : "○";
    label.setText(
        QString("<span style=\"color:%1\">%2</span>&nbsp;%3").arg(colour, sign, text.toHtmlEscaped()));
    label.setToolTip(remedy);
    label.setAccessibleName(text);
    label.setAccessibleDescription(remedy);
}

void StatusLine::refresh()
{
    showService();
    const bool isThere = m_client.isAvailable();
    m_agent->setVisible(isThere);
    m_clock->setVisible(isThere);
    m_testWaking->setVisible(isThere);
    if (!isThere)
        return;
    showAgent();
    showClock();
}

void StatusLine::showService()
{
    if (m_client.isAvailable())
        tell(*m_service, Mood::Good, tr("Service running"),
             tr("Version %1").arg(m_client.properties().value("Version").toString()));
    else
        tell(*m_service, Mood::Bad, tr("Service not running"),
             tr("An administrator starts it with: systemctl start dozelyd"));
}

void StatusLine::showAgent()
{
    const QVariantMap agent = m_client.properties().value("AgentOfConsoleUser").toMap();
    if (agent.isEmpty())
        tell(*m_agent, Mood::Unknown, tr("Nobody logged in"),
             tr("No session is at this computer's screen now. Actions that need one wait for it."));
    else if (agent.value("isAlive").toBool())
        tell(*m_agent, Mood::Good, tr("Agent running"),
             tr("It shows alerts and acts in the session of %1.").arg(agent.value("name").toString()));
    else
        tell(*m_agent, Mood::Bad, tr("Agent not running"),
             tr("It starts when you log in. To start it now: systemctl --user start dozely-agent"));
}

void StatusLine::showClock()
{
    const QVariantMap clock = m_client.properties().value("WakeClock").toMap();
    if (!clock.value("isSupported").toBool()) {
        tell(*m_clock, Mood::Unknown, tr("Cannot wake this computer"),
             tr("It has no clock that could wake it or switch it on. Have it stay awake instead."));
        return;
    }
    const QDateTime alarm = QDateTime::fromString(clock.value("alarm").toString(), Qt::ISODate);
    const QString when =
        DateInWords::of(alarm, Port<Clock>::current()->currentDate(), QTimeZone::systemTimeZone(), QLocale());
    tell(*m_clock, Mood::Good, when.isEmpty() ? tr("Wake clock ready") : tr("Wakes %1").arg(when),
         tr("The clock %1 wakes this computer.").arg(clock.value("device").toString()));
}
