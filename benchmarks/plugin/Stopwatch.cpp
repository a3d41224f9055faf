// SPDX-License-Identifier: MIT
//
// A plug-in whose action, in the user's session or in the daemon, writes down how late it started.
#include <DozelyKit/plugin/Names.h>
#include <DozelyKit/plugin/WDPlugInFactory.h>

#include <QFile>

namespace
{
void writeLateness(const WDPlugIn &plugIn)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    QFile file(plugIn.parameters()->value("File").toString());
    if (file.open(QIODevice::Append))
        file.write(QByteArray::number(now - plugIn.calendarDate().toMSecsSinceEpoch()) + '\n');
}
} // namespace

class StopwatchUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    void actInUserAgent() override { writeLateness(*this); }
};

class StopwatchDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    void actInDaemon() override { writeLateness(*this); }
};

class StopwatchFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override { return std::make_unique<StopwatchDaemonPlugIn>(); }
    std::unique_ptr<WDPlugIn> makeForRole(const QString &roleKey) override
    {
        if (roleKey == dozely::InfoKey::userAgentModule)
            return std::make_unique<StopwatchUserAgentPlugIn>();
        return make();
    }
};

#include "Stopwatch.moc"
