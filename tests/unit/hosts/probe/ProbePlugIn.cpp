// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"
#include "DozelyKit/system/scripting/AppleScriptExtensions.h"
#include "support/Crash.h"

#include <QFile>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

/// Runs the script that the parameters hold, in the host itself.
static void runScript(const QVariantMap &parameters)
{
    if (parameters.contains("Script"))
        zandorSoftwaresExtensions::executeScript(parameters["Script"].toString());
}

/// Keeps the next order from being answered until somebody writes to a named pipe.
class LateAnswer : public QObject
{
    Q_OBJECT
public:
    explicit LateAnswer(QString pipe) : m_pipe(std::move(pipe)) {}

    Q_INVOKABLE void hold(const NSNotification &)
    {
        if (!m_pipe.isEmpty())
            ::close(::open(qPrintable(std::exchange(m_pipe, {})), O_RDONLY));
    }

private:
    QString m_pipe;
};

/// A plug-in for tests: writes into the log where it acts, and does what its parameters say.
class ProbeDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    ~ProbeDaemonPlugIn() override
    {
        if (m_isActing)
            ZDRLog("Probe dropped while it acts");
    }

    void actInDaemon() override
    {
        ZDRLog("Probe acts in the daemon: %@, %@", parameters()->value("Text"), calendarDate());
        runScript(*parameters());
        if (parameters()->value("Throws").toBool())
            throw std::runtime_error("the probe was told to");
        if (parameters()->value("Then") == "crash")
            crash();
        if (parameters()->value("Throws Later").toBool())
            QTimer::singleShot(0, this, [] { throw std::runtime_error("the probe was told to, later"); });
        m_isActing = parameters()->contains("Goes On");
        if (parameters()->value("Goes On") == "for a while")
            QTimer::singleShot(0, this, &ProbeDaemonPlugIn::finish);
        if (parameters()->contains("Goes On Until There Is"))
            waitForFile();
    }

    qint32 timeOut() const override
    {
        return parameters()->contains("Time Out") ? integerParameter("Time Out") : WDDaemonPlugIn::timeOut();
    }

    qint64 timeBeforeSelfAnticipation() const override
    {
        if (parameters()->value("Announcing") == "unwanted")
            return -1;
        if (parameters()->value("Announcing") == "throws in the daemon")
            throw std::runtime_error("the probe was told to");
        return WDDaemonPlugIn::timeBeforeSelfAnticipation();
    }

    Q_INVOKABLE bool isActing() const { return m_isActing; }

    Q_INVOKABLE int exitStatus() const
    {
        return parameters()->contains("Exit Status") ? integerParameter("Exit Status") : 0;
    }

Q_SIGNALS:
    void actionDidFinish();

private:
    void waitForFile()
    {
        m_isActing = true;
        if (QFile::exists(parameters()->value("Goes On Until There Is").toString()))
            finish();
        else
            QTimer::singleShot(10, this, &ProbeDaemonPlugIn::waitForFile);
    }

    void finish()
    {
        m_isActing = false;
        ZDRLog("Probe finished");
        Q_EMIT actionDidFinish();
    }

    bool m_isActing = false;
};

class ProbeUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    void actInUserAgent() override
    {
        ZDRLog("Probe acts in the session: %@, %@", parameters()->value("Text"), calendarDate());
        for (const QString &name : parameters()->value("Tells").toStringList())
            ZDRLog("Probe has %@=%@", name, qEnvironmentVariable(qPrintable(name), "nothing"));
        runScript(*parameters());
        const QString then = parameters()->value("Then").toString();
        if (then == "throw")
            throw std::runtime_error("the probe was told to");
        if (then == "crash")
            crash();
        if (then == "exit")
            ::_exit(0);
        m_isActing = then == "go on";
        if (m_isActing || then == "hang" || then == "print without end")
            ZDRLog("Probe is process %d, watched over by %d", ::getpid(), ::getppid());
        while (then == "print without end")
            std::puts("again and again");
        while (then == "hang")
            ::pause();
        if (then.startsWith("remove"))
            cancelEvent();
        if (then.endsWith("act in the daemon")) {
            // What an agent sends only selects an occurrence.
            (*parameters())["Text"] = "made up by the agent";
            actInDaemonNow();
        }
    }

    void stopAction() override { ZDRLog("Probe was told to stop"); }

    void anticipateBeforeSelfAction() override
    {
        ZDRLog("Probe announces: %@, %@", parameters()->value("Text"), calendarDate());
        if (parameters()->contains("Holds Up Next"))
            WDNotificationCenter::defaultCenter()->addObserver(
                std::make_shared<LateAnswer>(parameters()->value("Holds Up Next").toString()), "hold",
                "UserAgentMustActEvent", "com.dozely.UserAgent");
        if (parameters()->value("Announcing") == "throws")
            throw std::runtime_error("the probe was told to");
        if (parameters()->value("Announcing") == "cancels")
            cancelEvent();
        if (parameters()->value("Announcing") == "shows")
            WDUserAgentPlugIn::anticipateBeforeSelfAction();
    }

    void stopAnticipation() override { ZDRLog("Probe withdraws: %@", parameters()->value("Text")); }

    Q_INVOKABLE bool isActing() const { return m_isActing; }
    Q_INVOKABLE int exitStatus() const { return integerParameter("Exit Status"); }

private:
    bool m_isActing = false;
};

class ProbeFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    bool initializeClass(const std::shared_ptr<NSBundle> &bundle) override
    {
        ZDRLog("Probe initialised");
        return !bundle->objectForInfoDictionaryKey("Refuses").toBool();
    }
    void terminateClass() override { ZDRLog("Probe terminated"); }
    std::unique_ptr<WDPlugIn> make() override { return nullptr; }
    std::unique_ptr<WDPlugIn> makeForRole(const QString &roleKey) override
    {
        if (roleKey == "WDDaemonModule")
            return std::make_unique<ProbeDaemonPlugIn>();
        return roleKey == "WDUserAgentModule" ? std::make_unique<ProbeUserAgentPlugIn>() : make();
    }
};

#include "ProbePlugIn.moc"
