// SPDX-License-Identifier: MIT
// Tests of the window without a screen. The program is also what tries configuration sides for them.
#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/application/actions/PlugInTrial.h"
#include "hosts/application/program/WindowedApplication.h"
#include "support/InterfaceEnvironment.h"

#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    InterfaceEnvironment::prepare("offscreen");
    WindowedApplication application(argc, argv);
    InterfaceEnvironment::settle();
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--try") {
        dozely::RootFolder::set(arguments.value(2));
        return PlugInTrial::run(arguments.mid(3));
    }
    return RUN_ALL_TESTS();
}
