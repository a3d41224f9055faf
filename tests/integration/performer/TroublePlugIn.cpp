// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"
#include "support/Crash.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <initializer_list>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace
{
/// What the action leaves, so that a test can count.
void mark(const QVariantMap &parameters, const char *text)
{
    QFile file(parameters.value("Marks").toString());
    if (file.open(QIODevice::Append))
        file.write(text);
}

/// One of the ways to go wrong.
void goWrong(const QString &how)
{
    if (how == "crash")
        crash();
    if (how == "hang") {
        for (;;)
            ::pause();
    }
    if (how == "exit")
        std::exit(0);
    if (how == "throw")
        throw std::runtime_error("the plug-in was told to");
}

/// What goes wrong before anybody can tell the module what to do stands in a file of its bundle.
const bool goesOn = [] {
    Dl_info module{};
    ::dladdr(reinterpret_cast<const void *>(&goWrong), &module);
    QFile file(QFileInfo(QFile::decodeName(module.dli_fname)).path() + "/../AtLoading");
    if (file.open(QIODevice::ReadOnly))
        goWrong(QString::fromUtf8(file.readAll()));
    return true;
}();

/// What is put upon this process.
QByteArray limits()
{
    rlimit data{};
    ::getrlimit(RLIMIT_DATA, &data);
    const long priority = ::syscall(SYS_ioprio_get, 1, 0); // of this process
    return QString("nice %1 io %2/%3 data %4\n")
        .arg(::getpriority(PRIO_PROCESS, 0))
        .arg(priority >> 13)
        .arg(priority & 7)
        .arg(static_cast<qint64>(data.rlim_cur))
        .toUtf8();
}
} // namespace

/// A plug-in for tests that does what its parameter "Do" says.
class TroubleDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    void setParameters(const std::shared_ptr<const QVariantMap> &parameters) override
    {
        WDDaemonPlugIn::setParameters(parameters);
        if (what() == "tell its schedule when asked")
            mark(*parameters, (property("scheduleName").toString() + '\n').toUtf8().constData());
        if (what() == "tell its processes when asked")
            tellProcesses({::getppid(), ::getpid()});
        if (what() == "throw when asked")
            throw std::runtime_error("the plug-in was told to");
    }

    bool needsWakeUp() const override
    {
        if (what() == "tell its date when asked")
            mark(*parameters(), (calendarDate().toUTC().toString(Qt::ISODate) + '\n').toUtf8().constData());
        goWrong(wish("Wake Up"));
        return WDDaemonPlugIn::needsWakeUp();
    }

    qint32 timeOut() const override
    {
        if (wish("Time Out").startsWith("mark and ")) {
            QFile file(wish("Marks") + ".asked");
            if (file.open(QIODevice::WriteOnly))
                file.write(QByteArray::number(::getpid()));
            file.close();
            goWrong(wish("Time Out").mid(9));
            while (wish("Time Out") == "mark and wait" && !QFile::exists(wish("Marks") + ".go")) {
            }
        }
        goWrong(wish("Time Out"));
        mark(*parameters(), "asked\n");
        return parameters()->value("Answer", -7).toInt();
    }

    void actInDaemon() override
    {
        const QString wish = what();
        if (wish != "hang")
            mark(*parameters(), "acted\n");
        if (wish == "throw")
            throw std::runtime_error("the plug-in was told to");
        if (wish == "exit")
            ::_exit(0);
        if (wish == "crash")
            crash();
        if (wish == "hang") {
            const pid_t child = ::fork();
            if (child == 0) {
                ::setsid();
                for (;;)
                    ::pause();
            }
            tellProcesses({::getppid(), ::getpid(), child});
            mark(*parameters(), "acted\n");
            ::pause();
        }
        if (wish == "wait" || wish == "wait, then crash") {
            m_isActing = true;
            waitForMark();
        }
        if (wish == "refuse to end") {
            ::signal(SIGTERM, SIG_IGN);
            for (;;)
                ::pause();
        }
        if (wish == "leave a child that does not end") {
            if (::fork() == 0) {
                ::setsid();
                ::signal(SIGTERM, SIG_IGN);
                for (;;)
                    ::pause();
            }
            ::pause();
        }
        if (wish == "tell limits")
            mark(*parameters(), limits().constData());
        if (wish == "print") {
            for (int line = 1; line <= 100'000; ++line)
                std::printf("line %d\n", line);
            std::fflush(stdout);
        }
        if (wish == "print 8 MiB") {
            const std::vector<char> piece(64 << 10, 'x');
            QElapsedTimer timer;
            timer.start();
            for (int i = 0; i < 128; ++i)
                std::fwrite(piece.data(), 1, piece.size(), stdout);
            std::fputs("end", stdout);
            std::fflush(stdout);
            mark(*parameters(), QByteArray::number(timer.elapsed()).constData());
        }
        if (wish == "post") {
            NSNotification order("DaemonMustRunNowEvent", "com.dozely.Admin",
                                 {{"Schedule Identifier", parameters()->value("Schedule")}});
            const bool isReceived = WDCommunicationCenter::sharedInstance()->postNotificationToDaemon(order);
            mark(*parameters(), isReceived ? "received\n" : "lost\n");
        }
        if (wish == "go on") {
            m_isActing = true;
            QTimer::singleShot(0, this, &TroubleDaemonPlugIn::finish);
        }
    }

    Q_INVOKABLE bool isActing() const { return m_isActing; }
    Q_INVOKABLE int exitStatus() const { return parameters()->value("Exit Status", 0).toInt(); }
    Q_INVOKABLE QString failure() const { return wish("Failure"); }

Q_SIGNALS:
    void actionDidFinish();

protected:
    QString wish(const QString &key) const
    {
        return parameters() ? parameters()->value(key).toString() : QString();
    }

private:
    void finish()
    {
        mark(*parameters(), "finished\n");
        m_isActing = false;
        Q_EMIT actionDidFinish();
    }

    /// Whole or not at all.
    void tellProcesses(std::initializer_list<pid_t> processes) const
    {
        const QString path = parameters()->value("Marks").toString() + ".processes";
        QFile file(path + ".new");
        if (file.open(QIODevice::WriteOnly)) {
            for (const pid_t process : processes)
                file.write(QByteArray::number(process) + '\n');
        }
        file.close();
        file.rename(path);
    }

    /// Until the test has made a file beside the marks.
    void waitForMark()
    {
        if (!QFile::exists(parameters()->value("Marks").toString() + ".go"))
            QTimer::singleShot(5, this, &TroubleDaemonPlugIn::waitForMark);
        else if (what() == "wait")
            finish();
        else
            crash();
    }

    QString what() const { return wish("Do"); }

    bool m_isActing = false;
};

/// The same, which hands occurrences to agents in a way of its own.
class OwnWayPlugIn : public TroubleDaemonPlugIn
{
    Q_OBJECT
public:
    bool actInUserAgentNow() override
    {
        mark(*parameters(), "handed over\n");
        goWrong(wish("Hand Over"));
        return wish("Hand Over") == "itself" || WDDaemonPlugIn::actInUserAgentNow();
    }
};

/// The same, which announces in a way of its own.
class OwnVoicePlugIn : public TroubleDaemonPlugIn
{
    Q_OBJECT
public:
    bool anticipateInUserAgentNow() override { return WDDaemonPlugIn::anticipateInUserAgentNow(); }
};

/// The same for a session: goes on until the test has made a file beside the marks.
class TroubleUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    void actInUserAgent() override
    {
        mark(*parameters(), "acted\n");
        if (parameters()->value("Do") == "tell limits")
            mark(*parameters(), limits().constData());
        m_isActing = true;
        waitForMark();
    }

    Q_INVOKABLE bool isActing() const { return m_isActing; }

Q_SIGNALS:
    void actionDidFinish();

private:
    void waitForMark()
    {
        if (!QFile::exists(parameters()->value("Marks").toString() + ".go"))
            return QTimer::singleShot(5, this, &TroubleUserAgentPlugIn::waitForMark);
        mark(*parameters(), "finished\n");
        m_isActing = false;
        Q_EMIT actionDidFinish();
    }

    bool m_isActing = false;
};

class TroubleFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    bool initializeClass(const std::shared_ptr<NSBundle> &bundle) override
    {
        goWrong(bundle->objectForInfoDictionaryKey("At Initialising").toString());
        m_hasItsOwnWay = bundle->objectForInfoDictionaryKey("Own Way").toBool();
        m_hasItsOwnVoice = bundle->objectForInfoDictionaryKey("Own Voice").toBool();
        return true;
    }

    std::unique_ptr<WDPlugIn> make() override
    {
        if (m_hasItsOwnWay)
            return std::make_unique<OwnWayPlugIn>();
        if (m_hasItsOwnVoice)
            return std::make_unique<OwnVoicePlugIn>();
        return std::make_unique<TroubleDaemonPlugIn>();
    }

    std::unique_ptr<WDPlugIn> makeForRole(const QString &roleKey) override
    {
        if (roleKey == "WDUserAgentModule")
            return std::make_unique<TroubleUserAgentPlugIn>();
        return make();
    }

private:
    bool m_hasItsOwnWay = false;
    bool m_hasItsOwnVoice = false;
};

#include "TroublePlugIn.moc"
