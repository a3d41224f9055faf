// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

/// The event loop of a host that loads plug-ins. An exception that leaves a handler, such as a plug-in's slot
/// that posts to a target which dies, ends here: one line in the log, and the targets' locks are given back.
class HostApplication : public QCoreApplication
{
    Q_OBJECT
public:
    /// Names the process `processName` for the log and for its port. First thing in main.
    HostApplication(int &argc, char **argv, const char *processName);

    bool notify(QObject *receiver, QEvent *event) override;
};
