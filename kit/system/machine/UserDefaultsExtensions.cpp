// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/UserDefaultsExtensions.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/machine/ConsoleUser.h"
#include "DozelyKit/system/machine/HomeFolder_p.h"
#include "DozelyKit/system/machine/MachineIdentity.h"

#include <QFileInfo>

using namespace dozely;

namespace zandorSoftwaresExtensions
{
QString loggedInUser()
{
    const auto user = Port<ConsoleUser>::current()->current();
    return user ? user->name : QString();
}

quint32 loggedInUserID()
{
    const auto user = Port<ConsoleUser>::current()->current();
    return user ? user->userId : 0;
}

QString systemVersion()
{
    const QString path = RootFolder::join("/System/Library/CoreServices/SystemVersion.plist");
    if (!QFileInfo::exists(path))
        return Port<MachineIdentity>::current()->systemVersion();
    const auto list = PropertyList::fromFile(path);
    const QVariant version = list ? list->toMap().value("ProductVersion") : QVariant();
    return version.typeId() == QMetaType::QString ? version.toString() : QString();
}

qint64 systemType()
{
    static const qint32 number = integerValue(systemVersion().section('.', 0, 0));
    return number;
}

qint64 systemSubtype()
{
    static const qint32 number = integerValue(systemVersion().section('.', 1, 1));
    return number;
}

QString rendezvousName()
{
    return Port<MachineIdentity>::current()->computerName();
}

QStringList userPreferedLanguages()
{
    const QString path = pathInHomeFolder("/Library/Preferences/.GlobalPreferences.plist");
    const auto list = PropertyList::fromFile(path);
    const QVariant languages = list ? list->toMap().value("AppleLanguages") : QVariant();
    // An entry that is no text is no language code.
    QStringList codes;
    for (const QVariant &language : languages.toList()) {
        if (language.typeId() == QMetaType::QString)
            codes += language.toString();
    }
    return languages.typeId() == QMetaType::QVariantList ? codes : UserLanguages::current();
}
} // namespace zandorSoftwaresExtensions
