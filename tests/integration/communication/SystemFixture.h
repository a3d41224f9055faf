// SPDX-License-Identifier: MIT
#pragma once

#include "HostProcess.h"
#include "support/Identity.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <gmock/gmock.h>

/// A daemon's process and an agent's below a scratch root: the daemon as root, the agent as an ordinary user.
class SystemFixture : public testing::Test
{
protected:
    using Seconds = std::chrono::duration<double>;

    SystemFixture() { root.makeFolder("/var/log", 0777); }

    std::unique_ptr<HostProcess> start(const QString &processName, const QString &identity) const
    {
        return std::make_unique<HostProcess>(root.path(), processName, identity);
    }
    std::unique_ptr<HostProcess> startDaemon() const { return start("dozelyd", HostProcess::root); }
    std::unique_ptr<HostProcess> startAgent() const { return start("Dozely Agent", QString::number(user)); }

    QString command(const char *action, const QString &rest = {}) const
    {
        return QStringLiteral("%1 agent %2 %3").arg(action).arg(user).arg(rest).trimmed();
    }

    QString agentSocket() const
    {
        return root.join(QStringLiteral("/private/var/tmp/com.dozely/Dozely Agent.%1").arg(user));
    }

    static double secondsSince(HostProcess::Clock::time_point start)
    {
        return Seconds(HostProcess::Clock::now() - start).count();
    }

    ScratchRoot root;
    const uid_t user = Identity::ordinaryUserHere();
};
