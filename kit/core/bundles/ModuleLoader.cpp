// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/ModuleLoader_p.h"

#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>

#include <exception>

namespace dozely
{

namespace
{
Error failure(const QString &file, const QString &reason)
{
    return {QString("Cannot load \"%1\": %2").arg(file, reason)};
}

/// The modules that raised while they were loaded. The dynamic linker takes them for loaded, though a part of
/// their static objects was never made: they must not be tried again.
QStringList &brokenModules()
{
    static QStringList files;
    return files;
}

/// Runs the module's own code: the initialisers of its static objects, and the constructor of its root
/// object.
///
/// An initialiser that throws leaves the lock of the dynamic linker with this thread for good: this one may
/// go on, but another thread that loads a library waits for ever.
Result<QObject *> rootObjectOf(QPluginLoader &loader)
{
    QString raised;
    try {
        if (QObject *root = loader.instance())
            return root;
        return failure(loader.fileName(), loader.errorString());
    } catch (const std::exception &exception) {
        raised = QString("it raised \"%1\"").arg(exception.what());
    } catch (...) {
        raised = "it raised something that is no exception object";
    }
    brokenModules() += QFileInfo(loader.fileName()).canonicalFilePath();
    return failure(loader.fileName(), raised);
}
} // namespace

Result<QObject *> loadRootObject(const QString &file, const QByteArray &interfaceId)
{
    if (!QFileInfo(file).isFile())
        return failure(file, "there is no such module");
    if (brokenModules().contains(QFileInfo(file).canonicalFilePath()))
        return failure(file, "it raised an exception when it was loaded before");

    QPluginLoader loader(file);
    // Symbols that nobody has are an error now, not a crash at the first call of one.
    loader.setLoadHints(QLibrary::PreventUnloadHint | QLibrary::ResolveAllSymbolsHint);
    const QJsonObject metaData = loader.metaData(); // read from the file; nothing of it runs
    if (metaData.isEmpty())
        return failure(file, "this is not a module");
    if (metaData["IID"].toString().toUtf8() != interfaceId)
        return failure(file, QString("it has the interface \"%1\" instead of \"%2\"")
                                 .arg(metaData["IID"].toString(), QString::fromUtf8(interfaceId)));
    return rootObjectOf(loader);
}

} // namespace dozely
