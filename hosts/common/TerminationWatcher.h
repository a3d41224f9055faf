// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

#include <csignal>
#include <vector>

class QSocketNotifier;

/// Turns signals that ask the process to end into one of the event loop. The signal handler itself only
/// writes one byte.
///
/// One object a process, made on the main thread after the QCoreApplication. Destroying it gives the signals
/// their former handlers back.
class TerminationWatcher : public QObject
{
    Q_OBJECT
public:
    /// SIGTERM is left out where ZDRPowerManager, which takes it over, is used.
    explicit TerminationWatcher(const QList<int> &signalNumbers = {SIGTERM, SIGINT},
                                QObject *parent = nullptr);
    ~TerminationWatcher() override;

Q_SIGNALS:
    /// The process was asked to end.
    void terminate();

private:
    void readPipe();

    int m_readEnd = -1;
    QSocketNotifier *m_notifier = nullptr;
    std::vector<std::pair<int, struct sigaction>> m_formerActions; // by signal number
};
