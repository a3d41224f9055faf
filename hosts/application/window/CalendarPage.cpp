// SPDX-License-Identifier: MIT
#include "hosts/application/window/CalendarPage.h"

#include "hosts/application/month/MonthOccurrence.h"
#include "hosts/application/month/MonthView.h"
#include "hosts/common/words/ReasonWords.h"

#include <QPointer>
#include <QVBoxLayout>

using namespace dozely;

namespace
{
constexpr quint32 most = 1000; // that the daemon tells at once

QString textOf(const QDateTime &date)
{
    return date.toUTC().toString(Qt::ISODate);
}
} // namespace

CalendarPage::CalendarPage(SchedulerClient &client, QWidget *parent)
    : QWidget(parent), m_client(client), m_month(new MonthView)
{
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 14, 16, 14);
    layout->addWidget(m_month);
    connect(m_month, &MonthView::rangeChanged, this, &CalendarPage::readSoon);
    connect(&client, &SchedulerClient::schedulesChanged, this, &CalendarPage::readSoon);
    connect(&client, &SchedulerClient::occurrenceBegan, this, &CalendarPage::readSoon);
    connect(&client, &SchedulerClient::availabilityChanged, this, &CalendarPage::readSoon);
    connectWishes();
}

void CalendarPage::connectWishes()
{
    const auto answered = [self = QPointer(this)](const auto &done) {
        if (!self)
            return;
        if (!done)
            Q_EMIT self->refused(ReasonWords::of(done.error()));
        self->readSoon();
    };
    connect(m_month, &MonthView::skipWanted, this,
            [this, answered](const QString &identifier, const QDateTime &date) {
                m_client.skip(identifier, textOf(date), answered);
            });
    connect(m_month, &MonthView::putOffWanted, this,
            [this, answered](const QString &identifier, const QDateTime &date, std::chrono::seconds delay) {
                m_client.postpone(identifier, textOf(date), delay, answered);
            });
    connect(m_month, &MonthView::runWanted, this,
            [this, answered](const QString &identifier) { m_client.runNow(identifier, answered); });
    connect(m_month, &MonthView::openWanted, this, &CalendarPage::openWanted);
}

void CalendarPage::readSoon()
{
    m_isOld = true;
    if (isVisible())
        read();
}

void CalendarPage::showEvent(QShowEvent *event)
{
    if (m_isOld)
        read();
    QWidget::showEvent(event);
}

void CalendarPage::read()
{
    m_isOld = false;
    const int question = ++m_question;
    m_client.next({}, textOf(m_month->rangeBegin()), textOf(m_month->rangeEnd()), most,
                  [self = QPointer(this), question](const Result<QList<QVariantMap>> &told) {
                      if (!self || question != self->m_question)
                          return;
                      QList<MonthOccurrence> occurrences;
                      for (const QVariantMap &occurrence : told ? *told : QList<QVariantMap>())
                          occurrences += MonthOccurrence::fromMap(occurrence);
                      self->m_month->setOccurrences(occurrences);
                  });
}
