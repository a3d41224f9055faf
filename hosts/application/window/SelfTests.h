// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/window/NoticeBar.h"
#include "hosts/common/bus/SchedulerClient.h"

#include <QObject>

#include <functional>

/// What a person may try out beforehand: whether alerts reach him, and whether the machine's clock wakes it.
/// Says what came of it, and what to do where it did not work. THREADING: the main thread.
class SelfTests : public QObject
{
    Q_OBJECT
public:
    /// Asks the person's agent for an alert, and tells whether it has taken that.
    using RequestAlert = std::function<void(const std::function<void(bool isTaken)> &)>;

    /// `client` outlives it.
    explicit SelfTests(SchedulerClient &client);

    /// Without it no agent answers.
    void setRequestAlert(RequestAlert request) { m_request = std::move(request); }

    void testAlert();

    /// Has the clock's alarm read back, and offers to have the machine sleep.
    void testWaking();

Q_SIGNALS:
    void told(NoticeBar::Kind kind, const QString &sentence, const QList<NoticeBar::Remedy> &remedies);

private:
    void sleep();
    void tellFinding(const dozely::Result<QVariantMap> &finding);

    SchedulerClient &m_client;
    RequestAlert m_request;
    bool m_isTestingWaking = false;
};
