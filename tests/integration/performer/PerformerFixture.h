// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PerformanceOrder.h"
#include "support/PrintTo.h"
#include "support/WaitUntil.h"
#include "unit/hosts/BundleFixture.h"

#include <QTimeZone>

/// A bundle that does what its parameters say, and a folder for performances, below a scratch root.
class PerformerFixture : public BundleFixture
{
protected:
    PerformerFixture()
    {
        root.makeFolder("/var/lib/dozely/performing");
        order.schedule = "Backup";
        order.bundlePath =
            root.join(makeBundle("Trouble", {{"WDDaemonModule", "TroublePlugIn.so"}}, {PROBE_MODULE}));
        order.date = noon().toTimeZone(QTimeZone("Europe/Paris"));
        order.parameters.insert("Marks", root.join("/marks"));
    }

    /// What the actions left.
    QByteArray marks() const
    {
        QFile file(root.join("/marks"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Of one that hangs, or tells them: its supervisor, the process that acts, and one that this has
    /// started.
    QList<pid_t> processesOfAction() const
    {
        QFile file(root.join("/marks.processes"));
        QList<pid_t> processes;
        if (file.open(QIODevice::ReadOnly)) {
            for (const QByteArray &line : file.readAll().trimmed().split('\n'))
                processes += line.toInt();
        }
        return processes;
    }
    static bool isAlive(pid_t process)
    {
        QFile file(QString("/proc/%1/stat").arg(process));
        if (!file.open(QIODevice::ReadOnly))
            return false;
        const QByteArray line = file.readAll();
        return !QByteArray("ZX").contains(line.mid(line.lastIndexOf(')') + 2, 1));
    }

    /// A limit of memory that leaves sanitizers what they reserve.
    static constexpr qint64 muchMemory = 100LL << 40;

    const QString folder = root.join("/var/lib/dozely/performing");
    PerformanceOrder order;
};
