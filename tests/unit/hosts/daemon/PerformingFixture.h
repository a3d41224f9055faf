// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/DaemonActions.h"
#include "unit/hosts/BundleFixture.h"

/// A scratch system that has the performer's program where the daemon looks for it.
class PerformingFixture : public BundleFixture
{
protected:
    PerformingFixture()
    {
        const QString program = Performances::programNamed("dozely-performer");
        QDir().mkpath(QFileInfo(program).path());
        EXPECT_TRUE(QFile::link(PERFORMER_PROGRAM, program));
    }
};
