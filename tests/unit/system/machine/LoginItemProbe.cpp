// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/machine/ApplicationExtensions.h"

#include <QCoreApplication>

#include <cstdio>

using namespace dozely;

/// LoginItemProbe ROOT [on|off|hidden]: changes the login item of the bundle that it lies in, then prints
/// "yes" or "no".
int main(int argc, char **argv)
{
    using namespace zandorSoftwaresExtensions;
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    RootFolder::set(arguments.value(1));
    const QString order = arguments.value(2);
    if (!order.isEmpty())
        setLoginItem(order != "off", order == "hidden");
    std::puts(isLoginItem() ? "yes" : "no");
    return 0;
}
