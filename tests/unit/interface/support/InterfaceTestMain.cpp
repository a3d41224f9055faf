// SPDX-License-Identifier: MIT
// Tests without a screen: what is drawn goes into memory.
#include "support/InterfaceEnvironment.h"

#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    InterfaceEnvironment::prepare("offscreen");
    QApplication application(argc, argv);
    InterfaceEnvironment::settle();
    return RUN_ALL_TESTS();
}
