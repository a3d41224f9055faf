// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"
#include "hosts/common/plugins/FileIdentity.h"

#include <QHash>
#include <QList>
#include <QString>

#include <functional>
#include <memory>

/// Makes plug-in objects of one role from bundles that nobody but trusted users can have put there.
///
/// Nothing that a bundle throws gets out: it is an error like any other.
/// THREADING: the main thread. OWNERSHIP: modules stay loaded for the life of the process.
class PlugInLoader
{
public:
    /// Bundles below `folder` ("" for any place) are trusted when they and all folders above belong to
    /// `owners`.
    struct Source {
        QString folder;
        QList<quint32> owners;
    };
    /// Those of a root process: bundles anywhere that nobody but the system's owner can write.
    static QList<Source> sourcesOfTheSystem();

    /// Those of a process in a session: these, and the folder of plug-ins in the home of this process's user.
    static QList<Source> sourcesOfTheSession();

    using Maker = std::function<std::unique_ptr<WDPlugIn>()>;

    /// `roleKey` is the Info key that names the role's module: "WDDaemonModule", "WDUserAgentModule". A
    /// bundle that names none is served by what `withoutModule` makes; without that it fails.
    PlugInLoader(QString roleKey, QList<Source> sources, Maker withoutModule = {});

    /// Calls terminateClasses.
    ~PlugInLoader();
    PlugInLoader(const PlugInLoader &) = delete;
    PlugInLoader &operator=(const PlugInLoader &) = delete;

    /// The bundle at the full path `path`, its trust checked; never null.
    dozely::Result<std::shared_ptr<NSBundle>> bundle(const QString &path) const;

    /// A new plug-in object of the bundle, its bundle set. The module's factory is initialised once, at its
    /// first use; one that refuses is not asked again, while a module that cannot be loaded is looked for at
    /// each use. A module that was replaced since it was loaded goes on as it was, with one line in the log:
    /// two of one name cannot live in a process. Never null.
    dozely::Result<std::shared_ptr<WDPlugIn>> make(const std::shared_ptr<NSBundle> &bundle);

    /// Tells every initialised factory that the host is done with it.
    void terminateClasses();

private:
    struct LoadedClass {
        std::shared_ptr<NSBundle> bundle;
        WDPlugInFactory *factory = nullptr; // owned by its module; null when that cannot be loaded
        QString refusal;                    // why it cannot be used; empty when it can
        FileIdentity file;                  // of its module, as it is or was told of
    };
    void tellWhenReplaced(LoadedClass &loaded, const QString &moduleName) const;
    LoadedClass load(const std::shared_ptr<NSBundle> &bundle, const QString &moduleName) const;

    QString m_roleKey;
    QList<Source> m_sources;
    Maker m_withoutModule;
    QHash<QString, LoadedClass> m_classes; // by bundle path
};
