// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "hosts/common/program/HostRootObject.h"

#include <QCoreApplication>

#include <unistd.h>

using namespace dozely;

/// Dies while it is told to act, before it has answered.
class Victim : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void die(const NSNotification &) { ::_exit(9); }
};

/// An agent that dies in the middle of the first request to act: ROOT.
int main(int argc, char **argv)
{
    NSProcessInfo::setProcessName("Dozely Agent");
    const QCoreApplication application(argc, argv);
    RootFolder::set(QCoreApplication::arguments().value(1));
    WDNotificationCenter::defaultCenter()->addObserver(std::make_shared<Victim>(), "die",
                                                       "UserAgentMustActEvent", "com.dozely.UserAgent");
    HostRootObject root;
    const auto center = WDCommunicationCenter::sharedInstance();
    center->setObserver(&root);
    center->createServerConnection();
    return QCoreApplication::exec();
}

#include "DyingAgent.moc"
