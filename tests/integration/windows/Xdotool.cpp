// SPDX-License-Identifier: MIT
#include "Xdotool.h"

#include "support/WaitUntil.h"

#include <QProcess>

#include <gtest/gtest.h>

void xdotool(const QStringList &arguments)
{
    QProcess process;
    process.start("xdotool", arguments);
    ASSERT_TRUE(waitUntil([&process] { return process.state() == QProcess::NotRunning; }));
    ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
}
