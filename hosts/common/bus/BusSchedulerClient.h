// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/dbus/BusService.h"
#include "hosts/common/bus/SchedulerClient.h"

#include <memory>
#include <vector>

/// The client that speaks on a message bus. THREADING, BLOCKING: as SchedulerClient.
class BusSchedulerClient : public SchedulerClient
{
    Q_OBJECT
public:
    /// Opens the bus, and again whenever it is lost; the pauses pass on `clock`.
    BusSchedulerClient(dozely::BusConnection::Bus bus, const std::shared_ptr<dozely::Clock> &clock);
    ~BusSchedulerClient() override;

    bool isAvailable() const override { return m_isAvailable; }
    QVariantMap properties() const override { return m_properties; }

    void list(Answer<QList<QVariantMap>> answer) override;
    void get(const QString &identifier, Answer<QVariantMap> answer) override;
    void add(const QVariantMap &schedule, Answer<QString> answer) override;
    void change(const QString &identifier, const QVariantMap &changes, Answer<void> answer) override;
    void remove(const QString &identifier, Answer<void> answer) override;
    void setEnabled(const QString &identifier, bool isEnabled, Answer<void> answer) override;
    void runNow(const QString &identifier, Answer<void> answer) override;
    void skip(const QString &identifier, const QString &date, Answer<QString> answer) override;
    void postpone(const QString &identifier, const QString &date, std::chrono::seconds delay,
                  Answer<QString> answer) override;
    void next(const QString &identifier, const QString &from, const QString &until, quint32 most,
              Answer<QList<QVariantMap>> answer) override;
    void history(const QString &identifier, quint32 most, Answer<QList<QVariantMap>> answer) override;
    void testWaking(std::chrono::seconds sleep, Answer<QVariantMap> answer) override;

private:
    /// How long an answer may take: at most half a minute, or as long as a person takes to type a password.
    enum class Patience { Machine, Person };

    void call(const char *method, const QByteArray &signature, const QVariantList &arguments,
              Patience patience, const std::function<void(const dozely::Result<QVariant> &)> &answer);
    void opened();
    void setAvailable(bool isAvailable);
    void readProperties();
    void heard(const dozely::BusConnection::Signal &signal);

    dozely::BusService m_service;
    std::vector<std::unique_ptr<dozely::BusConnection::Subscription>> m_hearing;
    QVariantMap m_properties;
    bool m_isAvailable = false;
};
