// SPDX-License-Identifier: MIT
// A program of somebody who installed the library: uses one thing of each layer that needs no running system.
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/DataExtensions.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "DozelyKit/plugin/WDPlugIn.h"

#include <cstdio>
#include <plugin/WDPlugIn.h> // the consumer's own

class Listener : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void heard(const NSNotification &notification)
    {
        std::printf("heard: %s\n", qPrintable(notification.userInfo().value("Word").toString()));
    }
};

int main()
{
    std::printf("sha1: %s\n", zandorSoftwaresExtensions::sha1Hash("abc").toHex().constData());
    std::printf("bundle: %s\n", qPrintable(NSBundle::kitBundle()->bundleIdentifier()));

    WDDaemonPlugIn plugIn;
    plugIn.setParameters(QVariantMap{{"Needs Wake Up", 1}});
    std::printf("wakes: %s\n", plugIn.needsWakeUp() ? "yes" : "no");

    const auto listener = std::make_shared<Listener>();
    WDNotificationCenter::defaultCenter()->addObserver(listener, "heard", "Greeting", "Consumer");
    WDNotificationCenter::defaultCenter()->postNotification(
        NSNotification("Greeting", "Consumer", {{"Word", "good morning"}}));
    std::printf("port: %s\n",
                qPrintable(WDCommunicationCenter::sharedInstance()->portName().section('.', 0, 0)));
    std::printf("%s\n", ownPlugInHeader());
    return 0;
}

#include "main.moc"
