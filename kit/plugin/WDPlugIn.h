// SPDX-License-Identifier: MIT
#pragma once

#include "platform/NSBundle.h"

#include <QDateTime>
#include <QObject>

/// What every plug-in answers to every host. THREADING: the main thread.
class DOZELYKIT_EXPORT WDPlugInProtocol
{
public:
    virtual ~WDPlugInProtocol();

    virtual std::shared_ptr<NSBundle> bundle() const = 0;

    /// "CFBundleIdentifier" of the bundle; null when it has none.
    virtual QString pluginIdentifier() const = 0;

    /// Stores a copy of the dictionary; a null pointer leaves none.
    virtual void setParameters(const std::shared_ptr<const QVariantMap> &parameters) = 0;

    /// The stored dictionary itself: who changes it changes the plug-in's parameters. Null after nothing was set.
    virtual std::shared_ptr<QVariantMap> parameters() const = 0;

    /// The occurrence that is handled, in its own time zone; invalid when none is.
    virtual void setCalendarDate(const QDateTime &date) = 0;
    virtual QDateTime calendarDate() const = 0;

    /// How long before the action the user is to be alerted, as the parameter "Delay before alert" says (seconds in
    /// this system's hosts); exactly -1 when no alert is wanted.
    virtual qint64 timeBeforeSelfAnticipation() const = 0;

    /// How late an occurrence may still be performed: negative, seconds in this system's hosts.
    virtual qint32 timeOut() const = 0;
};

/// The base of all plug-in classes: bundle, parameters, date.
///
/// A plug-in class carries Q_OBJECT: its meta-object tells which bundle it comes from.
class DOZELYKIT_EXPORT WDPlugIn : public QObject, public WDPlugInProtocol
{
    Q_OBJECT
public:
    WDPlugIn();
    ~WDPlugIn() override;

    /// The bundle that contains the class of this object, unless setBundle gave another one; null when its class is
    /// in no bundle.
    std::shared_ptr<NSBundle> bundle() const override;
    void setBundle(std::shared_ptr<NSBundle> bundle);

    QString pluginIdentifier() const override;

    /// The localised "Plugin Name" of the bundle that contains this object's class; "Plugin Name" without one.
    QString pluginName() const;

    void setParameters(const std::shared_ptr<const QVariantMap> &parameters) override;
    void setParameters(const QVariantMap &parameters);
    std::shared_ptr<QVariantMap> parameters() const override;
    void setCalendarDate(const QDateTime &date) override;
    QDateTime calendarDate() const override;
    qint64 timeBeforeSelfAnticipation() const override;

    /// -180.
    qint32 timeOut() const override;

protected:
    /// A parameter's integer value; 0 when the key is missing.
    qint32 integerParameter(const QString &key) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// What the daemon asks of a plug-in.
class DOZELYKIT_EXPORT WDDaemonPlugInProtocol
{
public:
    virtual ~WDDaemonPlugInProtocol();

    virtual bool needsWakeUp() const = 0;
    virtual bool needsStartup() const = 0;
    virtual bool anticipateInUserAgentNow() = 0;
    virtual bool actInUserAgentNow() = 0;
    virtual void actInDaemon() = 0;
};

/// The base of a plug-in's class in the root daemon.
class DOZELYKIT_EXPORT WDDaemonPlugIn : public WDPlugIn, public WDDaemonPlugInProtocol
{
    Q_OBJECT
public:
    WDDaemonPlugIn();
    ~WDDaemonPlugIn() override;

    /// Whether the computer must be woken, or powered on, for this action: the parameters "Needs Wake Up" and "Needs
    /// Startup", true for exactly 1.
    bool needsWakeUp() const override;
    bool needsStartup() const override;

    /// Hands the occurrence to the logged-in user's agent, to be announced there. False, with a line in the log, when
    /// there is no date or the agent did not receive it. Blocks as a request of WDCommunicationCenter does, and
    /// raises NSException where that raises and when the parameters are null.
    bool anticipateInUserAgentNow() override;

    /// Hands the occurrence to the logged-in user's agent, to be performed there; false, silently, when there is no
    /// date or the agent did not receive it. Blocks and raises as a request of WDCommunicationCenter does.
    bool actInUserAgentNow() override;

    /// Performs the action here; does nothing unless overridden. Must return soon: the daemon waits. An action
    /// that goes on afterwards tells so (see WDPlugInFactory).
    void actInDaemon() override;

    /// -5.
    qint32 timeOut() const override;
};

/// What the user's agent asks of a plug-in.
class DOZELYKIT_EXPORT WDUserAgentControllerPlugInProtocol
{
public:
    virtual ~WDUserAgentControllerPlugInProtocol();

    virtual void loadNib() = 0;
    virtual void actInDaemonNow() = 0;
    virtual void cancelEvent() = 0;
    virtual void actInUserAgent() = 0;
    virtual void stopAction() = 0;
};

/// The base of a plug-in's class in the user's agent.
class DOZELYKIT_EXPORT WDUserAgentPlugIn : public WDPlugIn, public WDUserAgentControllerPlugInProtocol
{
    Q_OBJECT
public:
    WDUserAgentPlugIn();
    ~WDUserAgentPlugIn() override;

    /// Loads the interface file that the bundle names as "WDUserAgentNib", with this object as its owner. Nothing
    /// happens when it names none, or in a process without interface library.
    void loadNib() override;

    /// Sends the occurrence to the daemon, to be performed there. Blocks and raises as a request of
    /// WDCommunicationCenter does.
    void actInDaemonNow() override;

    /// Asks the daemon to drop the occurrence. Blocks and raises as actInDaemonNow.
    void cancelEvent() override;

    /// Performs the action here; does nothing unless overridden. Must return soon.
    void actInUserAgent() override;

    /// Interrupts the action; does nothing unless overridden.
    void stopAction() override;
};
