// SPDX-License-Identifier: MIT
#include "WaylandCompositor.h"

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
    if (!display.start("1300x820x24")) // with some room beside the compositor's window
        return 1;
    WaylandCompositor compositor;
    if (!compositor.start(1280, 800))
        return 1;
    InterfaceEnvironment::prepare("wayland");
    qputenv("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none"); // drawing in memory needs no graphics driver
    QApplication application(argc, argv);
    InterfaceEnvironment::settle();
    return RUN_ALL_TESTS();
}
