// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/ModuleLoader_p.h"

#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>

#include <exception>

namespace
{
QObject *fail(QString *error, const QString &file, const QString &reason)
{
    if (error)
        *error = QString("Cannot load \"%1\": %2.").arg(file, reason);
    return nullptr;
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
QObject *rootObjectOf(QPluginLoader &loader, QString *error)
{
    QString raised;
    try {
        QObject *root = loader.instance();
        return root ? root : fail(error, loader.fileName(), loader.errorString());
    } catch (const std::exception &exception) {
        raised = QString("it raised \"%1\"").arg(exception.what());
    } catch (...) {
        raised = "it raised something that is no exception object";
    }
    brokenModules() += QFileInfo(loader.fileName()).canonicalFilePath();
    return fail(error, loader.fileName(), raised);
}
} // namespace

QObject *loadRootObject(const QString &file, const QByteArray &interfaceId, QString *error)
{
    if (!QFileInfo(file).isFile())
        return fail(error, file, "there is no such module");
    if (brokenModules().contains(QFileInfo(file).canonicalFilePath()))
        return fail(error, file, "it raised an exception when it was loaded before");

    QPluginLoader loader(file);
    // Symbols that nobody has are an error now, not a crash at the first call of one.
    loader.setLoadHints(QLibrary::PreventUnloadHint | QLibrary::ResolveAllSymbolsHint);
    const QJsonObject metaData = loader.metaData(); // read from the file; nothing of it runs
    if (metaData.isEmpty())
        return fail(error, file, "this is not a module");
    if (metaData["IID"].toString().toUtf8() != interfaceId)
        return fail(error, file,
                    QString("it has the interface \"%1\" instead of \"%2\"")
                        .arg(metaData["IID"].toString(), QString::fromUtf8(interfaceId)));
    return rootObjectOf(loader, error);
}
