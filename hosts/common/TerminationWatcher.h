// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QSocketNotifier;

/// Turns SIGTERM and SIGINT into a signal of the event loop. The signal handler itself only writes one byte.
///
/// One object a process, made on the main thread after the QCoreApplication. Destroying it gives the signals
/// their former handlers back.
class TerminationWatcher : public QObject
{
    Q_OBJECT
public:
    explicit TerminationWatcher(QObject *parent = nullptr);
    ~TerminationWatcher() override;

Q_SIGNALS:
    /// The process was asked to end.
    void terminate();

private:
    void readPipe();

    int m_readEnd = -1;
    QSocketNotifier *m_notifier = nullptr;
};
