// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/PlugInLoader.h"

#include "DozelyKit/core/files/TrustedPath.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/faults/ThrownBy.h"

#include <QDir>
#include <QFileInfo>

using namespace dozely;

namespace
{
QString modulePath(const std::shared_ptr<NSBundle> &bundle, const QString &moduleName)
{
    return bundle->bundlePath() + "/Contents/Linux/" + moduleName;
}
} // namespace

QList<PlugInLoader::Source> PlugInLoader::sourcesOfTheSystem()
{
    const auto owner = RootFolder::owner();
    return owner ? QList<Source>{{QString(), {*owner}}} : QList<Source>();
}

QList<PlugInLoader::Source> PlugInLoader::sourcesOfTheSession()
{
    QList<Source> sources = sourcesOfTheSystem();
    const auto owner = RootFolder::owner();
    const QString home = RealHomeDirectory();
    if (owner && !home.isEmpty())
        sources += {RootFolder::join(home + FixedPath::plugIns), {*owner, NSProcessInfo::effectiveUserID()}};
    return sources;
}

PlugInLoader::PlugInLoader(QString roleKey, QList<Source> sources, Maker withoutModule)
    : m_roleKey(std::move(roleKey)), m_sources(std::move(sources)), m_withoutModule(std::move(withoutModule))
{
}

PlugInLoader::~PlugInLoader()
{
    terminateClasses();
}

Result<std::shared_ptr<NSBundle>> PlugInLoader::bundle(const QString &path) const
{
    const QString label = logLabel(path);
    if (!path.startsWith('/') || path.contains(QChar(0)) || QDir::cleanPath(path) != path)
        return Error{QString("%1 is not a bundle's path").arg(label)};
    if (!QFileInfo(path).isDir())
        return Error{QString("There is no bundle %1").arg(label)};
    QString why = "it lies in no folder of plug-ins";
    for (const Source &source : m_sources) {
        if (!source.folder.isEmpty() && !path.startsWith(source.folder + '/'))
            continue;
        if (const auto trusted = isTrustedPath(path, source.owners); !trusted) {
            why = trusted.error().text;
            continue;
        }
        if (auto bundle = NSBundle::bundleWithPath(path))
            return bundle;
        return Error{QString("%1 is not a bundle").arg(label)};
    }
    return Error{QString("The bundle %1 is not trusted: %2").arg(label, logLabel(why))};
}

Result<std::shared_ptr<WDPlugIn>> PlugInLoader::make(const std::shared_ptr<NSBundle> &bundle)
{
    const QString path = bundle->bundlePath();
    const QString moduleName = bundle->objectForInfoDictionaryKey(m_roleKey).toString();
    WDPlugInFactory *factory = nullptr;
    if (!moduleName.isEmpty()) {
        const auto known = m_classes.constFind(path);
        LoadedClass loaded = known != m_classes.cend() ? *known : load(bundle, moduleName);
        tellWhenReplaced(loaded, moduleName);
        if (loaded.factory) // what cannot be loaded may be mended meanwhile: look again at the next use
            m_classes.insert(path, loaded);
        if (!loaded.refusal.isEmpty())
            return Error{loaded.refusal};
        factory = loaded.factory;
    } else if (!m_withoutModule) {
        return Error{QString("The bundle %1 names no \"%2\"").arg(logLabel(path), m_roleKey)};
    }
    std::shared_ptr<WDPlugIn> plugIn;
    const auto thrown = thrownBy([&] {
        plugIn = factory ? factory->makeForRole(m_roleKey) : m_withoutModule();
        if (plugIn)
            plugIn->setBundle(bundle);
    });
    if (plugIn && !thrown)
        return plugIn;
    return Error{QString("The plug-in of %1 cannot be made: %2")
                     .arg(logLabel(path), thrown.value_or("its factory made nothing"))};
}

void PlugInLoader::tellWhenReplaced(LoadedClass &loaded, const QString &moduleName) const
{
    const auto file = FileIdentity::of(modulePath(loaded.bundle, moduleName));
    if (file == loaded.file)
        return;
    loaded.file = file;
    ZDRLog("The module %@ of %@ was replaced: %@ uses the new one once it has been started again",
           logLabel(moduleName), logLabel(loaded.bundle->bundlePath()), NSProcessInfo::processName());
}

PlugInLoader::LoadedClass PlugInLoader::load(const std::shared_ptr<NSBundle> &bundle,
                                             const QString &moduleName) const
{
    LoadedClass loaded;
    loaded.bundle = bundle;
    loaded.file = FileIdentity::of(modulePath(bundle, moduleName)); // before: what comes later is told of
    QObject *root = nullptr;
    QString why = "its name is not a file name";
    bool accepts = false;
    const auto thrown = thrownBy([&] {
        if (!moduleName.contains('/')) {
            if (const auto module = bundle->loadModule(moduleName, WDPlugInFactory_iid))
                root = *module;
            else
                why = module.error().text;
        }
        loaded.factory = qobject_cast<WDPlugInFactory *>(root);
        if (loaded.factory)
            accepts = loaded.factory->initializeClass(bundle);
    });
    if (accepts && !thrown)
        return loaded;
    if (thrown)
        why = *thrown;
    else if (loaded.factory)
        why = "its class does not want to be initialised";
    else if (root)
        why = "it exports no factory";
    loaded.refusal = QString("The module %1 of %2 cannot be used: %3")
                         .arg(logLabel(moduleName), logLabel(bundle->bundlePath()), logLabel(why));
    return loaded;
}

void PlugInLoader::terminateClasses()
{
    for (const LoadedClass &loaded : std::as_const(m_classes)) {
        if (!loaded.refusal.isEmpty())
            continue;
        if (const auto thrown = thrownBy([&] { loaded.factory->terminateClass(); }))
            ZDRLog("The plug-in class of %@ raised at its end: %@", loaded.bundle->bundlePath(), *thrown);
    }
    m_classes.clear();
}
