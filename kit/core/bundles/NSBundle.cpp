// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/NSBundle.h"

#include "DozelyKit/core/bundles/InterfaceFileLoader.h"
#include "DozelyKit/core/bundles/ModuleFile_p.h"
#include "DozelyKit/core/bundles/ModuleLoader_p.h"
#include "DozelyKit/core/bundles/StringsFile_p.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/files/RegularFile_p.h"
#include "DozelyKit/core/foundation/StringFormat.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

using namespace dozely;

namespace
{
constexpr char kitPath[] = ":/DozelyKit"; // a folder of resources compiled into this library
constexpr char developmentLanguage[] = "en";

bool isCompiledIn(const QString &path)
{
    return path.startsWith(":/");
}

Result<QByteArray> contentOf(const QString &path)
{
    if (!isCompiledIn(path))
        return readRegularFile(path, PropertyList::maximumSize, true);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Error{QString("Cannot read \"%1\": %2").arg(path, file.errorString())};
    return file.readAll();
}

/// A plain file name, or a relative path that stays below its folder.
bool staysBelow(const QString &name)
{
    return !name.isEmpty() && !QDir::isAbsolutePath(name) && !name.split('/').contains("..");
}

QHash<QString, std::shared_ptr<NSBundle>> &registeredClasses()
{
    static QHash<QString, std::shared_ptr<NSBundle>> classes;
    return classes;
}

/// The files of the kit's other libraries.
QStringList &partsOfKit()
{
    static QStringList files;
    return files;
}

/// The nearest folder around `file` that has a Contents folder with the file in it; null when there is none.
QString bundlePathAround(const QString &file)
{
    for (QDir folder = QFileInfo(file).dir(); !folder.isRoot();) {
        const bool isContents = folder.dirName() == "Contents";
        if (!folder.cdUp())
            break;
        if (isContents)
            return folder.absolutePath();
    }
    return {};
}
} // namespace

struct NSBundle::Private {
    QString path;
    QString resources; // the folder with the resources
    QVariantMap info;
    QHash<QString, QHash<QString, QString>> tables; // by the path of their file, as read at first use
    QHash<QPair<QString, QByteArray>, QObject *>
        modules; // root objects by file name and interface, not owned

    const QHash<QString, QString> &table(const QString &file);
};

const QHash<QString, QString> &NSBundle::Private::table(const QString &file)
{
    const auto known = tables.constFind(file);
    if (known != tables.constEnd())
        return *known;
    QHash<QString, QString> texts;
    if (QFileInfo(file).isFile()) {
        const auto content = contentOf(file);
        auto read = content ? StringsFile::parse(*content) : content.error();
        if (read)
            texts = *std::move(read);
        else
            NSLog("Texts in \"%@\" cannot be used. %@.", file, read.error().text);
    }
    return *tables.insert(file, texts);
}

NSBundle::NSBundle(const QString &path) : d(std::make_unique<Private>())
{
    d->path = path;
    const QString contents = isCompiledIn(path) ? path : path + "/Contents";
    d->resources = isCompiledIn(path) ? path : contents + "/Resources";
    const QString file = contents + "/Info.plist";
    const auto content = contentOf(file);
    if (!content)
        return; // many bundles have none
    if (const auto list = PropertyList::fromData(*content))
        d->info = list->toMap();
    else
        NSLog("The dictionary in \"%@\" cannot be used. %@.", file, list.error().text);
}

NSBundle::~NSBundle() = default;

std::shared_ptr<NSBundle> NSBundle::bundleWithPath(const QString &path)
{
    static QHash<QString, std::weak_ptr<NSBundle>> known;
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    if (path.isEmpty() || !QFileInfo(absolute + "/Contents").isDir())
        return nullptr;
    std::weak_ptr<NSBundle> &entry = known[absolute];
    auto bundle = entry.lock();
    if (!bundle) {
        bundle.reset(new NSBundle(absolute));
        entry = bundle;
    }
    return bundle;
}

std::shared_ptr<NSBundle> NSBundle::mainBundle()
{
    static const std::shared_ptr<NSBundle> bundle = []() -> std::shared_ptr<NSBundle> {
        const QDir folder = QFileInfo(ModuleFile::ofProgram()).dir();
        const QString path = QDir::cleanPath(folder.filePath("../.."));
        const bool isApplication = folder.path().endsWith("/Contents/Linux") && path.endsWith(".app");
        return isApplication ? bundleWithPath(path) : nullptr;
    }();
    return bundle;
}

std::shared_ptr<NSBundle> NSBundle::kitBundle()
{
    static const std::shared_ptr<NSBundle> bundle(new NSBundle(kitPath));
    return bundle;
}

std::shared_ptr<NSBundle> NSBundle::bundleForClass(const QMetaObject *metaObject)
{
    if (auto bundle = bundleForClassNamed(metaObject->className()))
        return bundle;
    // Not the address of the meta-object: a program that uses a library's class may hold a copy of that one,
    // while the texts that it refers to stay in the library.
    const QString file = ModuleFile::ofAddress(metaObject->d.stringdata);
    static const char inThisLibrary = 0;
    static const QString ownFile = ModuleFile::ofAddress(&inThisLibrary);
    if (file.isEmpty() || file == ownFile || partsOfKit().contains(file))
        return file.isEmpty() ? nullptr : kitBundle();
    const QString path = bundlePathAround(file);
    return path.isEmpty() ? nullptr : bundleWithPath(path);
}

std::shared_ptr<NSBundle> NSBundle::bundleForClassNamed(const QString &className)
{
    return registeredClasses().value(className);
}

void NSBundle::registerClass(const QString &className, std::shared_ptr<NSBundle> bundle)
{
    registeredClasses()[className] = std::move(bundle);
}

void NSBundle::registerPartOfKit(const void *address)
{
    partsOfKit() += ModuleFile::ofAddress(address);
}

QString NSBundle::bundlePath() const
{
    return d->path;
}

QString NSBundle::bundleIdentifier() const
{
    return objectForInfoDictionaryKey("CFBundleIdentifier").toString();
}

QVariantMap NSBundle::infoDictionary() const
{
    return d->info;
}

QVariant NSBundle::objectForInfoDictionaryKey(const QString &key) const
{
    return d->info.value(key);
}

QString NSBundle::pathForResource(const QString &name, const QString &extension) const
{
    const QString file = extension.isEmpty() ? name : name + '.' + extension;
    if (!staysBelow(file))
        return {};
    QStringList folders;
    for (const QString &language : UserLanguages::current())
        folders += '/' + language + ".lproj/";
    folders += {"/", QString("/%1.lproj/").arg(developmentLanguage)};
    for (const QString &folder : folders) {
        QString path = d->resources + folder + file;
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

QString NSBundle::localizedStringForKey(const QString &key, const QString &value, const QString &table) const
{
    const QString file = (table.isEmpty() ? QString("Localizable") : table) + ".strings";
    for (const QString &language : UserLanguages::current() + QStringList(developmentLanguage)) {
        if (!staysBelow(language) || !staysBelow(file))
            continue;
        const auto &texts = d->table(d->resources + '/' + language + ".lproj/" + file);
        const auto text = texts.constFind(key);
        if (text != texts.constEnd())
            return *text;
    }
    return value.isEmpty() ? key : value;
}

Result<QObject *> NSBundle::loadModule(const QString &fileName, const QByteArray &interfaceId)
{
    if (QObject *loaded = d->modules.value({fileName, interfaceId}))
        return loaded;
    if (isCompiledIn(d->path) || fileName.isEmpty() || fileName.contains('/') || fileName == "..")
        return Error{QString("Cannot load \"%1\": this is not the name of a module").arg(fileName)};
    const auto root = loadRootObject(d->path + "/Contents/Linux/" + fileName, interfaceId);
    ModuleFile::detach(d->path + "/Contents"); // with the libraries that it brought along
    if (root)
        d->modules.insert({fileName, interfaceId}, *root);
    return root;
}

template<>
std::shared_ptr<InterfaceFileLoader> &Port<InterfaceFileLoader>::current()
{
    static auto *const port = new std::shared_ptr<InterfaceFileLoader>();
    return *port;
}
