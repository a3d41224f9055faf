// SPDX-License-Identifier: MIT
// Two screens: the main one to the right of another that reaches higher and lower.
#include "support/InterfaceEnvironment.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    const QTemporaryDir folder;
    QFile screens(folder.filePath("screens.json"));
    if (!screens.open(QIODevice::WriteOnly))
        return 1;
    screens.write(R"({"synchronousWindowSystemEvents": true, "windowFrameMargins": false, "screens": [
        {"name": "main", "x": 1000, "y": 200, "width": 800, "height": 600, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
        {"name": "second", "x": 0, "y": 0, "width": 1000, "height": 1200, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    screens.close();
    InterfaceEnvironment::prepare("offscreen:configfile=" + screens.fileName().toUtf8());
    QApplication application(argc, argv);
    InterfaceEnvironment::settle();
    return RUN_ALL_TESTS();
}
