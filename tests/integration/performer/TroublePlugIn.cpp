// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugInFactory.h"

#include <QFile>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

namespace
{
/// What the action leaves, so that a test can count.
void mark(const QVariantMap &parameters, const char *text)
{
    QFile file(parameters.value("Marks").toString());
    if (file.open(QIODevice::Append))
        file.write(text);
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
        if (what() == "throw when asked")
            throw std::runtime_error("the plug-in was told to");
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
            ::raise(SIGSEGV);
        if (wish == "hang") {
            QFile file(parameters()->value("Marks").toString() + ".supervisor");
            if (file.open(QIODevice::WriteOnly))
                file.write(QByteArray::number(::getppid()));
            file.close();
            mark(*parameters(), "acted\n");
            ::pause();
        }
        if (wish == "wait") {
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
        if (wish == "print") {
            for (int line = 1; line <= 100'000; ++line)
                std::printf("line %d\n", line);
            std::fflush(stdout);
        }
        if (wish == "go on") {
            m_isActing = true;
            QTimer::singleShot(0, this, &TroubleDaemonPlugIn::finish);
        }
    }

    Q_INVOKABLE bool isActing() const { return m_isActing; }
    Q_INVOKABLE int exitStatus() const { return parameters()->value("Exit Status", 0).toInt(); }

Q_SIGNALS:
    void actionDidFinish();

private:
    void finish()
    {
        mark(*parameters(), "finished\n");
        m_isActing = false;
        Q_EMIT actionDidFinish();
    }

    /// Until the test has made a file beside the marks.
    void waitForMark()
    {
        if (QFile::exists(parameters()->value("Marks").toString() + ".go"))
            finish();
        else
            QTimer::singleShot(5, this, &TroubleDaemonPlugIn::waitForMark);
    }

    QString what() const { return parameters() ? parameters()->value("Do").toString() : QString(); }

    bool m_isActing = false;
};

class TroubleFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override { return std::make_unique<TroubleDaemonPlugIn>(); }
};

#include "TroublePlugIn.moc"
