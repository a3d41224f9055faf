// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/ForkedStart.h"
#include "hosts/daemon/DaemonActions.h"
#include "hosts/daemon/PlugInAnswers.h"
#include "support/WaitUntil.h"
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

    /// The latest line of the log about a schedule. What the performers say comes when it comes.
    QString lastAboutSchedules() const
    {
        const QStringList lines = messages().filter("Schedule \"");
        return lines.isEmpty() ? QString() : lines.last();
    }

    /// Waits until a schedule's plug-in has answered, or never will.
    static void waitForAnswers(PlugInAnswers &answers, const Schedule &schedule)
    {
        EXPECT_TRUE(waitUntil([&] { return answers.of(schedule, PlugInAnswers::Urgency::Due).has_value(); }));
    }

    static std::unique_ptr<PerformerStart> performers()
    {
        return std::make_unique<ForkedStart>(Performances::programNamed("dozely-performer"));
    }
};
