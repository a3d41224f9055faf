// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <memory>

class QObject;
struct QMetaObject;

/// A bundle: the folder NAME.EXTENSION/Contents/{Info.plist,Linux/,Resources/}, holding code, an Info
/// dictionary and localised resources. The library's own bundle consists of resources compiled into it.
///
/// THREADING: main thread. OWNERSHIP: loaded modules stay loaded for the life of the process.
class DOZELYKIT_EXPORT NSBundle
{
public:
    ~NSBundle();
    NSBundle(const NSBundle &) = delete;
    NSBundle &operator=(const NSBundle &) = delete;

    /// The bundle at `path`; null when there is no folder with a Contents folder in it. The same object for
    /// the same path as long as somebody holds it.
    static std::shared_ptr<NSBundle> bundleWithPath(const QString &path);

    /// The folder NAME.app whose Contents/Linux holds the running program; null when the program lies
    /// elsewhere.
    static std::shared_ptr<NSBundle> mainBundle();

    /// The library's own bundle.
    static std::shared_ptr<NSBundle> kitBundle();

    /// The bundle that contains the class: the one registered for it, else the one whose module or program
    /// holds its code. Null when it is in none.
    static std::shared_ptr<NSBundle> bundleForClass(const QMetaObject *metaObject);

    /// The bundle registered under a class's name; null when none is.
    static std::shared_ptr<NSBundle> bundleForClassNamed(const QString &className);
    static void registerClass(const QString &className, std::shared_ptr<NSBundle> bundle);

    /// Says that the library whose image in memory holds `address` is a part of the kit: its classes are in
    /// the kit's own bundle.
    static void registerPartOfKit(const void *address);

    QString bundlePath() const;
    QString bundleIdentifier() const;

    /// Info.plist as read when the bundle was made; empty when it is missing or bad.
    QVariantMap infoDictionary() const;
    QVariant objectForInfoDictionaryKey(const QString &key) const;

    /// The resource `name`.`extension`: first in the user's languages (`<language>.lproj` below Resources),
    /// then in Resources itself, then in English. Null when there is none.
    QString pathForResource(const QString &name, const QString &extension) const;

    /// The text for `key` in the `table` ("Localizable" when empty) of the first of the user's languages that
    /// has it, else English, else `value`, else, when that is empty, the key itself.
    QString localizedStringForKey(const QString &key, const QString &value = {},
                                  const QString &table = {}) const;

    /// The root object of a module below Contents/Linux, loaded once, owned by the module and never null. The
    /// module must carry `interfaceId`, which is read from the file before any of its code runs.
    dozely::Result<QObject *> loadModule(const QString &fileName, const QByteArray &interfaceId);

private:
    explicit NSBundle(const QString &path);
    struct Private;
    std::unique_ptr<Private> d;
};

namespace dozely
{

/// The languages in which texts are looked up, best first, as language tags ("pt-BR" gives "pt-BR" and "pt").
/// The user's locale unless set.
namespace UserLanguages
{
DOZELYKIT_EXPORT QStringList current();
DOZELYKIT_EXPORT void set(const QStringList &languages);
} // namespace UserLanguages

} // namespace dozely
