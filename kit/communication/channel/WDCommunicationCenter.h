// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/core/foundation/NSNotification.h"

#include <QMap>

class NSDistantObject;
class NSLock;
class NSSocketPort;
class WDCommunicationCenter;

/// What the root object of every host process answers. A host implements it as a QObject whose invokables
/// `pong` and `communicationCenter` are marked NS_REMOTE; the names and results below are the contract.
///
///     class RootObject : public QObject, public WDCommunicationProtocol {
///         Q_OBJECT
///     public:
///         NS_REMOTE Q_INVOKABLE bool pong() override { return true; }
///         NS_REMOTE Q_INVOKABLE QObject *communicationCenter() override;
///     };
class DOZELYKIT_EXPORT WDCommunicationProtocol
{
public:
    virtual ~WDCommunicationProtocol();
    virtual bool pong() = 0;                    ///< Liveness; the caller takes it as the result of its ping.
    virtual QObject *communicationCenter() = 0; ///< The WDCommunicationCenter of this process.
};

/// The one object of a process through which daemon, agents and configuration applications reach one another.
///
/// THREADING: the main thread, whose event loop must run; requests may also be made from other threads.
/// BLOCKING: a request waits at most 5 s for its target's lock, then at most 5 s to be handed over and 5 s
/// for each reply.
class DOZELYKIT_EXPORT WDCommunicationCenter : public QObject
{
    Q_OBJECT
public:
    /// The shared centre, made at the first call and then kept to the end of the process.
    static std::shared_ptr<WDCommunicationCenter> sharedInstance();

    /// Makes the shared centre, for the caller to keep; null when there is one already. The class has no
    /// `+initialize` that would make one before: the first call of init() or sharedInstance() takes its
    /// place.
    static std::shared_ptr<WDCommunicationCenter> init();

    ~WDCommunicationCenter() override;

    /// The host's root object, not owned; nothing is published or sent without one.
    QObject *observer() const;
    void setObserver(QObject *observer);
    std::shared_ptr<NSSocketPort> socketPort() const;
    void setSocketPort(std::shared_ptr<NSSocketPort> port);
    std::shared_ptr<NSConnection> connection() const;
    void setConnection(std::shared_ptr<NSConnection> connection);
    std::shared_ptr<NSLock> daemonLock() const;
    void setDaemonLock(std::shared_ptr<NSLock> lock);
    QMap<quint32, std::shared_ptr<NSLock>> &agentsLocks();
    void setAgentsLocks(const QMap<quint32, std::shared_ptr<NSLock>> &locks);
    QMap<quint32, std::shared_ptr<NSLock>> &prefPanesLocks();
    void setPrefPanesLocks(const QMap<quint32, std::shared_ptr<NSLock>> &locks);

    /// The name under which this process listens: "dozelyd" for a process whose name contains that, else the
    /// process name, a point and the effective user id.
    QString portName() const;
    std::shared_ptr<NSSocketPort> serverUnixSocketPortWithName(const QString &name) const;
    std::shared_ptr<NSSocketPort> clientUnixSocketPortWithName(const QString &name) const;

    /// Publishes the observer under portName, and keeps it published from then on: retries after 1.0 s when
    /// the port cannot be made, checks itself every 10.0 s and as soon as its socket file is gone or is
    /// another one, republishes 0.1 s after a failed check. Without an observer does nothing.
    Q_INVOKABLE void createServerConnection();

    /// Pings this process through its own socket file and schedules what follows.
    Q_INVOKABLE void checkServerConnection();

    /// A proxy to the target's root object; null when the target is not there or is served by a user who may
    /// not. What it will be asked first, without arguments, may travel along (NSConnection::rootProxyToAsk).
    std::shared_ptr<NSDistantObject> daemonObject(const QByteArray &firstSelector = {});
    std::shared_ptr<NSDistantObject> agentObjectOfUser(quint32 userId, const QByteArray &firstSelector = {});
    std::shared_ptr<NSDistantObject> prefPaneObjectOfUser(quint32 userId,
                                                          const QByteArray &firstSelector = {});

    /// Take the target's lock, waiting at most 5 s; true when it was taken. Unlocking is free of charge when
    /// the user has no lock.
    bool lockDaemonAccess();
    void unlockDaemonAccess();
    bool lockAgentAccessForUser(quint32 userId);
    void unlockAgentAccessForUser(quint32 userId);
    bool lockPrefPaneAccessForUser(quint32 userId);
    void unlockPrefPaneAccessForUser(quint32 userId);

    /// The target's `pong`, false when it could not be asked. Never raises.
    bool pingDaemon();
    bool pingAgentOfUser(quint32 userId);
    bool pingPrefPaneOfUser(quint32 userId);

    /// Have the target post the notification into its own notification centre; its answer, false when it
    /// could not be asked. Raises NSException when the target dies or takes too long in the middle, and then
    /// leaves the target's lock taken: whoever catches that gives it back.
    bool postNotificationToDaemon(const NSNotification &notification);
    bool postNotificationToAgentOfUser(const NSNotification &notification, quint32 userId);
    bool postNotificationToPrefPaneOfUser(const NSNotification &notification, quint32 userId);

    /// Has the agent of `userId` post the notification, and waits for nothing: it leaves while the event loop
    /// runs, as the agent takes it, and is given up after 10 s. Nobody learns what became of it, so this is
    /// for what may get lost; what is one too many while 16 are under way is lost, too. Takes no lock, never
    /// raises. The main thread alone.
    void tellAgentOfUser(const NSNotification &notification, quint32 userId);

    /// What became of a post, as far as it is known here.
    enum class PostOutcome {
        Answered, ///< The target's observers have run.
        NotSent,  ///< The target has certainly not had it, nor will it.
        Unknown,  ///< The target may have had it.
    };
    /// That of the calling thread's latest post, whether it returned or raised; NotSent before the first.
    static PostOutcome lastPostOutcome();

    /// The receiving side: posts a copy into the default WDNotificationCenter on the main thread, waits until
    /// the observers have run, and answers true.
    NS_REMOTE Q_INVOKABLE bool postNotification(const NSNotification &notification);
    Q_INVOKABLE bool postNotificationOnMainThread(const NSNotification &notification);

    /// Called for the connection layer.
    Q_INVOKABLE void clientHasConnected(const NSNotification &notification);
    Q_INVOKABLE void connectionHasDied(const NSNotification &notification);
    Q_INVOKABLE bool connectionShouldMakeNewConnection(NSConnection *parent, NSConnection *child);

private:
    WDCommunicationCenter();
    struct Private;
    std::unique_ptr<Private> d;
};
