// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

/// The application object of a program with windows that loads plug-ins: what their code raises in an event
/// ends here, with one line in the log, and is told of.
class WindowedApplication : public QApplication
{
    Q_OBJECT
public:
    WindowedApplication(int &argc, char **argv);

    bool notify(QObject *receiver, QEvent *event) override;
    bool event(QEvent *event) override;

Q_SIGNALS:
    /// The code of `receiver`, or what it called, raised: a sentence.
    void raised(QObject *receiver, const QString &why);
};
