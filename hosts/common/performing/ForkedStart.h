// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PerformerStart.h"

#include <QObject>

/// Performers that the host forks. They belong to its cgroup and, where something ends all of that at once,
/// end with it; their limits they take upon themselves.
class ForkedStart : public PerformerStart
{
public:
    explicit ForkedStart(QString program) : m_program(std::move(program)) {}

    /// BLOCKING: until the program runs, some milliseconds.
    void start(const Performer &performer, Answered answered) override;
    void tellEnd(const QString &name, Told told) override;
    void forget(const QString &name) override;

private:
    const QString m_program;
    QObject m_context; // of what is told later
};
