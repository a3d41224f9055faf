// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/RunningProgram.h"
#include "plugins/common/session/SessionAction.h"

#include <map>

/// Opens files, folders, applications and addresses in the user's session, all at once. The action is over
/// when each has been opened or refused; what still runs after some seconds is the application itself, which
/// stays.
class OpenUserAgentPlugIn : public SessionAction
{
    Q_OBJECT
public:
    /// How long a program is watched for the sake of its exit status.
    static constexpr std::chrono::seconds patience{5};

    OpenUserAgentPlugIn() : SessionAction("Open") {}
    ~OpenUserAgentPlugIn() override;

protected:
    void begin() override;

private:
    void open(const QString &item);
    void noteEnd(int number, const QString &item, const dozely::Result<dozely::ChildProgram::Ending> &ending);
    void letGo();
    void finish();

    std::map<int, std::unique_ptr<dozely::RunningProgram>> m_programs; // that are watched
    int m_lastNumber = 0;
    QStringList m_failures;
};
