// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "hosts/common/performing/PerformanceOrder.h"
#include "hosts/common/plugins/PlugInLoader.h"

#include <QObject>

#include <memory>

class QCoreApplication;

/// What depends on where an action is performed: which class of a bundle acts, and what of its process. Each
/// program that is made of these sources has one.
///
/// THREADING: the main thread of the process that acts.
class ActingRole : public QObject
{
    Q_OBJECT
public:
    ~ActingRole() override = default;

    /// The role of this program.
    static std::unique_ptr<ActingRole> ofThisProgram();

    virtual PerformanceOrder::Role role() const = 0;

    /// Makes of the process that was just forked one that plug-ins expect; `application`, which is that of
    /// the process before, may become another. What is made here goes with the object, before the
    /// application does.
    virtual void beginProcess(std::unique_ptr<QCoreApplication> &application, int &argc, char **argv);

    /// The Info key that names the module, the role's name in WDPlugInFactory::makeForRole.
    virtual QString moduleKey() const = 0;

    virtual QList<PlugInLoader::Source> trustedSources() const = 0;

    /// "the daemon": whose plug-in is wanted, for people.
    virtual QString host() const = 0;

    /// Whether the module has made an object that can act here.
    virtual bool canAct(const WDPlugIn &plugIn) const = 0;

    /// Calls the action. Lets what it raises pass.
    virtual void act(WDPlugIn &plugIn) = 0;

    /// Whether an action is told before its process ends. If not, being asked to end ends the process.
    virtual bool stopsActions() const { return false; }

    /// Tells the object that its action is to stop. Lets what it raises pass.
    virtual void stop(WDPlugIn &) {}

    /// Whether the action goes on although the object does not say so.
    virtual bool goesOn() const { return false; }

Q_SIGNALS:
    /// goesOn may answer otherwise now.
    void mayBeOver();
};
