// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/common/program/HostRootObject.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

using namespace dozely;

/// Posts one order as any process may: ROOT daemon|USER-ID NAME SENDER, the user info as a property list on
/// the standard input, for which it waits once it has said "ready". Ends with 0 when the target answered YES.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5)
        return 2;
    RootFolder::set(arguments[1]);
    std::puts("ready"); // all that takes time is done
    std::fflush(stdout);
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return 2;
    const auto userInfo = PropertyList::fromData(input.readAll());
    if (!userInfo)
        return 2;
    const NSNotification order(arguments[3], arguments[4], userInfo->toMap());

    HostRootObject root;
    const auto center = WDCommunicationCenter::sharedInstance();
    center->setObserver(&root);
    try {
        const bool isReceived = arguments[2] == "daemon"
                                    ? center->postNotificationToDaemon(order)
                                    : center->postNotificationToAgentOfUser(order, arguments[2].toUInt());
        return isReceived ? 0 : 1;
    } catch (const NSException &exception) {
        qWarning("%s", exception.what());
        return 3;
    }
}
