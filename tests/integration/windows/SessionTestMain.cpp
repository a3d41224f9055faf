// SPDX-License-Identifier: MIT
#include "WindowManager.h"

#include "support/InterfaceEnvironment.h"
#include "support/VirtualDisplay.h"

#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    VirtualDisplay display;
    if (!display.start())
        return 1;
    WindowManager windowManager;
    if (!windowManager.start())
        return 1;
    InterfaceEnvironment::prepare("xcb");
    qputenv("QT_SCALE_FACTOR", DOZELY_TEST_SCALE);
    QApplication application(argc, argv);
    InterfaceEnvironment::settle();
    return RUN_ALL_TESTS();
}
