// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/ForkedStart.h"

#include <QHash>

/// Performers that systemd runs, each as a service of its own, "dozely-action-NAME.service": in a cgroup,
/// with a journal and limits of its own, and with none of the host's restrictions. They go on when the host
/// ends.
///
/// Where it turns out that there is no service manager on the bus, they are forked.
class UnitStart : public PerformerStart
{
public:
    UnitStart(const QString &program, dozely::ServiceManager::Whose whose);

    void start(const Performer &performer, Answered answered) override;
    void tellEnd(const QString &name, Told told) override;
    void forget(const QString &name) override;
    QString unitOf(const QString &name) const override;

private:
    enum class Way { NotKnown, Units, Forked };
    struct Early;
    void found(const dozely::Result<void> &manager);
    void startUnit(const Performer &performer, const Answered &answered);
    dozely::ProgramLimits limitsFor(const Performer &performer) const;

    const QString m_program;
    const dozely::ServiceManager::Whose m_whose;
    Way m_way = Way::NotKnown;
    QHash<QString, std::shared_ptr<Early>> m_early; // by name, while the way is not known
    QHash<QString, QString> m_units;                // by name
    QList<std::pair<QString, QString>> m_former;    // names and units of the latest that are forgotten
    ForkedStart m_forked;
    dozely::ServiceManager m_manager;
};
