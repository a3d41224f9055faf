// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QThread>

#include <functional>
#include <memory>

/// Asks the agent of a user for an alert that announces nothing, over the channel.
///
/// THREADING: the main thread; the agent is waited for in another one. BLOCKING: the destructor, for an agent
/// that has not answered yet, as a request of WDCommunicationCenter.
class AlertRequest : public QObject
{
    Q_OBJECT
public:
    explicit AlertRequest(quint32 user);
    ~AlertRequest() override;

    /// Asks, and tells from the event loop whether the agent has taken it. Nothing while it is asked already.
    void send(const std::function<void(bool isTaken)> &answer);

private:
    const quint32 m_user;
    std::unique_ptr<QThread> m_thread; // while it is asked
};
