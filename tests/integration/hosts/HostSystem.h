// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/NSNotification.h"
#include "support/PrivateBus.h"
#include "support/WaitUntil.h"
#include "unit/hosts/BundleFixture.h"

#include <QProcess>

#include <memory>
#include <optional>

/// A whole system below a scratch root: real programs, a system bus with a mock login manager. Run by root,
/// the console user and the agent are an ordinary user; run by anybody else, everything is that user's.
class HostSystem : public BundleFixture
{
protected:
    HostSystem();
    ~HostSystem() override;

    /// The console user.
    static quint32 agentUser();

    /// Where the programs of that user's session keep what they need for as long as it lasts.
    static QString runtimeFolder();

    /// Somebody else comes to the console.
    void switchTo(quint32 user);

    /// Start the programs and wait until they listen.
    void startDaemon();
    void startAgent(quint32 user = agentUser());
    void startDyingAgent();

    /// Ends a program with SIGTERM; its exit status, -1 when a signal ended it.
    static int endOf(std::unique_ptr<QProcess> &process);

    /// Ends a program with SIGKILL.
    static void kill(std::unique_ptr<QProcess> &process);

    /// Puts a program into the system that is not there from the start.
    void copyProgram(const QString &from, const QString &fixedPath) const;

    /// Runs a program of the system to its end; exit status, standard error stream and standard output.
    struct Ended {
        int status;
        QByteArray errors;
        QByteArray output;
    };
    /// With `preloaded`, a library that stands between the program and the machine.
    Ended run(const QString &program, const QStringList &arguments, const QString &preloaded = {});

    /// Posts an order as the console user; true when the target took it.
    bool postAsAgentUser(const QString &target, const NSNotification &order);

    /// The same as any other user; only root can be anybody else.
    bool postAs(quint32 user, const QString &target, const NSNotification &order);

    /// Begins to post an order as a user; the process ends with 0 when the target took it. `before` is called
    /// when it is about to.
    std::unique_ptr<QProcess> startPostAs(quint32 user, const QString &target, const NSNotification &order,
                                          const std::function<void()> &before = {});

    /// The next whole second but one: time enough to write a schedule before it is due.
    static QDateTime soon();

    /// An entry for the probe, due `soon`, with these parameters and the text `identifier`.
    QVariantMap probeEntry(const QString &identifier, QVariantMap parameters,
                           const QDateTime &date = soon()) const;

    /// Waits until a line of the log contains `part`.
    testing::AssertionResult logs(const QString &part,
                                  std::chrono::seconds limit = std::chrono::seconds(60)) const;
    qsizetype countOf(const QString &part) const;
    /// Whether the log has lines that contain these parts, each after the one before.
    testing::AssertionResult logsInOrder(const QStringList &parts) const;

    QString socketPath(const QString &name) const;
    QString agentSocket() const;

    /// Whether somebody listens at the socket file.
    static bool isListening(const QString &path);

    PrivateBus bus;
    std::unique_ptr<QProcess> daemon;
    std::unique_ptr<QProcess> agent;

private:
    /// As the given user, or as whoever runs the test.
    std::unique_ptr<QProcess> start(const QString &program, const QStringList &arguments,
                                    std::optional<quint32> user, const QString &preloaded = {});
    void startLogind();
    int m_sessions = 0;
};
