// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

/// What a Python script prints; property lists from another author than this system's. Null when the script
/// fails.
inline QByteArray python(const QString &script, const QByteArray &input = {})
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start("/usr/bin/python3", {"-c", "import sys, plistlib, datetime\n" + script});
    process.write(input);
    process.closeWriteChannel();
    const bool done = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
    return done && process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}
