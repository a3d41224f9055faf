// SPDX-License-Identifier: MIT
#include "hosts/application/window/HistoryPage.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/application/history/HistoryView.h"
#include "hosts/application/history/LogPane.h"

#include <QPointer>
#include <QSplitter>
#include <QVBoxLayout>

using namespace dozely;

namespace
{
constexpr quint32 most = 1000; // outcomes, newest first
constexpr char logPath[] = "/var/log/dozely.log";
} // namespace

HistoryPage::HistoryPage(SchedulerClient &client, QWidget *parent)
    : QWidget(parent),
      m_client(client),
      m_history(new HistoryView),
      m_log(new LogPane(RootFolder::join(logPath)))
{
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 14, 16, 14);
    auto *const parts = new QSplitter(Qt::Vertical);
    parts->setChildrenCollapsible(false);
    parts->addWidget(m_history);
    parts->addWidget(m_log);
    parts->setStretchFactor(0, 2);
    parts->setStretchFactor(1, 1);
    layout->addWidget(parts);
    m_log->hide(); // until one is asked for
    connect(m_history, &HistoryView::logWanted, this,
            [this](const QString &, const QDateTime &begun, const QDateTime &ended) {
                m_log->showLines(begun, ended);
                m_log->show();
            });
    connect(&client, &SchedulerClient::occurrenceBegan, this, &HistoryPage::readSoon);
    connect(&client, &SchedulerClient::occurrenceEnded, this, &HistoryPage::readSoon);
    connect(&client, &SchedulerClient::schedulesChanged, this, &HistoryPage::readSoon);
    connect(&client, &SchedulerClient::availabilityChanged, this, &HistoryPage::readSoon);
}

void HistoryPage::readSoon()
{
    m_isOld = true;
    if (isVisible())
        read();
}

void HistoryPage::showEvent(QShowEvent *event)
{
    if (m_isOld)
        read();
    QWidget::showEvent(event);
}

void HistoryPage::read()
{
    m_isOld = false;
    m_client.history({}, most, [self = QPointer(this)](const Result<QList<QVariantMap>> &told) {
        if (self)
            self->m_history->setOutcomes(told ? *told : QList<QVariantMap>());
    });
}
