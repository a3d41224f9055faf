// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"
#include "PerformerFixture.h"
#include "hosts/common/performing/Performances.h"
#include "support/PrivateBus.h"

#include <QDir>

/// The performances of a host below a scratch root, and what became of them.
class PerformancesFixture : public PerformerFixture
{
protected:
    /// A machine that systemd has started, as a stand-in for it.
    void startManager(const QStringList &options = {})
    {
        root.makeFolder("/run/systemd/system");
        const QString folder = root.makeFolder("/units");
        bus = std::make_unique<PrivateBus>();
        ASSERT_TRUE(bus->isRunning());
        ASSERT_TRUE(
            bus->startService(SERVICE_MANAGER, QStringList{folder} + options, "org.freedesktop.systemd1"));
    }

    using Whose = dozely::ServiceManager::Whose;
    std::unique_ptr<Performances> make(const QString &program, Whose whose = Whose::Machine,
                                       const QString &folder = {}, const QString &spareFolder = {})
    {
        return std::make_unique<Performances>(PerformerStart::ofThisMachine(program, whose),
                                              folder.isEmpty() ? this->folder : folder,
                                              *dozely::Port<dozely::Clock>::current(), spareFolder);
    }

    /// A host that has begun anew.
    void start() { performances = make(PERFORMER_PROGRAM); }

    Performances::Ended noting(const QString &name)
    {
        return [this, name](const PerformanceOutcome &outcome) { outcomes[name] += outcome; };
    }
    bool prepare(const QString &name, const QString &wish = "nothing")
    {
        order.parameters.insert("Do", wish);
        return performances->prepare(name, order, noting(name)).ok();
    }
    /// What became of it, once it has ended.
    PerformanceOutcome outcome(const QString &name)
    {
        EXPECT_TRUE(waitUntil([&] { return !outcomes[name].isEmpty(); }));
        EXPECT_EQ(outcomes[name].size(), 1) << "told once";
        return outcomes[name].value(0);
    }
    std::string failure(const QString &name) { return outcome(name).failure.toStdString(); }
    QStringList files() const { return QDir(folder).entryList(QDir::Files); }
    QStringList linesAbout(const QString &text) const { return root.logLines().filter(text); }
    QByteArray content(const QString &fixedPath) const
    {
        QFile file(root.join(fixedPath));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<PrivateBus> bus;
    std::unique_ptr<Performances> performances;
    QHash<QString, QList<PerformanceOutcome>> outcomes;
};
