// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

#include <functional>

class NSNotification;

/// The event loop of a host that loads plug-ins. An exception that leaves a handler, such as a plug-in's slot
/// that posts to a target which dies, ends here: one line in the log, and the targets' locks are given back.
class HostApplication : public QCoreApplication
{
    Q_OBJECT
public:
    /// Names the process `processName` for the log and for its port. First thing in main.
    HostApplication(int &argc, char **argv, const char *processName);

    bool notify(QObject *receiver, QEvent *event) override;

    /// Before and after the making of an application object that is a host's but not of this class: names the
    /// process, raises its limit of open descriptors, and has the plain event loop chosen.
    /// @{
    static void begin(const char *processName);
    static void finishBeginning();
    /// @}

    /// Runs what delivers an event; false, with that one line, when it raised.
    static bool stopExceptions(const std::function<bool()> &deliver);

    /// From now on the event loop ends when the machine goes off, or the process is asked to terminate, as
    /// ZDRPowerManager tells it. For a host that has made one.
    void quitAtPowerOff();

private:
    Q_INVOKABLE void systemWillPowerOff(const NSNotification &notification);
};
