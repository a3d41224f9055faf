// SPDX-License-Identifier: MIT
//
// A plug-in whose action in the user's session writes down how late it started.
#include <DozelyKit/plugin/WDPlugInFactory.h>

#include <QFile>

class StopwatchUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    void actInUserAgent() override
    {
        const qint64 now = QDateTime::currentMSecsSinceEpoch();
        QFile file(parameters()->value("File").toString());
        if (file.open(QIODevice::Append))
            file.write(QByteArray::number(now - calendarDate().toMSecsSinceEpoch()) + '\n');
    }
};

class StopwatchFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override { return std::make_unique<StopwatchUserAgentPlugIn>(); }
};

#include "Stopwatch.moc"
