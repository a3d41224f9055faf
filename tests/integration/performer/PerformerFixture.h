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

    const QString folder = root.join("/var/lib/dozely/performing");
    PerformanceOrder order;
};
