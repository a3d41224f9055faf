// SPDX-License-Identifier: MIT
#include "hosts/agent/StatusIcon.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/agent/AgentTexts.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QPainter>
#include <QPointer>
#include <QProcess>

using namespace dozely;

namespace
{
constexpr qsizetype longestName = 60; // a menu is no page

/// For desktops whose theme has neither ours nor a clock: a dial.
QIcon drawnIcon()
{
    QPixmap pixmap(64, 64);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor("#3b82d6"));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPoint(32, 32), 28, 28);
    painter.setPen(QPen(Qt::white, 5, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(32, 32, 32, 14);
    painter.drawLine(32, 32, 44, 38);
    return pixmap;
}

QIcon usualIcon()
{
    return QIcon::fromTheme("com.dozely.Dozely", QIcon::fromTheme("appointment-soon", drawnIcon()));
}

/// Of a stranger's name no line may be more, and no letter a key.
QString labelOf(const QString &name)
{
    return logLabel(name, longestName).replace('&', "&&");
}
} // namespace

StatusIcon::StatusIcon(std::unique_ptr<SchedulerClient> client, const QString &program)
    : m_client(std::move(client)),
      m_program(program),
      m_next(m_menu.addAction(QString())),
      m_ofNext{
          m_menu.addAction(agentText("Skip this time"), this, &StatusIcon::skip),
          m_menu.addAction(agentText("10 minutes later"), this,
                           [this] { postpone(std::chrono::minutes(10)); }),
          m_menu.addAction(agentText("An hour later"), this, [this] { postpone(std::chrono::hours(1)); })}
{
    m_next->setEnabled(false);
    m_menu.addSeparator();
    if (!m_program.isEmpty())
        m_menu.addAction(agentText("Open Dozely"), this, &StatusIcon::open);
    m_menu.addAction(agentText("Hide this icon"), this, &StatusIcon::hidingWanted);
    connect(&m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            open();
    });
    connect(m_client.get(), &SchedulerClient::propertiesChanged, this, &StatusIcon::refresh);
    connect(m_client.get(), &SchedulerClient::availabilityChanged, this, &StatusIcon::refresh);
    refresh();
    m_icon.setIcon(usualIcon());
    m_icon.setContextMenu(&m_menu);
    m_icon.show();
}

StatusIcon::~StatusIcon() = default;

QString StatusIcon::usualProgram()
{
    const auto agent = NSBundle::mainBundle();
    if (!agent)
        return {};
    const QString program = QDir::cleanPath(agent->bundlePath() + "/../../Linux/Dozely");
    return QFileInfo(program).isExecutable() ? program : QString();
}

void StatusIcon::refresh()
{
    const QVariantMap next = m_client->properties().value("NextOccurrence").toMap();
    const QDateTime moment = QDateTime::fromString(next.value("moment").toString(), Qt::ISODate);
    QString text;
    if (!m_client->isAvailable())
        text = agentText("Service not running");
    else if (!moment.isValid())
        text = agentText("Nothing to come");
    else
        text = QString("%1: %2").arg(QLocale::system().toString(moment.toLocalTime(), QLocale::ShortFormat),
                                     labelOf(next.value("name").toString()));
    m_next->setText(text);
    m_icon.setToolTip(QString(text).replace("&&", "&"));
    for (QAction *const action : m_ofNext)
        action->setEnabled(m_client->isAvailable() && moment.isValid());
}

SchedulerClient::Answer<QString> StatusIcon::answerOf(const QString &schedule)
{
    return [self = QPointer(this), schedule](const Result<QString> &done) {
        if (!done && self)
            Q_EMIT self->refused(schedule, done.error().text);
    };
}

/// The one that is shown, by its date: not another one that has come first meanwhile.
void StatusIcon::skip()
{
    const QVariantMap next = m_client->properties().value("NextOccurrence").toMap();
    m_client->skip(next.value("identifier").toString(), next.value("date").toString(),
                   answerOf(next.value("name").toString()));
}

void StatusIcon::postpone(std::chrono::seconds delay)
{
    const QVariantMap next = m_client->properties().value("NextOccurrence").toMap();
    m_client->postpone(next.value("identifier").toString(), next.value("date").toString(), delay,
                       answerOf(next.value("name").toString()));
}

void StatusIcon::open() const
{
    if (m_program.isEmpty())
        return;
    const QStringList root =
        RootFolder::path().isEmpty() ? QStringList() : QStringList{"--root", RootFolder::path()};
    if (!QProcess::startDetached(m_program, root))
        ZDRLog("%@ could not be started", logLabel(m_program));
}
