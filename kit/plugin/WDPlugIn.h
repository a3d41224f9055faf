// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/system/alerts/WDUserNotificationCenterDelegate.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>

class QWidget;

/// What every plug-in answers to every host. The keys of parameters and Info dictionaries are constants in
/// DozelyKit/plugin/Names.h. THREADING: the main thread.
class DOZELYKIT_EXPORT WDPlugInProtocol
{
public:
    virtual ~WDPlugInProtocol();

    virtual std::shared_ptr<NSBundle> bundle() const = 0;

    /// "CFBundleIdentifier" of the bundle; null when it has none.
    virtual QString pluginIdentifier() const = 0;

    /// Stores a copy of the dictionary; a null pointer leaves none.
    virtual void setParameters(const std::shared_ptr<const QVariantMap> &parameters) = 0;

    /// The stored dictionary itself: who changes it changes the plug-in's parameters. Null after nothing was
    /// set.
    virtual std::shared_ptr<QVariantMap> parameters() const = 0;

    /// The occurrence that is handled, in its own time zone; invalid when none is.
    virtual void setCalendarDate(const QDateTime &date) = 0;
    virtual QDateTime calendarDate() const = 0;

    /// How long before the action the user is to be alerted, as the parameter "Delay before alert" says
    /// (seconds in this system's hosts); exactly -1 when no alert is wanted.
    virtual qint64 timeBeforeSelfAnticipation() const = 0;

    /// How late an occurrence may still be performed: negative, seconds in this system's hosts.
    virtual qint32 timeOut() const = 0;
};

/// The base of all plug-in classes: bundle, parameters, date.
///
/// A plug-in class carries Q_OBJECT: its meta-object tells which bundle it comes from. Hosts hold plug-ins by
/// std::shared_ptr.
class DOZELYKIT_EXPORT WDPlugIn : public QObject,
                                  public WDPlugInProtocol,
                                  public std::enable_shared_from_this<WDPlugIn>
{
    Q_OBJECT
public:
    WDPlugIn();
    ~WDPlugIn() override;

    /// The bundle that contains the class of this object, unless setBundle gave another one; null when its
    /// class is in no bundle.
    std::shared_ptr<NSBundle> bundle() const override;
    void setBundle(std::shared_ptr<NSBundle> bundle);

    QString pluginIdentifier() const override;

    /// The localised "Plugin Name" of the bundle that contains this object's class; "Plugin Name" without
    /// one.
    QString pluginName() const;

    void setParameters(const std::shared_ptr<const QVariantMap> &parameters) override;
    /// The same for a dictionary; goes by the one above, which alone a plug-in overrides.
    void setParameters(const QVariantMap &parameters);
    std::shared_ptr<QVariantMap> parameters() const override;
    void setCalendarDate(const QDateTime &date) override;
    QDateTime calendarDate() const override;
    qint64 timeBeforeSelfAnticipation() const override;

    /// -180.
    qint32 timeOut() const override;

protected:
    /// A parameter's integer value, cut to 32 bits; 0 when the key is missing.
    qint32 integerParameter(const QString &key) const;

    /// The same, whole: for what is compared with 0 or 1, which a number cut to 32 bits could become.
    qint64 longIntegerParameter(const QString &key) const;

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

    /// Whether the computer must be woken, or powered on, for this action: the parameters "Needs Wake Up" and
    /// "Needs Startup", true for exactly 1.
    bool needsWakeUp() const override;
    bool needsStartup() const override;

    /// Hands the occurrence to the logged-in user's agent, to be announced there. False, with a line in the
    /// log, when there is no date or the agent did not receive it. Blocks as a request of
    /// WDCommunicationCenter does, and raises NSException where that raises and when the parameters are null.
    bool anticipateInUserAgentNow() override;

    /// Hands the occurrence to the logged-in user's agent, to be performed there; false, silently, when there
    /// is no date or the agent did not receive it. Blocks and raises as a request of WDCommunicationCenter
    /// does.
    bool actInUserAgentNow() override;

    /// Performs the action here; does nothing unless overridden. Must return soon: the daemon waits, and its
    /// service manager ends one that stands still for three minutes. An action that goes on afterwards tells
    /// so (see WDPlugInFactory).
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
    virtual void anticipateBeforeSelfAction() = 0;
    virtual void stopAnticipation() = 0;
};

/// The base of a plug-in's class in the user's session. An object in the agent announces the occurrence;
/// another one, in a process of its own, performs it.
///
/// It can announce the occurrence to the user by an alert with a "Cancel" button. What the button does is for
/// the plug-in's class to say, in a callback of NSUserNotificationCenterDelegate:
///
///     Q_INVOKABLE void userNotificationCenterDidActivateNotification(
///         NSUserNotificationCenter *center, const std::shared_ptr<NSUserNotification> &notification)
///     {
///         cancelEvent();
///     }
class DOZELYKIT_EXPORT WDUserAgentPlugIn : public WDPlugIn,
                                           public WDUserAgentControllerPlugInProtocol,
                                           public WDUserNotificationCenterDelegateDelegate
{
    Q_OBJECT
public:
    WDUserAgentPlugIn();
    ~WDUserAgentPlugIn() override;

    /// Loads the interface file that the bundle names as "WDUserAgentNib", with this object as its owner.
    /// Nothing happens when it names none, or in a process without interface library.
    void loadNib() override;

    /// Sends the occurrence to the daemon, to be performed there. Blocks and raises as a request of
    /// WDCommunicationCenter does.
    void actInDaemonNow() override;

    /// Asks the daemon to drop the occurrence. Blocks and raises as actInDaemonNow.
    void cancelEvent() override;

    /// Performs the action here; does nothing unless overridden. Must return soon.
    void actInUserAgent() override;

    /// Interrupts the action; does nothing unless overridden. Called when the session ends before the action
    /// does, and then the process ends.
    void stopAction() override;

    /// Shows the alert when the parameter "Alert" is not 0. Raises as showUserNotification.
    void anticipateBeforeSelfAction() override;

    /// Withdraws the alert, if there is one. The next one is a new object.
    void stopAnticipation() override;

    /// The alert, made when there is none, with the plug-in's name as title. Its identifier is that of the
    /// plug-in with the date of the occurrence, as they are when it is made.
    std::shared_ptr<NSUserNotification> userNotification();
    void setUserNotification(std::shared_ptr<NSUserNotification> notification);

    /// Shows the alert, with date and time in the local time zone and the user's locale; nothing when
    /// timeBeforeSelfAnticipation is -1. This object hears the callbacks and is held for the life of the
    /// process: raises NSException (NSInvalidArgumentException) when no std::shared_ptr holds it.
    void showUserNotification();

private:
    std::shared_ptr<NSUserNotification> m_userNotification;
};

/// What a configuration interface asks of a plug-in.
class DOZELYKIT_EXPORT WDPrefPanePlugInProtocol
{
public:
    virtual ~WDPrefPanePlugInProtocol();

    virtual bool isBaseModule() const = 0;
    virtual void loadNib() = 0;
    virtual QWidget *setupView() const = 0;
    virtual bool needsWakeUp() const = 0;
    virtual void setNeedsWakeUp(bool needsWakeUp) = 0;
    virtual bool needsWakeUpByDefault() const = 0;
    virtual bool needsStartup() const = 0;
    virtual void setNeedsStartup(bool needsStartup) = 0;
    virtual bool needsStartupByDefault() const = 0;
    virtual QString pluginName() const = 0;
    virtual void fillSetupInterfaceFromParameters() = 0;
    virtual void fillParametersFromSetupInterface() = 0;
    virtual QVariantMap defaultParameters() const = 0;
    virtual QString actionString() const = 0;
};

/// The base of a plug-in's class in a configuration interface: it lends the view in which the options of an
/// action are edited, and carries values between that view and the parameters.
///
/// The view comes from the bundle's interface file; each widget in it that has the name of a writable
/// property of the plug-in's class is given to that property (docs/interface.md). A bundle names a module of
/// its own for this role, "WDPrefPaneModule", so that no other host loads widgets.
class DOZELYKIT_EXPORT WDPrefPanePlugIn : public WDPlugIn, public WDPrefPanePlugInProtocol
{
    Q_OBJECT
    /// The outlet: QObject, since this library knows nothing of widgets. What is no widget is none.
    Q_PROPERTY(QObject *setupView READ setupViewObject WRITE setSetupView)
public:
    WDPrefPanePlugIn();

    /// Deletes the view, also when it lies in somebody's window.
    ~WDPrefPanePlugIn() override;

    /// False.
    bool isBaseModule() const override;

    /// Loads the interface file that the bundle names as "WDEditNibFile", with this object as its owner.
    /// Nothing happens when it names none, or in a process without interface library.
    void loadNib() override;

    /// The view with the action's options, owned by the plug-in; null before loadNib, and once somebody
    /// deleted it.
    QWidget *setupView() const override;

    /// Takes the view over and deletes the one before.
    void setSetupView(QObject *view);

    /// Whether the computer must be woken, or powered on, for this action: the parameters "Needs Wake Up" and
    /// "Needs Startup", true unless 0.
    bool needsWakeUp() const override;
    bool needsStartup() const override;

    /// Write 0 or 1 into the dictionary that parameters() answers; lost when that is null.
    void setNeedsWakeUp(bool needsWakeUp) override;
    void setNeedsStartup(bool needsStartup) override;

    /// False: what a new schedule of this action begins with.
    bool needsWakeUpByDefault() const override;
    bool needsStartupByDefault() const override;

    QString pluginName() const override;

    /// Shows the parameters in the view; does nothing unless overridden.
    void fillSetupInterfaceFromParameters() override;

    /// Writes what the view shows into the parameters; does nothing unless overridden.
    void fillParametersFromSetupInterface() override;

    /// The parameters of a new schedule; empty unless overridden.
    QVariantMap defaultParameters() const override;

    /// A short text that describes the configured action; "-" unless overridden.
    QString actionString() const override;

private:
    QObject *setupViewObject() const;
    void setBooleanParameter(const QString &key, bool value);

    QPointer<QObject> m_setupView;
};
