// SPDX-License-Identifier: MIT
// Tests on a display of their own.
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
    InterfaceEnvironment::prepare("xcb");
    QApplication application(argc, argv);
    InterfaceEnvironment::settle();
    return RUN_ALL_TESTS();
}
